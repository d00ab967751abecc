// The gauge graph.
#include "graphics/graph.h"

#include "state/chart.h"
#include "state/session.h"
#include "state/surfaces.h"

namespace qlm {
namespace {

constexpr platform::Colour kDarkRed = platform::Rgb(128, 0, 0);
constexpr platform::Colour kDarkGreen = platform::Rgb(0, 128, 0);
constexpr platform::Colour kGrid = platform::Rgb(32, 32, 32);
constexpr platform::Colour kHigh = platform::Rgb(255, 0, 0);
constexpr platform::Colour kLow = platform::Rgb(0, 255, 0);
constexpr platform::Colour kSongMark = platform::Rgb(0, 64, 192);
// A clear takes a gauge of 80 or more; the line of a sample above it is red.
constexpr int32_t kClearMark = 80;

}  // namespace

void PaintGraph() {
  if (!DDGraph) return;
  DDGraph->Fill({0, 0, 300, 40}, kDarkRed);
  DDGraph->Fill({0, 40, 300, 200}, kDarkGreen);
  for (int32_t x = 0; x < DDGraph->Width(); x += 30) DDGraph->Line(x, 0, x, DDGraph->Height(), kGrid);
  for (int32_t y = 0; y < DDGraph->Height(); y += 20) DDGraph->Line(0, y, DDGraph->Width(), y, kGrid);
}

void DrawGaugeSample(int32_t slot, int32_t sample) {
  if (!DDGraph || slot <= 0 || slot > DDGraph->Width()) return;
  const bool high = sample > kClearMark || CourseMode || BattleActive;
  const int32_t y = 200 - 2 * sample;
  DDGraph->Line(slot, y, slot + 3, y, high ? kHigh : kLow);
}

void DrawSongMark(int32_t x1, int32_t y1, int32_t x2, int32_t y2) {
  if (DDGraph) DDGraph->Line(x1, y1, x2, y2, kSongMark);
}

}  // namespace qlm
