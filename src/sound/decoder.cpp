// Compressed sound files.
#include "sound/decoder.h"

namespace qlm {

int32_t DecodeToBuffer(TextView, SoundBufferPtr&, platform::SoundDescription&, platform::SoundFormat&) {
  return kNotCompressed;
}

}  // namespace qlm
