// The ground of the sound tests: a game with the offline device, sound files made on the spot, rendered
// frames.
#pragma once

#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

#include "platform/sound_device.h"
#include "tests/support/game_test.h"
#include "tools/media_files/wav.h"

namespace qlm {

using Samples = std::vector<int16_t>;

using media::Little;
using media::SampleBytes;
using WavFileBytes = media::WavFile;

std::string Chunk(std::string_view id, std::string_view body, bool padded = false);
// A mono file of 16 bits.
std::string MonoWav(const Samples& samples, uint32_t rate = 44100);

class SoundTest : public GameTest {
 protected:
  SoundTest();
  ~SoundTest() override;

  // Writes a mono file and names it for the slot; gives the path.
  Text NameSound(int32_t slot, TextView name, const Samples& samples, uint32_t rate = 44100);
  // The next frames of the mix; both sides have to be the same.
  Samples Render(size_t frames);
};

}  // namespace qlm
