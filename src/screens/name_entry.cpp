// The ranking of a play, and the entry of its name.
#include "screens/name_entry.h"

#include <cmath>
#include <optional>

#include "base/numbers.h"
#include "base/text.h"
#include "graphics/draw.h"
#include "graphics/inks.h"
#include "graphics/present.h"
#include "platform/clock.h"
#include "platform/text.h"
#include "play/score_entry.h"
#include "screens/result_pieces.h"
#include "state/gauge.h"
#include "state/judgement.h"
#include "state/keys.h"
#include "state/lists.h"
#include "state/scores.h"
#include "state/session.h"
#include "state/surfaces.h"

namespace qlm {
namespace {

constexpr int64_t kLongestName = 8;
constexpr TextView kNameOfNobody = u"QuIl :-";

// The ledger: columns, and the ground of the new row.
constexpr int32_t kLeft = 10;
constexpr int32_t kRight = 630;
constexpr int32_t kHeadings = 60;
constexpr int32_t kNumber = 20;
constexpr int32_t kName = 40;
constexpr int32_t kScore = 160;
constexpr int32_t kJPts = 240;
constexpr int32_t kCombo = 290;
constexpr int32_t kMark = 300;
constexpr int32_t kHiSpeed = 340;
constexpr int32_t kRealHiSpeed = 370;
constexpr int32_t kClass = 420;
constexpr platform::Colour kWarm = platform::Rgb(0x4A, 0x36, 0x18);

constexpr int32_t TopOf(int32_t row) { return 80 + 30 * row; }

// The first row that the play is above, nothing when there is none. The score is compared in its 64 bits.
// Quirk: a row holds 32 bits of it, so that an equal score may rank above its own row.
std::optional<int32_t> RankedRow() {
  for (int32_t row = 0; row <= scores.ScoreTable.kLast; ++row) {
    if (Score[0] > double{scores.ScoreTable[row].score}) return row;
  }
  return std::nullopt;
}

void MoveDownFrom(int32_t row) {
  for (int32_t below = scores.ScoreTable.kLast; below > row; --below) {
    scores.ScoreTable[below] = scores.ScoreTable[below - 1];
  }
}

void MarkCleared() {
  scores.cleared = -1;
  const auto row = static_cast<size_t>(listCursor);
  if (listCursor >= 0 && row < songCleared.size()) songCleared[row] = true;
}

void DrawLedger(int32_t newRow) {
  // The ground of the results before it.
  DDBack->Fill(kScreen, inks::kDesk);
  DrawMovingBack();
  DDBack->Fill({kLeft, kHeadings - 8, kRight, TopOf(10) - 7}, inks::kSheet);
  for (const int32_t x : {kLeft, kRight - 1})
    DDBack->Fill({x, kHeadings - 8, x + 1, TopOf(10) - 7}, inks::kEdge);
  DDBack->Fill({kLeft, TopOf(newRow) - 7, kRight, TopOf(newRow) + 23}, kWarm);
  for (int32_t row = 0; row <= 10; ++row)
    DDBack->Fill({kLeft, TopOf(row) - 8, kRight, TopOf(row) - 7}, inks::kRule);
  DDBack->Fill({kLeft, kHeadings - 9, kRight, kHeadings - 8}, inks::kGold);
  DDBack->Fill({kLeft, TopOf(10) - 8, kRight, TopOf(10) - 7}, inks::kGold);
}

void DrawHeadings() {
  struct Heading {
    int32_t x;
    TextView text;
  };
  constexpr Heading kTexts[] = {{kNumber, u"NO"},       {kName, u"NAME"},   {kScore, u"SCORE"},
                                {kJPts, u"J-PTS"},      {kCombo, u"COMBO"}, {kHiSpeed, u"HS"},
                                {kRealHiSpeed, u"RHS"}, {kClass, u"CLASS"}};
  for (const Heading& heading : kTexts) DrawText(heading.x, kHeadings, heading.text, 0);
}

void DrawRow(int32_t row, const ScoreEntry& entry) {
  const int32_t y = TopOf(row);
  const auto number = [&](int32_t x, int32_t next, double value, int digits) {
    if (const auto rounded = Round(value)) DrawBefore(next, x, y, Padded(*rounded, digits));
  };
  DrawText(kName, y, platform::DecodeCp932({entry.name.data(), entry.name.size()}), 0);
  number(kScore, kJPts, double{entry.score}, 1);
  number(kJPts, kCombo, double{entry.jpts}, 5);
  number(kCombo, kHiSpeed, entry.maxCombo, 3);
  DrawBefore(kRealHiSpeed, kHiSpeed, y, Join(Fixed(double{entry.hiSpeed}, 1), u"x"));
  DrawBefore(kClass, kRealHiSpeed, y, Join(Fixed(double{entry.realHiSpeed}, 1), u"x"));
  // A row never filled has no class.
  if (entry.name[0] != '\0' && entry.classIndex < RankLetters.size()) {
    DrawText(kClass, y, RankLetters[entry.classIndex], 0);
  }
}

// The row of the name that is being typed.
void DrawNewRow(int32_t row) {
  constexpr double kTurnMs = 600;  // of the mark to and fro
  constexpr double kWholeTurn = 6.283185307179586;
  const uint32_t now = platform::Now();
  const int32_t y = TopOf(row);
  const int32_t cursor = kName + SysFontW * Len(scores.PlayerName);
  DrawText(kName, y, scores.PlayerName, 0);
  if (now % 1000 >= 501) DrawText(cursor, y, u"_", 0);
  const double wobble = 6 * std::sin(now % 600 / kTurnMs * kWholeTurn);
  DrawText(kMark + static_cast<int32_t>(RoundHalfEven(wobble)), y, u"<<<", 0);
  DrawText(kHiSpeed, y, u"ENTER YOUR NAME", 0);
}

// Behind the longest name, under all that is written; it does not leave the ledger.
void DrawPen(int32_t newRow) {
  ScreenRect.top = kHeadings - 8;
  DrawNib(kName + SysFontW * (static_cast<int32_t>(kLongestName) + 1), TopOf(newRow) + SysFontH);
  ScreenRect = kScreen;
}

void DrawNameEntry(int32_t newRow) {
  const int32_t rank = newRow + 1;
  if (!DDBack) return;
  DrawLedger(newRow);
  DrawPen(newRow);
  DrawText(10, 30, Join(u"YOU RANKED IN ", rank, OrdinalSuffix(rank), u" !"), 0);
  DrawHeadings();
  for (int32_t row = 0; row <= scores.ScoreTable.kLast; ++row) {
    DrawText(kNumber, TopOf(row), ToText(row + 1), 0);
    if (row == newRow) {
      DrawNewRow(row);
    } else {
      DrawRow(row, scores.ScoreTable[row]);
    }
  }
}

void AskForName(int32_t newRow) {
  GameState = kStateEnterName;
  while (GameState == kStateEnterName) {
    scores.PlayerName = Left(scores.PlayerName, kLongestName);
    DrawNameEntry(newRow);
    PresentFrame();
  }
}

}  // namespace

int32_t AddScoreDat() {
  if (Gauge[0] >= kClearGauge) MarkCleared();
  const std::optional<int32_t> row = RankedRow();
  if (!row) return 0;
  // Quirk: a play that may not rank makes room for its row all the same, so that the row that stood there is
  // in the table twice and the last one is lost.
  MoveDownFrom(*row);
  if (RankLocked) return 0;
  AskForName(*row);
  FillEntry(scores.ScoreTable[*row]);
  return *row + 1;
}

// The key that ends the entry also comes as a key, which must do no more.
void ProcessKey_EnterName(int32_t character) {
  if (character >= 32 && character <= 127) {
    scores.PlayerName += static_cast<char16_t>(character);
  } else if (character == 8) {
    if (!scores.PlayerName.empty()) scores.PlayerName.pop_back();
  } else if (character == 13 || character == 27) {
    if (scores.PlayerName.empty()) scores.PlayerName = kNameOfNobody;
    GameState = kStateSongSelect;
    enterEaten = true;
  }
}

}  // namespace qlm
