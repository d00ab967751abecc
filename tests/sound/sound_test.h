// The ground of the sound tests: a game with the offline device, sound files made on the spot, rendered
// frames.
#pragma once

#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

#include "platform/sound_device.h"
#include "tests/support/game_test.h"

namespace qlm {

using Samples = std::vector<int16_t>;

// The bytes of a sound file.
struct WavFileBytes {
  std::string form = "RIFF";
  std::string kind = "WAVE";
  std::string formatId = "fmt ";
  uint16_t tag = 1;
  uint16_t channels = 1;
  uint32_t rate = 44100;
  uint32_t bytesPerSecond = 88200;
  uint16_t align = 2;
  uint16_t bits = 16;
  uint32_t formatSize = 16;  // as the header says
  std::string moreFormat;    // behind the 16 bytes of the format
  std::string chunks;        // between the format and the data
  std::string dataId = "data";
  std::string data;
  int64_t dataSize = -1;  // as the header says; -1 is the true one

  std::string Bytes() const;
};
std::string Chunk(std::string_view id, std::string_view body, bool padded = false);
std::string Little(uint32_t value, int bytes);
std::string SampleBytes(const Samples& samples);
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
