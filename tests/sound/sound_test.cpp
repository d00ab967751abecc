// The ground of the sound tests.
#include "tests/sound/sound_test.h"

#include "state/chart.h"
#include "state/options.h"

namespace qlm {

std::string Little(uint32_t value, int bytes) {
  std::string out;
  for (int i = 0; i < bytes; ++i) out += static_cast<char>(value >> (8 * i) & 255);
  return out;
}

std::string SampleBytes(const Samples& samples) {
  std::string bytes;
  for (const int16_t sample : samples) bytes += Little(static_cast<uint16_t>(sample), 2);
  return bytes;
}

std::string Chunk(std::string_view id, std::string_view body, bool padded) {
  std::string chunk = std::string(id) + Little(static_cast<uint32_t>(body.size()), 4) + std::string(body);
  if (padded && body.size() % 2 != 0) chunk += '\0';
  return chunk;
}

std::string WavFileBytes::Bytes() const {
  const auto size = static_cast<uint32_t>(dataSize < 0 ? static_cast<int64_t>(data.size()) : dataSize);
  const std::string body = kind + formatId + Little(formatSize, 4) + Little(tag, 2) + Little(channels, 2) +
                           Little(rate, 4) + Little(bytesPerSecond, 4) + Little(align, 2) + Little(bits, 2) +
                           moreFormat + chunks + dataId + Little(size, 4) + data;
  return form + Little(static_cast<uint32_t>(body.size()), 4) + body;
}

std::string MonoWav(const Samples& samples, uint32_t rate) {
  WavFileBytes file;
  file.rate = rate;
  file.bytesPerSecond = rate * 2;
  file.data = SampleBytes(samples);
  return file.Bytes();
}

SoundTest::SoundTest() {
  platform::OpenSoundDevice(platform::SoundOutput::kOffline);
  RealHiSpeed = 1;
}

SoundTest::~SoundTest() { platform::CloseSoundDevice(); }

Text SoundTest::NameSound(int32_t slot, TextView name, const Samples& samples, uint32_t rate) {
  Text path = WriteData(name, MonoWav(samples, rate));
  WavFile[slot] = path;
  return path;
}

Samples SoundTest::Render(size_t frames) {
  Samples both(2 * frames);
  platform::RenderSound(both);
  Samples left;
  for (size_t i = 0; i < frames; ++i) {
    left.push_back(both[2 * i]);
    EXPECT_EQ(both[2 * i], both[2 * i + 1]) << "frame " << i;
  }
  return left;
}

}  // namespace qlm
