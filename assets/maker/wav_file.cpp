// The RIFF container around the samples, little-endian whatever the machine.
#include "wav_file.h"

#include <algorithm>
#include <cmath>
#include <cstdint>
#include <fstream>
#include <string>
#include <string_view>

namespace assetmaker {
namespace {

constexpr unsigned channels = 2;
constexpr unsigned bytesPerSample = 2;
constexpr unsigned formatSize = 16;
constexpr unsigned pcm = 1;

class Bytes {
 public:
  void Tag(std::string_view tag) { text_ += tag; }
  void U16(unsigned value) {
    text_ += static_cast<char>(value & 0xFF);
    text_ += static_cast<char>(value >> 8 & 0xFF);
  }
  void U32(unsigned value) {
    U16(value & 0xFFFF);
    U16(value >> 16);
  }
  const std::string& Text() const { return text_; }

 private:
  std::string text_;
};

unsigned Quantised(float sample) {
  const long step = std::lround(std::clamp(sample, -1.0f, 1.0f) * 32767);
  return static_cast<std::uint16_t>(step);
}

}  // namespace

bool WriteWav(const std::filesystem::path& path, const Sound& sound) {
  const unsigned frameSize = channels * bytesPerSample;
  const unsigned dataSize = static_cast<unsigned>(sound.left.size()) * frameSize;
  Bytes bytes;
  bytes.Tag("RIFF");
  bytes.U32(4 + 8 + formatSize + 8 + dataSize);
  bytes.Tag("WAVE");
  bytes.Tag("fmt ");
  bytes.U32(formatSize);
  bytes.U16(pcm);
  bytes.U16(channels);
  bytes.U32(sampleRate);
  bytes.U32(sampleRate * frameSize);
  bytes.U16(frameSize);
  bytes.U16(bytesPerSample * 8);
  bytes.Tag("data");
  bytes.U32(dataSize);
  for (std::size_t i = 0; i < sound.left.size(); ++i) {
    bytes.U16(Quantised(sound.left[i]));
    bytes.U16(Quantised(sound.right[i]));
  }
  std::ofstream file(path, std::ios::binary | std::ios::trunc);
  file.write(bytes.Text().data(), static_cast<std::streamsize>(bytes.Text().size()));
  return file.good();
}

}  // namespace assetmaker
