// Small pictures for the tests of this folder, and the ground that they share: an open display that nobody
// sees.
#pragma once

#include <string>
#include <vector>

#include "state/surfaces.h"
#include "tests/support/game_test.h"
#include "tools/media_files/bmp.h"

namespace qlm {

using platform::Colour;

using media::BmpOf;
using media::SolidBmp;

// A surface of one colour.
SurfacePtr Solid(int32_t width, int32_t height, Colour colour);
// Whether the whole surface shows `inside` within the rectangle and `outside` everywhere else.
testing::AssertionResult Shows(const SurfacePtr& surface, const Rect& rect, Colour inside, Colour outside);

class DisplayTest : public GameTest {
 protected:
  // Opens the display unseen, with all fixed surfaces, and forgets what that logged.
  DisplayTest();
  ~DisplayTest() override;
};

}  // namespace qlm
