// The wheel of rows.
#include "screens/list_wheel.h"

#include <algorithm>
#include <cmath>
#include <cstdlib>

#include "base/numbers.h"
#include "base/text.h"
#include "platform/clock.h"
#include "screens/list_rows.h"
#include "screens/list_sprites.h"
#include "screens/list_text.h"
#include "screens/words.h"
#include "state/chart.h"
#include "state/lists.h"
#include "state/session.h"
#include "state/song_find.h"
#include "state/song_select.h"

namespace qlm {
namespace {

using platform::Colour;
using platform::Rgb;

constexpr int32_t kRowsEachSide = 6;
constexpr int32_t kRowWidth = 190;
constexpr int32_t kRowHeight = 16;
constexpr double kPi = 3.1415;  // to these places: a row's pixel hangs on it
constexpr Rect kHeadBox = {100, 40, 283, 59};

int32_t Rounded(double value) { return Round(value).value_or(0); }

// Rows that are about to come in at one end while the wheel turns.
int32_t ScrollRows() {
  constexpr double kFarthest = 1e6;
  return Rounded(std::clamp<double>(songSelect.listScroll, -kFarthest, kFarthest));
}

// How far a place on the wheel has come out of the dark, 1 to 255: from the top down in the first second.
// Quirk: it never comes out wholly at the lower end.
int32_t Brightness(double offset) {
  const double brightness = ((offset + 6) * 50 - songSelect.listFadeIn) * 255 / 200;
  return static_cast<int32_t>(RoundHalfEven(std::clamp(brightness, 1.0, 255.0)));
}

Colour RowColour(int32_t offset, bool cleared) {
  if (CourseMode) return cleared ? Rgb(192, 192, 192) : Rgb(128, 128, 128);
  const int32_t v = Brightness(offset);
  const int32_t green = cleared ? v : Rounded(v * 0.5);
  return Rgb(static_cast<uint32_t>(v), static_cast<uint32_t>(green), 0);
}

bool ListsSongs() {
  return GameState == kStateSongSelect || GameState == kStateBattleSongs || GameState == kStateBattleStart;
}

Text RowText(int32_t index) {
  const SongEntry* const row = RowAt(index);
  if (row == nullptr) return {};
  if (ListsSongs()) return Join(RowHasRecord(index) ? u"★" : u"☆", row->playLevel, u" ", row->title);
  if (GameState == kStateCourses && index > 0) return Join(u"★", row->playLevel, u" ", row->title);
  return row->title;
}

// Under the lamp paper is bright; the light fades over two rows.
void DrawSlip(int32_t offset, const Rect& row) {
  const double place = offset + songSelect.listScroll;
  const int32_t dark = CourseMode ? 255 : Brightness(place);
  if (dark <= 1) return;
  constexpr int32_t kUnlit = 3;  // highest level of a slip away from the lamp
  const int32_t inLight =
      kUnlit + Rounded((kSlipLevels - 1 - kUnlit) * std::max(0.0, 1 - std::abs(place) / 2.5));
  DrawSprite(row.left - 9, row.top - 3, SlipSprite(std::min(inLight, (kSlipLevels - 1) * dark / 255)));
}

Rect Pulsed(Rect row) {
  const int32_t push = HeldRowPulse();
  row.left += push;
  row.right += push;
  return row;
}

void MarkSeen(int32_t offset) {
  if (offset * 60.0 + double{songSelect.listFadeIn} > 0) return;
  const int64_t entry = int64_t{offset} + 16;
  if (entry >= 0 && entry < static_cast<int64_t>(songSelect.rowSeen.size())) {
    songSelect.rowSeen[static_cast<size_t>(entry)] = true;
  }
}

void DrawRow(int32_t offset) {
  const int32_t index = WrappedRow(int64_t{listCursor} - offset);
  const Rect place = RowPlace(offset);
  MarkSeen(offset);
  if (offset == 0) return;
  DrawSlip(offset, place);
  DrawLine(place, RowText(index), kRowFont, RowColour(offset, RowCleared(index)));
}

void DrawHeldRow() {
  const Rect place = Pulsed(RowPlace(0));
  DrawSlip(0, place);
  if (lastSong < 0) {
    const TextView told = songFind.filtered ? Words(u"見つかりません") : u"THE LIST IS EMPTY";
    DrawLine(place, told, kHeldRowFont, RowColour(0, false));
    return;
  }
  DrawLine(place, RowText(WrappedRow(listCursor)), kHeldRowFont, RowColour(0, RowCleared(listCursor)));
}

Text HeadText() {
  if (GameState == kStateLists) return u"SELECT JUKEBOX";
  if (GameState == kStateCourses) return u"SELECT COURSE";
  return ListsSongs() ? songSelect.jukeName : Text();
}

// Between dark and bright gold and back, in a second and a half.
Colour HeadColour() {
  const auto step = static_cast<int32_t>(platform::Now() / 3 % 256);
  const auto c = static_cast<uint32_t>(std::abs(128 - step));
  return Rgb(127 + c, 96 + c, c);
}

}  // namespace

Rect RowPlace(int32_t offset) {
  const double angle = ((offset + double{songSelect.listScroll}) * 10 + 180) * kPi / 180;
  const int32_t left = Rounded(110 + 70 * std::cos(angle));
  const int32_t top = Rounded(670 - 140 * angle);
  return {left, top, left + kRowWidth, top + kRowHeight};
}

// Quirk: the row in hand jumps five pixels to the right every 300 ms and slides back.
int32_t HeldRowPulse() {
  const double rest = 1 - platform::Now() % 300 / 300.0;
  return Rounded(5 * rest * rest);
}

void MoveFadeIn() {
  const uint32_t now = platform::Now();
  const int32_t elapsed = std::max(platform::Elapsed(now, songSelect.listFadeTime), 0);
  songSelect.listFadeIn = ZeroFloor(songSelect.listFadeIn - static_cast<float>(elapsed));
  songSelect.listFadeTime = now;
}

void DrawWheel() {
  if (lastSong >= 0) {
    const int32_t turn = ScrollRows();
    for (int32_t offset = -kRowsEachSide - turn; offset <= kRowsEachSide - turn; ++offset) DrawRow(offset);
  }
  DrawHeldRow();
  DrawSprite(kHeadBox.left - 8, kHeadBox.top - 3, kHeadSprite);
  DrawLine(kHeadBox, HeadText(), kHeldRowFont, HeadColour(), Align::kCentre);
}

}  // namespace qlm
