// Small pictures, and the open display.
#include "tests/graphics/picture_files.h"

#include "graphics/display.h"
#include "platform/window.h"
#include "state/settings.h"

namespace qlm {
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
