// The score table of the row in hand.
#include "screens/list_scores.h"

#include <algorithm>
#include <cmath>

#include "base/numbers.h"
#include "base/text.h"
#include "graphics/draw.h"
#include "platform/clock.h"
#include "platform/text.h"
#include "screens/list_sprites.h"
#include "state/judgement.h"
#include "state/scores.h"
#include "state/song_select.h"
#include "state/surfaces.h"

namespace qlm {
namespace {

constexpr int32_t kSlideMs = 3200;
constexpr int32_t kTickerMs = 20;     // for each pixel
constexpr int32_t kTickerLoop = 520;  // pixels, 10400 ms
constexpr int32_t kRowsApart = 40;
constexpr int32_t kFirstLeft = 468;
constexpr int32_t kFirstTop = 40;
constexpr int32_t kSecondLine = 12;  // below the first
constexpr int32_t kPlaces = 10;
// Tops between which a row of the ticker is drawn.
constexpr int32_t kHighestTop = 36;
constexpr int32_t kLowestTop = 219;
constexpr Rect kTicker = {512, 64, 627, 220};

// Pixels that a place is still off to the right: most of the way is done in the first second.
int32_t SlideOf(int32_t place, int32_t ms) {
  const double rest = std::max(kSlideMs - ms, 0) / static_cast<double>(kSlideMs);
  return static_cast<int32_t>(RoundHalfEven((140 + 40 * place) * std::pow(rest, 8)));
}

Text Whole(float value) { return Fixed(double{value}, 0); }

bool IsFilled(const ScoreEntry& row) { return row.name != ScoreEntry{}.name; }

Text NameLine(int32_t place, const ScoreEntry& row) {
  return Join(place, OrdinalSuffix(place), u" ", platform::DecodeCp932({row.name.data(), row.name.size()}));
}

// The best row, with how often the chart was played, and "!" once it has been cleared.
void DrawFirst(int32_t ms) {
  const int32_t left = kFirstLeft + SlideOf(1, ms);
  DrawSprite(left - 8, kFirstTop - 5, kFirstScoreSprite);
  const ScoreEntry& row = scores.ScoreTable[0];
  const auto put = [&](int32_t right, int32_t down, TextView text, float spacing = 0) {
    DrawTextWithin(kScreen, left + right, kFirstTop + down, text, spacing);
  };
  put(0, 0, NameLine(1, row));
  put(130, 0, Join(Padded(scores.playCount, 3), scores.cleared != 0 ? u"!" : u""));
  put(20, kSecondLine, Whole(row.score));
  put(80, kSecondLine, Whole(row.jpts), -1);  // so that five digits end in front of the class
  if (IsFilled(row) && row.classIndex < RankLetters.size())
    put(120, kSecondLine, RankLetters[row.classIndex]);
}

// Where a row of the table stands: still in its place at first, later on its way up, coming in again below.
int32_t TopOf(int32_t place, int32_t ms) {
  const int32_t top = (place - 1) * kRowsApart + kTicker.top;
  if (ms < kSlideMs) return top;
  const int32_t moved = top - (ms - kSlideMs) / kTickerMs % kTickerLoop;
  return moved < kHighestTop ? moved + kTickerLoop : moved;
}

void DrawOthers(int32_t ms) {
  DrawSprite(kTicker.left - 6, kTicker.top - 2, kStripSprite);
  for (int32_t place = 2; place <= kPlaces; ++place) {
    const int32_t top = TopOf(place, ms);
    if (top < kHighestTop || top > kLowestTop) continue;
    const int32_t left = kTicker.left + 4 + SlideOf(place, ms);
    const ScoreEntry& row = scores.ScoreTable[place - 1];
    DrawTextWithin(kTicker, left, top, NameLine(place, row));
    DrawTextWithin(kTicker, left + 8, top + kSecondLine, Whole(row.score));
    DrawTextWithin(kTicker, left + 68, top + kSecondLine, Whole(row.jpts));
  }
}

}  // namespace

void DrawScores() {
  const int32_t ms = std::max(platform::Elapsed(platform::Now(), songSelect.rowCursorTime), 0);
  DrawOthers(ms);
  DrawFirst(ms);
}

}  // namespace qlm
