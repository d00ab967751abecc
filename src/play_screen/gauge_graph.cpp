// The gauge graph.
#include "play_screen/gauge_graph.h"

#include <algorithm>
#include <optional>
#include <span>

#include "base/numbers.h"
#include "state/chart.h"
#include "state/network.h"
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

// A pixel outside the graph is left out.
void PutPixel(int32_t x, int32_t y, platform::Colour colour) { DDGraph->Fill({x, y, x + 1, y + 1}, colour); }

// What lies outside the graph is left out.
void PutDigit(size_t left, int32_t top, int32_t digit, platform::Colour colour) {
  const auto width = static_cast<size_t>(graphDigits.width);
  for (int32_t y = 0; y < graphDigits.height; ++y) {
    const std::span<platform::Colour> row = DDGraph->Row(top + y);
    const size_t place = (static_cast<size_t>(y) * 10 + static_cast<size_t>(digit)) * width;
    for (size_t x = 0; x < width && left + x < row.size(); ++x) {
      row[left + x] = platform::Mix(kDarkGreen, colour, graphDigits.ink[place + x]);
    }
  }
}

// `amount` of all notes, of which there are TotalNotes[0], on a stretch of the graph.
std::optional<int32_t> PartOf(int32_t amount, int32_t stretch) {
  return Divide(int64_t{amount} * stretch, TotalNotes[0]);
}

// Whether something of `height` with its top left corner there can be on the graph at all.
bool CanShow(int32_t x, int32_t y, int32_t height) {
  return x >= 0 && x < DDGraph->Width() && y > -height && y <= 200;
}

}  // namespace

void PaintGraph() {
  if (!DDGraph) return;
  DDGraph->Fill({0, 0, 300, 40}, kDarkRed);
  DDGraph->Fill({0, 40, 300, 200}, kDarkGreen);
  for (int32_t x = 0; x < DDGraph->Width(); x += 30) DDGraph->Line(x, 0, x, DDGraph->Height(), kGrid);
  for (int32_t y = 0; y < DDGraph->Height(); y += 20) DDGraph->Line(0, y, DDGraph->Width(), y, kGrid);
}

void DrawGaugeSample(int32_t slot, uint8_t sample) {
  if (!DDGraph || slot <= 0 || slot > DDGraph->Width()) return;
  const bool high = sample > kClearMark || CourseMode || network.NetActive;
  const int32_t y = 200 - 2 * sample;
  DDGraph->Line(slot, y, slot + 3, y, high ? kHigh : kLow);
}

void DrawSongMark(int32_t x1, int32_t y1, int32_t x2, int32_t y2) {
  if (DDGraph) DDGraph->Line(x1, y1, x2, y2, kSongMark);
}

void DrawJudgedNote(int32_t judged, int32_t combo, int32_t grade) {
  const std::optional<int32_t> x = PartOf(judged, 300);
  const std::optional<int32_t> height = PartOf(combo, 200);
  if (!DDGraph || !x || !height || !CanShow(*x, 200 - *height, 1)) return;
  PutPixel(*x, 200 - *height,
           platform::Rgb(grade % 3 <= 1 ? 255 : 0, grade >= 3 ? 255 : 0, grade <= 2 ? 255 : 0));
}

void DrawLostCombo(int32_t judged, int32_t combo) {
  const std::optional<int32_t> x = PartOf(judged, 284);
  const std::optional<int32_t> height = PartOf(combo, 190);
  const std::optional<int32_t> green = PartOf(judged, 255);
  if (!DDGraph || !x || !height || !green || !CanShow(*x, 190 - *height, graphDigits.height)) return;
  // More judgements than notes are possible, with presses far too early.
  const platform::Colour colour = platform::Rgb(255, static_cast<uint32_t>(std::min(*green, 255)), 0);
  int32_t place = 1;
  while (combo / place >= 10) place *= 10;
  for (auto left = static_cast<size_t>(*x); place > 0; place /= 10) {
    PutDigit(left, 190 - *height, combo / place % 10, colour);
    left += static_cast<size_t>(graphDigits.width);
  }
}

}  // namespace qlm
