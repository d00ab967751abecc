// The ground of the tests of the list screens: an unseen display, letters whose colours tell which they are,
// and sprites that a test paints where it wants to find them again.
#pragma once

#include <cstdint>
#include <string>

#include "platform/font.h"
#include "state/lists.h"
#include "tests/graphics/picture_files.h"

namespace qlm {

constexpr Colour kSpriteRed = 0xC80000;

class ListScreen : public DisplayTest {
 protected:
  // The clock stands at kNow, a multiple of all times that screens count in; the wheel rests, all rows have
  // appeared, and no picture is loaded: the ground is black.
  ListScreen();
  ~ListScreen() override;

  static constexpr uint32_t kNow = 1'310'400;
  // The clock, without time passing for the rows that appear.
  static void SetTime(uint32_t now);

  // Rows with these titles, none of them marked; the first is in hand.
  static void Rows(std::initializer_list<TextView> titles);
  // A sheet of sprites on which this one is red and nothing else is there.
  static void PaintSprite(const Rect& sprite);

  // One frame of the lists, and the pixels of the frame that was presented last.
  static void Draw();
  static Colour Pixel(int32_t x, int32_t y);
  // The letters of the system font that stand in a line from (x, y) on, until there is none; blanks end it.
  static std::string SystemText(int32_t x, int32_t y);
  // The smallest rectangle around all pixels of a colour within `part`; all 0 where there is none.
  static Rect Around(Colour colour, const Rect& part = kScreen);
  // Pixels of a colour.
  static int64_t Count(Colour colour, const Rect& part = kScreen);
  // Whether `part` of the frame shows the text drawn at (x, y) on black and nothing else.
  static testing::AssertionResult ShowsText(const Rect& part, int32_t x, int32_t y, TextView text,
                                            const platform::FontLook& look, Colour colour);
};

}  // namespace qlm
