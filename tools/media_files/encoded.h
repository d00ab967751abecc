// The bytes of sound files that an encoder makes, for tests and benchmarks.
#pragma once

#include <cstdint>
#include <string>
#include <vector>

namespace media {

enum class Coding {
  kVorbis,  // in Ogg
  kOpus,    // in Ogg, of 48000 Hz
  kFlac,    // of 16 bits
  kWav24,   // as the three below, in a WAV
  kWavFloat,
  kWavAdpcm,  // Microsoft's
  kWavPlain,  // of 16 bits
  kMp3
};

// A sound of samples from -1 to 1, the channels side by side. `quality`, 0 to 1, holds for Vorbis alone.
// Empty when the encoder refuses it.
std::string EncodedSound(Coding coding, const std::vector<float>& samples, int32_t channels, int32_t rate,
                         double quality = 0.4);

}  // namespace media
