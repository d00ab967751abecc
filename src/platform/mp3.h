// Decoding of MPEG audio.
#pragma once

#include <cstdint>
#include <string>
#include <string_view>

namespace platform {

enum class Mp3Error {
  kNone,
  kNoDecoder,  // it could not be opened
  kNoSamples,  // nothing in the data could be decoded
  kTooLong,    // more samples than a sound may have, or than there is memory for
  kBroken,     // the decoder gave up
};

struct DecodedMp3 {
  Mp3Error error = Mp3Error::kNone;
  std::string samples;   // signed, 16 bits, little-endian, the channels side by side
  int32_t rate = 0;      // Hz
  int32_t channels = 0;  // 1 or 2
};

// Decodes frames of layers I to III from the first whole one on, at their own rate, and trims nothing. What
// lies between frames is passed over. Frames of another rate or number of channels end the sound. Any bytes
// will do; may be called by any thread. `most` is the longest sound, in bytes.
DecodedMp3 DecodeMp3(std::string_view data, size_t most);

}  // namespace platform
