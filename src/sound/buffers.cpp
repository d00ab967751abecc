// From a sound file to a filled buffer.
#include "sound/buffers.h"

namespace qlm {

SoundBufferPtr CreateSndBuf(Text&, platform::SoundDescription&, platform::SoundFormat&,
                            platform::SoundError&) {
  return nullptr;
}
platform::SoundFormat ReadWavHeader(TextView) { return {}; }

}  // namespace qlm
