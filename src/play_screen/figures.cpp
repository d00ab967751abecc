// Numbers on the play screen, written into short buffers and drawn glyph by glyph.
#include "play_screen/figures.h"

#include <algorithm>
#include <array>
#include <charconv>
#include <cmath>
#include <optional>

#include "base/numbers.h"
#include "graphics/clips.h"
#include "state/chart.h"
#include "state/gauge.h"
#include "state/skin.h"
#include "state/surfaces.h"
#include "state/timeline.h"

namespace qlm {
namespace {

// Pixels by which a colon moves what follows to the left, before itself and again behind.
constexpr int32_t kColonPull = 3;

bool IsDecimal(char character) { return character >= '0' && character <= '9'; }

size_t GlyphOf(char character) {
  switch (character) {
    case '-': return 11;
    case '.': return 12;
    case ':': return 13;
    default: return static_cast<size_t>(character) - 47;
  }
}

// Goes from cell to cell and leaves the leading zeros empty.
class Pen {
 public:
  Pen(const SkinNumber& number, int64_t x, int64_t y) : number_(number), x_(x), y_(y) {}

  void Skip(int32_t cells) { cell_ += cells; }
  // `next` is the character behind it, 0 at the end.
  void Put(char character, char next) {
    if (!IsDecimal(next)) leading_ = false;
    if (!leading_ || character != '0') Draw(character);
    ++cell_;
  }

 private:
  void Draw(char character) {
    const bool colon = character == ':';
    if (colon) shift_ += kColonPull;
    const size_t glyph = GlyphOf(character);
    if (glyph < number_.rects.size()) {
      const int64_t step = int64_t{number_.width} + number_.gap;
      DrawFromSheet(number_.file, number_.rects[glyph], x_ + step * cell_ - shift_, y_);
    }
    leading_ = character == '-' && cell_ == 0;
    if (colon) shift_ += kColonPull;
  }

  const SkinNumber& number_;
  int64_t x_;
  int64_t y_;
  int64_t cell_ = 0;
  int64_t shift_ = 0;
  bool leading_ = true;
};

using Buffer = std::array<char, 64>;

std::string_view Written(const Buffer& buffer, const char* end) {
  return {buffer.data(), static_cast<size_t>(end - buffer.data())};
}

std::string_view Whole(Buffer& buffer, int64_t value) {
  return Written(buffer, std::to_chars(buffer.data(), buffer.data() + buffer.size(), value).ptr);
}

// At least two digits.
char* PutTwoDigits(char* at, char* end, int32_t value) {
  if (value < 10) *at++ = '0';
  return std::to_chars(at, end, value).ptr;
}

// Minutes and seconds; a time below 0 is 0.
std::string_view MinutesAndSeconds(Buffer& buffer, int32_t ms) {
  const int32_t seconds = std::max(ms, 0) / 1000;
  char* const end = buffer.data() + buffer.size();
  char* at = PutTwoDigits(buffer.data(), end, seconds / 60);
  *at++ = ':';
  return Written(buffer, PutTwoDigits(at, end, seconds % 60));
}

// At least two digits before the point and one behind it. Empty for what is too long to be a rate.
std::string_view Rate(Buffer& buffer, double rate) {
  buffer[0] = '0';
  char* const digits = buffer.data() + 1;
  const auto result = std::to_chars(digits, buffer.data() + buffer.size(), rate, std::chars_format::fixed, 1);
  if (result.ec != std::errc()) return {};
  const std::string_view written = Written(buffer, result.ptr);
  constexpr size_t kShort = 4;  // as in "04.3"
  return written.size() <= kShort ? written : written.substr(1);
}

void DrawFigure(const SkinPos& pos, std::string_view text) { DrawNumber(pos.id, pos.x, pos.y, text, 0); }

void DrawFigure(const SkinPos& pos, std::optional<int64_t> value, int32_t digits = 0) {
  if (value) DrawNumber(pos.id, pos.x, pos.y, *value, digits);
}

std::optional<int64_t> Rounded(double value) { return RoundTo<int64_t>(value); }
std::optional<int64_t> WholePart(double value) { return Rounded(std::trunc(value)); }

}  // namespace

void DrawNumber(int32_t number, int64_t x, int64_t y, std::string_view text, int32_t digits) {
  const SkinNumber* const strip = Number.Find(number);
  if (strip == nullptr || !DDBack) return;
  Pen pen(*strip, x, y);
  const auto missing =
      static_cast<int32_t>(digits - std::min<int64_t>(digits, static_cast<int64_t>(text.size())));
  for (size_t i = 0; i < text.size(); ++i) {
    // Zeros that fill a number up stand behind its sign, and are never seen.
    const bool firstDigit = i == (text.front() == '-' ? 1U : 0U);
    if (firstDigit) pen.Skip(missing);
    pen.Put(text[i], i + 1 < text.size() ? text[i + 1] : '\0');
  }
}

void DrawNumber(int32_t number, int64_t x, int64_t y, int64_t value, int32_t digits) {
  Buffer buffer;
  DrawNumber(number, x, y, Whole(buffer, value), digits);
}

void DrawChartFigures() {
  if (!DDBack) return;
  Buffer buffer;
  DrawFigure(BpmPos, Round(shownBPM), BpmPos.p3);
  DrawFigure(PlayPos1, MinutesAndSeconds(buffer, playClock));
  DrawFigure(PlayFullPos, MinutesAndSeconds(buffer, BMSLengthMs));
  DrawFigure(FpsPos, Rate(buffer, Fps));
  DrawFigure(StagePos, int64_t{CourseSong} + 1);
  DrawFigure(CountPos, Divide(int64_t{playClock} * 99, BMSLengthMs), CountPos.p3);
}

void DrawSideFigures(size_t side) {
  if (!DDBack) return;
  for (size_t grade = 0; grade < 5; ++grade) {
    const SkinPos& pos = ScoreCountPos[side][4 - grade];
    DrawFigure(pos, JudgeCount[side][grade], pos.p3);
  }
  DrawFigure(ScorePos[side], Rounded(ScoreShown[side]));
  DrawFigure(JPointPos[side], Rounded(JPtsShown[side]));
  DrawFigure(MaxPos[side], MaxCombo[side]);
  DrawFigure(GaugeNumPos[side], WholePart(GaugeShown[side]));
}

}  // namespace qlm
