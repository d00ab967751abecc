// The ground of the play screen's tests: a skin of solid colours laid by hand, and a chart of a few objects.
#pragma once

#include <cstdint>
#include <ostream>

#include "state/chart.h"
#include "state/skin.h"
#include "tests/graphics/picture_files.h"

namespace qlm {

class PlayScreenTest : public DisplayTest {
 protected:
  static constexpr uint32_t kNow = 1'000'000;
  // What glyph 0 of a strip shows; glyph g shows g more, so that digit d is kGlyph + 1 + d.
  static constexpr Colour kGlyph = 0x500000;

  // One player, an empty chart of 200 objects and 60 seconds, place 0, HiSpeed 1, the line at 400, 50 frames
  // a second. The player plays.
  PlayScreenTest();

  // A still clip of one colour on a sheet of its own, which has the clip's number and size. Black is the key.
  static SkinClip& LayClip(int32_t number, int32_t width, int32_t height, Colour colour);
  // The same with frames side by side, the first `colour`, each next one more.
  static SkinClip& LayFrames(int32_t number, int32_t width, int32_t height, Colour colour, int32_t frames);
  // A digit strip on sheet 255 - number.
  static SkinNumber& LayStrip(int32_t number, int32_t width, int32_t height, uint8_t gap = 0);
  // Notes of the channel are this clip at x, with their lower edge on the place.
  static LaneSkin& LayLane(int32_t channel, int32_t clip, int16_t x);
  static ChartObj& LayObj(int32_t channel, int32_t pos);

  // Draws a frame on a black screen.
  static void Draw();
  static Colour At(int32_t x, int32_t y);
  // Whether the rectangle alone shows the colour, on a black screen.
  static testing::AssertionResult Only(const Rect& rect, Colour colour);
  // The top left corner of what shows the colour; -1, -1 where nothing does.
  struct Corner {
    int32_t x = -1;
    int32_t y = -1;
    friend bool operator==(const Corner&, const Corner&) = default;
    friend std::ostream& operator<<(std::ostream& out, const Corner& corner) {
      return out << corner.x << ',' << corner.y;
    }
  };
  static Corner Find(Colour colour);
  // The smallest rectangle around it; empty where nothing shows it.
  static Rect Extent(Colour colour);
};

}  // namespace qlm
