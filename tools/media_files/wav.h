// The bytes of WAV files: those of plain sounds, and for tests such as no program should write.
#pragma once

#include <cstdint>
#include <string>
#include <vector>

namespace media {

// A number of `bytes` bytes (1 to 4), the lowest first.
std::string Little(uint32_t value, int bytes);

// Samples of 16 bits, the lower byte first.
std::string SampleBytes(const std::vector<int16_t>& samples);

// A file by its parts. Nothing is checked, so that each of them may be wrong.
struct WavFile {
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

// A file of 16 bits. Each frame has a sample for every channel.
std::string WavBytes(const std::vector<int16_t>& samples, uint16_t channels, uint32_t rate);

}  // namespace media
