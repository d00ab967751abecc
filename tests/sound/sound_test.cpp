// The ground of the sound tests.
#include "tests/sound/sound_test.h"

#include "state/chart.h"
#include "state/options.h"

namespace qlm {

std::string Chunk(std::string_view id, std::string_view body, bool padded) {
  std::string chunk = std::string(id) + Little(static_cast<uint32_t>(body.size()), 4) + std::string(body);
  if (padded && body.size() % 2 != 0) chunk += '\0';
  return chunk;
}

std::string MonoWav(const Samples& samples, uint32_t rate) { return media::WavBytes(samples, 1, rate); }

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
