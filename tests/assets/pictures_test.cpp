// The stock song's pictures, as far as their headers and corners tell.
#include <gtest/gtest.h>

#include <algorithm>
#include <set>
#include <vector>

#include "chart_text.h"
#include "tests/support/whole_file.h"
#include "wav.h"

namespace stock {
namespace {

struct Picture {
  std::string kind;  // "BMP" or "PNG"
  std::uint32_t width = 0, height = 0, bits = 0;
};

std::uint32_t BigEndianAt(const std::string& bytes, std::size_t at) {
  std::uint32_t number = 0;
  for (std::size_t i = 0; i < 4; ++i) number = number << 8 | NumberAt(bytes, at + i, 1);
  return number;
}

Picture Look(const std::string& name) {
  const std::string bytes = qlm::WholeFile(March() / name);
  if (bytes.starts_with("BM")) {
    return {"BMP", NumberAt(bytes, 18, 4), NumberAt(bytes, 22, 4), NumberAt(bytes, 28, 2)};
  }
  if (bytes.starts_with("\x89PNG")) return {"PNG", BigEndianAt(bytes, 16), BigEndianAt(bytes, 20), 0};
  return {};
}

// The colour of the first stored pixel, which is the lower left corner: red, green and blue at once.
std::uint32_t CornerOf(const std::string& name) {
  const std::string bytes = qlm::WholeFile(March() / name);
  const std::uint32_t pixels = NumberAt(bytes, 10, 4);
  if (NumberAt(bytes, 28, 2) == 24) return NumberAt(bytes, pixels, 3);
  constexpr std::size_t palette = 54;
  return NumberAt(bytes, palette + 4 * NumberAt(bytes, pixels, 1), 3);
}

// All pixels in the order of the file, red, green and blue of each at once. Rows of 256 need no padding.
std::vector<std::uint32_t> PixelsOf(const std::string& name) {
  const std::string bytes = qlm::WholeFile(March() / name);
  const std::uint32_t start = NumberAt(bytes, 10, 4);
  const int each = static_cast<int>(NumberAt(bytes, 28, 2) / 8);
  constexpr std::size_t palette = 54;
  std::vector<std::uint32_t> pixels;
  for (std::size_t at = start; at < bytes.size(); at += static_cast<std::size_t>(each)) {
    const std::uint32_t value = NumberAt(bytes, at, each);
    pixels.push_back(each == 3 ? value : NumberAt(bytes, palette + 4 * value, 3));
  }
  return pixels;
}

// The files that a channel of the 7-key chart shows.
std::set<std::string> ShownOn(int channel) {
  static const ChartText chart = ReadChart(March() / "march7.bme");
  std::set<std::string> files;
  for (const Cell& cell : chart.cells) {
    if (cell.channel != channel) continue;
    files.insert(chart.commands.at("BMP" + Slot(cell.value)));
  }
  return files;
}

constexpr int base = 4, miss = 6, layer = 7;

TEST(Pictures, FillTheFrameOfTheBackground) {
  for (const int channel : {base, miss, layer}) {
    EXPECT_FALSE(ShownOn(channel).empty());
    for (const std::string& name : ShownOn(channel)) {
      EXPECT_EQ(Look(name).width, 256u) << name;
      EXPECT_EQ(Look(name).height, 256u) << name;
    }
  }
}

TEST(Pictures, ExerciseBothLoaders) {
  std::set<std::string> kinds;
  std::set<std::uint32_t> depths;
  for (const std::string& name : ShownOn(base)) {
    kinds.insert(Look(name).kind);
    if (Look(name).kind == "BMP") depths.insert(Look(name).bits);
  }
  EXPECT_EQ(kinds, (std::set<std::string>{"BMP", "PNG"}));
  EXPECT_EQ(depths, (std::set<std::uint32_t>{8, 24}));
}

TEST(Pictures, LayersLieOnBlack) {
  EXPECT_GT(ShownOn(layer).size(), 32u);
  for (const std::string& name : ShownOn(layer)) EXPECT_EQ(CornerOf(name), 0u) << name;
}

// Nothing drawn on a layer is darker than the groove of the nib, 3A2A10.
TEST(Pictures, LayersHaveNoDarkSeam) {
  for (const std::string& name : ShownOn(layer)) {
    for (const std::uint32_t pixel : PixelsOf(name)) {
      const std::uint32_t brightest = std::max({pixel >> 16, pixel >> 8 & 255, pixel & 255});
      ASSERT_TRUE(pixel == 0 || brightest >= 0x3A) << name << " " << std::hex << pixel;
    }
  }
}

TEST(Pictures, TheStageFillsTheScreen) {
  EXPECT_EQ(Look("stage.png").kind, "PNG");
  EXPECT_EQ(Look("stage.png").width, 640u);
  EXPECT_EQ(Look("stage.png").height, 480u);
}

}  // namespace
}  // namespace stock
