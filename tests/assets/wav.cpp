// Header fields at their places, then the frames.
#include "wav.h"

#include <algorithm>
#include <cmath>

#include "tests/support/whole_file.h"

namespace stock {

std::filesystem::path SystemSounds() { return std::filesystem::path(QLM_BINARY_DIR) / "_qlmfiles" / "wav"; }

std::filesystem::path StockSong(const std::string& name) {
  return std::filesystem::path(QLM_BINARY_DIR) / "songs" / name;
}

std::filesystem::path March() { return StockSong("march"); }

std::uint32_t NumberAt(const std::string& bytes, std::size_t at, int size) {
  if (at + static_cast<std::size_t>(size) > bytes.size()) return 0;
  std::uint32_t number = 0;
  for (int i = size - 1; i >= 0; --i) {
    number = number << 8 | static_cast<unsigned char>(bytes[at + static_cast<std::size_t>(i)]);
  }
  return number;
}

Wav ReadWav(const std::filesystem::path& path) {
  constexpr std::size_t header = 44;
  const std::string bytes = qlm::WholeFile(path);
  Wav wav;
  wav.format = NumberAt(bytes, 20, 2);
  wav.channels = NumberAt(bytes, 22, 2);
  wav.rate = NumberAt(bytes, 24, 4);
  wav.bytesPerSecond = NumberAt(bytes, 28, 4);
  wav.frameBytes = NumberAt(bytes, 32, 2);
  wav.bits = NumberAt(bytes, 34, 2);
  wav.valid = bytes.size() > header && bytes.substr(0, 4) == "RIFF" && bytes.substr(8, 8) == "WAVEfmt " &&
              NumberAt(bytes, 16, 4) == 16 && bytes.substr(36, 4) == "data" &&
              NumberAt(bytes, 4, 4) == bytes.size() - 8 && NumberAt(bytes, 40, 4) == bytes.size() - header;
  for (std::size_t at = header; at + 4 <= bytes.size(); at += 4) {
    wav.left.push_back(static_cast<std::int16_t>(NumberAt(bytes, at, 2)) / 32768.0);
    wav.right.push_back(static_cast<std::int16_t>(NumberAt(bytes, at + 2, 2)) / 32768.0);
  }
  return wav;
}

namespace {

double Height(const Wav& wav, std::size_t frame) {
  return std::max(std::fabs(wav.left[frame]), std::fabs(wav.right[frame]));
}

double Peak(const Wav& wav) {
  double peak = 0;
  for (std::size_t i = 0; i < wav.left.size(); ++i) peak = std::max(peak, Height(wav, i));
  return peak;
}

}  // namespace

double PeakDb(const Wav& wav) { return 20 * std::log10(Peak(wav)); }

double StartMs(const Wav& wav, double share) {
  const double threshold = share * Peak(wav);
  std::size_t frame = 0;
  while (frame < wav.left.size() && Height(wav, frame) <= threshold) ++frame;
  return static_cast<double>(frame) * 1000 / wav.rate;
}

double End(const Wav& wav, std::size_t frames) {
  double highest = 0;
  for (std::size_t i = wav.left.size() - std::min(frames, wav.left.size()); i < wav.left.size(); ++i) {
    highest = std::max(highest, Height(wav, i));
  }
  return highest;
}

double LoudestTenthDb(const Wav& wav) {
  const std::size_t window = wav.rate / 10;
  double energy = 0, loudest = 0;
  const auto energyAt = [&](std::size_t i) {
    return (wav.left[i] * wav.left[i] + wav.right[i] * wav.right[i]) / 2;
  };
  for (std::size_t i = 0; i < wav.left.size(); ++i) {
    energy += energyAt(i) - (i >= window ? energyAt(i - window) : 0);
    loudest = std::max(loudest, energy);
  }
  return 10 * std::log10(loudest / static_cast<double>(window));
}

}  // namespace stock
