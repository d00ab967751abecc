// From floats to 16 bits, and the file.
#include "wav_file.h"

#include <algorithm>
#include <cmath>
#include <cstdint>
#include <fstream>
#include <string>
#include <vector>

#include "tools/media_files/wav.h"

namespace assetmaker {
namespace {

std::int16_t Quantised(float sample) {
  return static_cast<std::int16_t>(std::lround(std::clamp(sample, -1.0f, 1.0f) * 32767));
}

}  // namespace

bool WriteWav(const std::filesystem::path& path, const Sound& sound) {
  std::vector<std::int16_t> samples;
  for (std::size_t i = 0; i < sound.left.size(); ++i) {
    samples.push_back(Quantised(sound.left[i]));
    samples.push_back(Quantised(sound.right[i]));
  }
  const std::string bytes = media::WavBytes(samples, 2, sampleRate);
  std::ofstream file(path, std::ios::binary | std::ios::trunc);
  file.write(bytes.data(), static_cast<std::streamsize>(bytes.size()));
  return file.flush().good();
}

}  // namespace assetmaker
