// RIFF, the format, the data: little-endian whatever the machine.
#include "tools/media_files/wav.h"

namespace media {

std::string Little(uint32_t value, int bytes) {
  std::string text;
  for (int i = 0; i < bytes; ++i) text += static_cast<char>(value >> (8 * i) & 255);
  return text;
}

std::string SampleBytes(const std::vector<int16_t>& samples) {
  std::string bytes;
  bytes.reserve(samples.size() * 2);
  for (const int16_t sample : samples) {
    bytes += static_cast<char>(sample & 255);
    bytes += static_cast<char>(sample >> 8 & 255);
  }
  return bytes;
}

std::string WavFile::Bytes() const {
  const auto size = static_cast<uint32_t>(dataSize < 0 ? static_cast<int64_t>(data.size()) : dataSize);
  std::string body = kind + formatId + Little(formatSize, 4) + Little(tag, 2) + Little(channels, 2) +
                     Little(rate, 4) + Little(bytesPerSecond, 4) + Little(align, 2) + Little(bits, 2) +
                     moreFormat + chunks + dataId + Little(size, 4);
  body += data;
  return form + Little(static_cast<uint32_t>(body.size()), 4) + body;
}

std::string WavBytes(const std::vector<int16_t>& samples, uint16_t channels, uint32_t rate) {
  WavFile file;
  file.channels = channels;
  file.rate = rate;
  file.align = static_cast<uint16_t>(channels * 2);
  file.bytesPerSecond = rate * file.align;
  file.data = SampleBytes(samples);
  return file.Bytes();
}

}  // namespace media
