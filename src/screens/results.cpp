// The result screen.
#include "screens/results.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <cstddef>
#include <optional>

#include "base/numbers.h"
#include "base/text.h"
#include "graphics/clips.h"
#include "graphics/draw.h"
#include "graphics/fades.h"
#include "graphics/inks.h"
#include "graphics/present.h"
#include "platform/clock.h"
#include "platform/font.h"
#include "play/gauge.h"
#include "play/song_change.h"
#include "play_screen/figures.h"
#include "play_screen/gauge_graph.h"
#include "play_screen/net_status.h"
#include "screens/result_pieces.h"
#include "screens/words.h"
#include "sound/play.h"
#include "state/chart.h"
#include "state/gauge.h"
#include "state/judgement.h"
#include "state/key_numbers.h"
#include "state/keys.h"
#include "state/network.h"
#include "state/session.h"
#include "state/skin.h"
#include "state/surfaces.h"
#include "state/timeline.h"

namespace qlm {
namespace {

constexpr int32_t kCountMs = 2000;  // for which the figures count up
constexpr int32_t kSheetMs = 200;   // for which the ground opens
constexpr int32_t kGraphLeft = 31;
constexpr int32_t kGraphTop = 31;
constexpr int32_t kGraphWidth = 300;
constexpr int32_t kGraphMs = 1000;   // for which the graph is written
constexpr int32_t kSongsLeft = 400;  // of the songs of a course
constexpr size_t kEscLane = 0;       // the one that Esc presses on this screen

// Lanes that do not end the screen: the turntables, either way, and the bar line of side 2.
constexpr bool EndsNothing(size_t lane) {
  const size_t channel = lane + 11;
  return channel == 16 || channel == 17 || channel == 20 || channel == 26 || channel == 27;
}

// From the running totals of a course to each song's own.
void SplitExPts() {
  if (!CourseMode) return;
  StoreExPts();
  for (int32_t song = std::min(CourseSong, int32_t{CourseExPts.kLast}); song >= 1; --song) {
    CourseExPts[song] = static_cast<int16_t>(CourseExPts[song] - CourseExPts[song - 1]);
  }
}

// Quirk: side 1 of a play of one player stands where it started, so that with the hazard gauge, where that is
// 100, the jingle is always that of a clear.
void PlayJingle() {
  PlaySE(Gauge[0] < kClearGauge && Gauge[1] < kClearGauge ? SE::kFail : SE::kClear);
  PlaySE(SE::kTick, true);
}

// Milliseconds since `begin`, as far as the figures count.
int32_t CountingTime(uint32_t begin) {
  const int32_t ms = platform::Elapsed(platform::Now(), begin);
  if (ms <= kCountMs) return std::max(ms, 0);
  StopSE(SE::kTick);
  return kCountMs;
}

// The part of a value that is shown at `t`, by whole numbers.
int64_t CountedUp(double value, int32_t t) { return RoundTo<int64_t>(value * t).value_or(0) / kCountMs; }

// The lines of a ruled sheet, as far as the ground under them has opened: a gold head, three edges, and rules
// every so many pixels, 0 for none.
void DrawRuling(const Rect& sheet, int32_t rules, const Rect& opened) {
  const auto line = [&](const Rect& rect, platform::Colour colour) {
    DDBack->Fill(
        {rect.left, std::max(rect.top, opened.top), rect.right, std::min(rect.bottom, opened.bottom)},
        colour);
  };
  line({sheet.left, sheet.top, sheet.left + 1, sheet.bottom}, inks::kEdge);
  line({sheet.right - 1, sheet.top, sheet.right, sheet.bottom}, inks::kEdge);
  line({sheet.left, sheet.bottom - 1, sheet.right, sheet.bottom}, inks::kEdge);
  line({sheet.left, sheet.top, sheet.right, sheet.top + 1}, inks::kGold);
  for (int32_t y = sheet.top + rules; rules > 0 && y < sheet.bottom - 1; y += rules) {
    line({sheet.left + 8, y, sheet.right - 8, y + 1}, inks::kFaintRule);
  }
}

// The ground, which opens from the middle line over the held frame, with the sheets of graph, counts and
// figures.
void DrawSheet(int32_t t) {
  const auto half = static_cast<int32_t>(RoundHalfEven(std::min(1.2 * t, 240.0)));
  const Rect opened{0, 240 - half, kScreen.right, 240 + half};
  if (t < kSheetMs && DDSnapshot) DDBack->Copy(0, 0, *DDSnapshot, FullRect);
  // Without a moving ground it is black.
  DDBack->Fill(opened, 0);
  ScreenRect = opened;
  DrawMovingBack();
  ScreenRect = kScreen;
  DrawRuling({24, 24, 338, 237}, 0, opened);
  DrawRuling({24, 256, 264, 457}, 40, opened);
  // In a battle the players stand there.
  if (network.NetActive) return;
  // The songs of a course begin higher and reach further down.
  DrawRuling(CourseMode ? Rect{304, 238, 616, 388} : Rect{304, 252, 616, 345}, 0, opened);
}

void DrawFigure(int32_t y, TextView name, int64_t value) {
  const int32_t next = CourseMode ? kSongsLeft : kScreen.right;
  DrawBefore(next, 320, y, Join(name, value));
}

void DrawFigures(int32_t t) {
  DrawFigure(260, u"SCORE: ", CountedUp(Score[0], t));
  DrawFigure(275, u"ExPTS: ", CountedUp(ExPts(), t));
  DrawFigure(290, u"J-PTS: ", CountedUp(double{JPts[0]}, t));
  DrawFigure(320, u"COMBO: ", CountedUp(MaxCombo[0], t));
}

// Written from the left, with the nib at its end.
void DrawGraph(int32_t t) {
  if (!DDGraph) return;
  const double root = t * 0.0173205080756888;
  const auto width = t < kGraphMs ? static_cast<int32_t>(RoundHalfEven(root * root)) : kGraphWidth;
  DDBack->Copy(kGraphLeft, kGraphTop, *DDGraph, {0, 0, width, DDGraph->Height()});
  if (t >= kGraphMs) return;
  DrawNib(kGraphLeft + width, kGraphTop + DDGraph->Height() / 2);
}

// The first strip of digits that the skin has.
std::optional<int32_t> FirstNumber() {
  for (int32_t number = 0; number <= Number.kLast; ++number) {
    if (Number[number].width > 0) return number;
  }
  return std::nullopt;
}

// The five counts come in from the left, each with its word.
void DrawCounts(int32_t t) {
  constexpr std::array<int32_t, 5> kRows = {260, 300, 340, 380, 420};
  const double left = kCountMs - t;
  const auto way = static_cast<int32_t>(RoundHalfEven(left * left * 0.001));
  const std::optional<int32_t> number = FirstNumber();
  for (size_t row = 0; row < kRows.size(); ++row) {
    const int64_t slid = (static_cast<int64_t>(row) + 1) * way;
    const int64_t count = CountedUp(JudgeCount[0][row], t);
    if (number) DrawNumber(*number, 200 - slid, kRows[row], count, 4);
    DrawClip(JudgePos[0][static_cast<size_t>(kPerfect) - row].id, 50 - slid, kRows[row]);
  }
}

void DrawSongs() {
  if (!CourseMode) return;
  for (int32_t song = 0; song <= std::min(CourseSong, int32_t{CourseExPts.kLast}); ++song) {
    DrawText(kSongsLeft, 240 + 14 * song, Join(song + 1, u". ", int32_t{CourseExPts[song]}), 0);
  }
}

// What the play came to, once everything has been counted. In a battle the players stand in its place.
void DrawSeal(int32_t t) {
  if (t < kCountMs || network.NetActive) return;
  const bool cleared = PlayCleared && Gauge[0] >= kClearGauge;
  DrawPiece(cleared ? kSealPiece : kTornSealPiece, 480, 32);
}

void DrawWaiting() {
  if (network.NetPlaying) {
    platform::DrawFontText(*DDBack, 80, 250,
                           Words(u"接続中の他のプレイヤーの演奏が終了するまでお待ち下さい。"), 16,
                           inks::kPaper);
  }
}

void DrawResults(int32_t t) {
  if (!DDBack) return;
  DrawSheet(t);
  DrawGraph(t);
  DrawSeal(t);
  DrawFigures(t);
  DrawCounts(t);
  DrawSongs();
  DrawWaiting();
  DrawNetStatus();
}

bool Ended() {
  if (!PlayEnd || network.NetPlaying) return false;
  for (size_t lane = 0; lane < LaneDown.size(); ++lane) {
    if (LaneDown[lane] && !EndsNothing(lane)) return true;
  }
  return false;
}

}  // namespace

void ShowResults() {
  const int32_t stateBehind = GameState;
  GameState = network.NetPlaying ? kStatePlayOver : kStateResults;
  FadeScreen(2, 0);
  SplitExPts();
  if (Combo[0] > 0) DrawJudgedNote(JPtsMax[0] / kJPtsANote, Combo[0], LastJudge[0]);
  PlayJingle();
  LaneDown[kEscLane] = false;
  const uint32_t begin = platform::Now();
  while (!Ended()) {
    if (!network.NetPlaying) GameState = kStateResults;
    DrawResults(CountingTime(begin));
    PresentFrame();
  }
  for (const SE sound : {SE::kClear, SE::kFail, SE::kTick}) StopSE(sound);
  PlayAlive = false;
  FadeScreen(1, 0);
  GameState = stateBehind;
}

// Quirk: Esc presses lane 11 here, and lets go lane 16.
void ProcessKey_Results(int32_t key) {
  const int16_t* const code = KeyMap.Find(key);
  const int32_t lane = key == kKeyEsc ? static_cast<int32_t>(kEscLane) : (code != nullptr ? *code : 0) - 11;
  if (lane >= 0 && lane < kLanes) LaneDown[static_cast<size_t>(lane)] = true;
}

}  // namespace qlm
