// Reading the stock sounds, by the plainest means.
#pragma once

#include <cstdint>
#include <filesystem>
#include <string>
#include <vector>

namespace stock {

// The folders of the stock data.
std::filesystem::path SystemSounds();
std::filesystem::path StockSong(const std::string& name);
std::filesystem::path March();

// The little-endian number of `size` bytes (1 to 4) at `at`; 0 past the end.
std::uint32_t NumberAt(const std::string& bytes, std::size_t at, int size);

struct Wav {
  bool valid = false;  // a RIFF WAVE with "fmt " and "data" in their usual places and sizes that agree
  std::uint32_t format = 0, channels = 0, rate = 0, bytesPerSecond = 0, frameBytes = 0, bits = 0;
  std::vector<double> left, right;  // -1 to 1
};

Wav ReadWav(const std::filesystem::path& path);

double PeakDb(const Wav& wav);

// The first frame at which the sound rises above a share of its peak, in milliseconds.
double StartMs(const Wav& wav, double share);

// The highest of the last `frames` frames.
double End(const Wav& wav, std::size_t frames);

// The root mean square of the loudest tenth of a second, in dB.
double LoudestTenthDb(const Wav& wav);

}  // namespace stock
