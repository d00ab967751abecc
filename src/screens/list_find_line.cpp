// The line of the search within a list.
#include "screens/list_find_line.h"

#include <algorithm>
#include <cstddef>
#include <cstdint>

#include "base/text.h"
#include "graphics/inks.h"
#include "platform/clock.h"
#include "platform/window.h"
#include "screens/list_text.h"
#include "screens/song_find.h"
#include "screens/words.h"
#include "state/lists.h"
#include "state/session.h"
#include "state/song_find.h"
#include "state/surfaces.h"

namespace qlm {
namespace {

using platform::Colour;
using platform::Rgb;

constexpr Rect kField = {40, 8, 420, 31};
constexpr Rect kSign = {48, 10, 60, 29};
constexpr Rect kTyped = {62, 10, 318, 29};
constexpr Rect kCount = {324, 10, 412, 29};

constexpr Colour kRed = Rgb(0xE0, 0x5C, 0x7C);

void DrawField() {
  DDBack->Fill(kField, inks::kDesk);
  DDBack->Fill({kField.left, kField.bottom - 1, kField.right, kField.bottom},
               songFind.typing ? inks::kGold : inks::kRule);
  DrawLine(kSign, u"/", kHeldRowFont, songFind.typing ? inks::kGold : inks::kQuiet);
}

// As much of the end of a text as fits into these pixels.
TextView EndThatFits(TextView text, int32_t pixels) {
  size_t tooMuch = 0;
  size_t fits = text.size();
  if (LineWidth(text, kHeldRowFont) <= pixels) return text;
  while (tooMuch + 1 < fits) {
    const size_t cut = (tooMuch + fits) / 2;
    (LineWidth(text.substr(cut), kHeldRowFont) <= pixels ? fits : tooMuch) = cut;
  }
  return text.substr(fits);
}

void DrawCaret(int32_t x) {
  constexpr uint32_t kBlink = 1000;  // ms, half of them lit
  if (platform::Now() % kBlink < kBlink / 2)
    DDBack->Fill({x, kTyped.top + 2, x + 2, kTyped.bottom - 2}, inks::kGold);
}

// What an input method still works on stands behind the words, with a line under it.
void DrawTyped() {
  constexpr int32_t kCaret = 4;  // with its air
  const int32_t most = kTyped.Width() - kCaret;
  const Text all = songFind.words + songFind.composing;
  const TextView seen = EndThatFits(all, most);
  DrawLine(kTyped, seen, kHeldRowFont, songFind.typing ? inks::kPaper : inks::kFreshTeal);
  if (!songFind.typing) return;
  const int32_t end = kTyped.left + LineWidth(seen, kHeldRowFont);
  const size_t composed = std::min(songFind.composing.size(), seen.size());
  const int32_t begin = kTyped.left + LineWidth(seen.substr(0, seen.size() - composed), kHeldRowFont);
  if (composed > 0) DDBack->Fill({begin, kTyped.bottom - 2, end, kTyped.bottom - 1}, inks::kFreshTeal);
  DrawCaret(end + 2);
  platform::PlaceInputMethod({begin, kField.top, end, kField.bottom});
}

// The rows that make nothing but a new course do not count.
void DrawCount() {
  const int32_t makers = GameState == kStateCourses ? 1 : 0;
  const int32_t found = lastSong + 1 - makers;
  const int32_t all = RowsOfWholeList() - makers;
  DrawLine(kCount, Join(found, u" / ", all), kRowFont, found > 0 ? inks::kQuiet : kRed, Align::kRight);
}

}  // namespace

void DrawFindLine() {
  if (!songFind.typing && !songFind.filtered) return;
  DrawField();
  if (songFind.words.empty() && songFind.composing.empty()) {
    DrawLine({kTyped.left + 6, kTyped.top, kTyped.right, kTyped.bottom},
             Words(u"曲名・アーティスト・ジャンルで検索"), kRowFont, inks::kQuiet);
    DrawCaret(kTyped.left);
    platform::PlaceInputMethod({kTyped.left, kField.top, kTyped.left, kField.bottom});
  } else {
    DrawTyped();
  }
  DrawCount();
}

}  // namespace qlm
