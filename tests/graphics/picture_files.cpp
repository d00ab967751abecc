// Small pictures, written byte by byte.
#include "tests/graphics/picture_files.h"

#include "graphics/display.h"
#include "platform/window.h"
#include "state/settings.h"

namespace qlm {
namespace {

void Put(std::string& bytes, uint32_t value, int count) {
  for (int i = 0; i < count; ++i) bytes += static_cast<char>(value >> 8 * i & 255);
}

}  // namespace

std::string BmpOf(const std::vector<std::vector<Colour>>& rows) {
  const auto width = static_cast<uint32_t>(rows.front().size());
  std::string bytes = "BM";
  for (const uint32_t value : {0U, 0U, 54U, 40U, width, static_cast<uint32_t>(rows.size())})
    Put(bytes, value, 4);
  Put(bytes, 1, 2);
  Put(bytes, 24, 2);
  bytes.append(24, '\0');
  for (auto row = rows.rbegin(); row != rows.rend(); ++row) {
    for (const Colour colour : *row) Put(bytes, colour, 3);
    bytes.append(width % 4, '\0');
  }
  return bytes;
}

std::string SolidBmp(int32_t width, int32_t height, Colour colour) {
  return BmpOf({static_cast<size_t>(height), std::vector<Colour>(static_cast<size_t>(width), colour)});
}

SurfacePtr Solid(int32_t width, int32_t height, Colour colour) {
  auto surface = std::make_shared<Surface>(width, height);
  surface->Fill(surface->Bounds(), colour);
  return surface;
}

testing::AssertionResult Shows(const SurfacePtr& surface, const Rect& rect, Colour inside, Colour outside) {
  if (!surface) return testing::AssertionFailure() << "no surface";
  for (int32_t y = 0; y < surface->Height(); ++y) {
    for (int32_t x = 0; x < surface->Width(); ++x) {
      const bool within = x >= rect.left && x < rect.right && y >= rect.top && y < rect.bottom;
      const Colour expected = within ? inside : outside;
      if (surface->Pixel(x, y) == expected) continue;
      return testing::AssertionFailure() << std::hex << "pixel " << std::dec << x << "," << y << " is "
                                         << std::hex << surface->Pixel(x, y) << " and not " << expected;
    }
  }
  return testing::AssertionSuccess();
}

DisplayTest::DisplayTest() {
  InitDD(DisplayOutput::kUnseen);
  CreateSurfaces();
  log.clear();
  ShowBGA = true;
}

DisplayTest::~DisplayTest() {
  platform::TakeDisplayAway(false);
  platform::CloseGameWindow();
}

}  // namespace qlm
