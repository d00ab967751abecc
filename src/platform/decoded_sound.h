// What decoders of sounds give.
#pragma once

#include <cstdint>
#include <string>

namespace platform {

enum class DecodeError {
  kNone,
  kNoDecoder,    // it could not be opened
  kNoSamples,    // nothing in the data could be decoded
  kTooLong,      // more samples than a sound may have, or than there is memory for
  kBroken,       // the decoder gave up
  kNotKnown,     // the data are of another kind
  kManyChannels  // more than two
};

struct DecodedSound {
  DecodeError error = DecodeError::kNone;
  std::string samples;   // signed, 16 bits, little-endian, the channels side by side
  int32_t rate = 0;      // Hz
  int32_t channels = 0;  // 1 or 2
};

}  // namespace platform
