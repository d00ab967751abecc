// The ground of the sound device's tests.
#include "tests/platform/sound_test.h"

namespace platform {

std::span<const unsigned char> Bytes(const Frames& samples) {
  return {reinterpret_cast<const unsigned char*>(samples.data()), 2 * samples.size()};
}

SoundFormat Format(uint16_t channels, uint16_t bits, uint32_t rate) {
  SoundFormat format;
  format.tag = 1;
  format.channels = channels;
  format.bitsPerSample = bits;
  format.samplesPerSec = rate;
  format.blockAlign = static_cast<uint16_t>(channels * bits / 8);
  format.avgBytesPerSec = rate * format.blockAlign;
  return format;
}

SoundBufferPtr Create(const SoundFormat& format, std::span<const unsigned char> bytes) {
  SoundDescription description;
  description.bytes = static_cast<uint32_t>(bytes.size());
  const SoundBufferResult made = CreateSoundBuffer(description, format);
  EXPECT_EQ(made.error, kSoundOk);
  EXPECT_NE(made.buffer, nullptr);
  EXPECT_EQ(made.buffer->Write(0, bytes), kSoundOk);
  return made.buffer;
}

SoundBufferPtr Stereo(const Frames& samples, uint32_t rate) {
  return Create(Format(2, 16, rate), Bytes(samples));
}

SoundBufferPtr Mono(const Frames& samples, uint32_t rate) {
  return Create(Format(1, 16, rate), Bytes(samples));
}

SoundError CreateError(uint32_t bytes, const SoundFormat& format) {
  SoundDescription description;
  description.bytes = bytes;
  const SoundBufferResult made = CreateSoundBuffer(description, format);
  EXPECT_EQ(made.buffer == nullptr, made.error != kSoundOk);
  return made.error;
}

Frames Render(size_t frames) {
  Frames out(2 * frames, 12345);
  RenderSound(out);
  return out;
}

Frames RenderMono(size_t frames) {
  const Frames both = Render(frames);
  Frames left;
  for (size_t i = 0; i < frames; ++i) {
    left.push_back(both[2 * i]);
    EXPECT_EQ(both[2 * i], both[2 * i + 1]) << "frame " << i;
  }
  return left;
}

}  // namespace platform
