// Chart text: how the bytes of a file become command lines, and how such lines are taken apart. The reader
// and the header read share it.
#pragma once

#include <cstdint>
#include <optional>
#include <string_view>

#include "base/numbers.h"
#include "base/text.h"
#include "state/chart.h"

namespace qlm {

struct ChartText {
  Text text;               // ends in CR LF
  bool converted = false;  // the file had no CR LF
};
// Decodes the bytes up to the first NUL. Where they hold no CR LF at all, each CR becomes one.
// Quirk: a file with line feeds alone stays as it is and so has no command line.
ChartText DecodeChart(std::string_view bytes);

// Place, from 0, just behind the next CR LF # that begins at `from` or later; npos when there is none.
// Quirk: a # on the very first line has no CR LF before it and is never found, nor is one behind a blank.
size_t FindCommand(TextView text, size_t from);
// Place of the next CR LF that begins at `from` or later; the text's end when there is none.
size_t FindLineEnd(TextView text, size_t from);

// A line is a command without its #. What follows holds for any line, however short.

// A line of data: measure, channel, cells.
constexpr bool IsNumbered(TextView line) { return !line.empty() && IsDigit(line[0]); }
// Characters 1 to 3 as a number, plus `basePos`. Fails out of range, as 9E9 is.
std::optional<int32_t> MeasureOf(TextView line, int32_t basePos);
// Characters 4 and 5 in decimal.
// Quirk: a channel of letters and digits is its leading digit, so 1A is 1.
std::optional<int32_t> ChannelOf(TextView line);
// Whether the cells of a channel become objects.
constexpr bool MakesObjects(int32_t channel) {
  return channel == 1 || channel == 3 || channel == 4 || (channel >= 6 && channel <= 8) ||
         IsNoteChannel(channel) || (channel >= 31 && channel <= 39) || (channel >= 41 && channel <= 49);
}
// The length of a measure, from character 7 on. Fails out of range.
std::optional<float> LengthOf(TextView line);

// The two-character cells from character 7 on. A trailing odd character belongs to none.
class Cells {
 public:
  explicit Cells(TextView line)
      : data_(line.size() > 6 ? line.substr(6) : TextView()), step_(192.0 / static_cast<double>(Count())) {}

  int64_t Count() const { return static_cast<int64_t>(data_.size() / 2); }
  bool OddEnd() const { return data_.size() % 2 != 0; }
  TextView Letters(int64_t j) const { return {At(j), 2}; }
  // A cell "00", which makes nothing.
  bool IsRest(int64_t j) const { return At(j)[0] == u'0' && At(j)[1] == u'0'; }
  // Hexadecimal digits as far as they go.
  // Quirk: 1G is 1 and ZZ is 0, and both are objects.
  int32_t Value(int64_t j) const;
  // Place in a measure of 192, half to even.
  // Quirk: with 384 cells or more the last ones round up to 192, the place of the next measure.
  int32_t Tick(int64_t j) const;

 private:
  const char16_t* At(int64_t j) const { return data_.data() + 2 * j; }

  TextView data_;
  double step_;
};

// The two characters that name the slot of a #WAV, #BMP or #BPM.
inline TextView SlotDigits(TextView line) { return Mid(line, 4, 2); }
// The slot that digits name in the base of the reading, as far as they go. Letters of base 36 may be small.
int32_t SlotValue(TextView digits);
inline int32_t SlotOf(TextView line) { return SlotValue(SlotDigits(line)); }

// Place of a tick on the unscaled axis. Fails out of range.
std::optional<int32_t> PosOf(int32_t measure, int32_t tick);

// Up to three letters in capitals as one number, for a switch over command words.
constexpr uint64_t Word(TextView letters) {
  uint64_t word = 0;
  for (size_t i = 0; i < 3; ++i) {
    const char16_t unit = i < letters.size() ? letters[i] : u'\0';
    word = word << 16 | static_cast<uint64_t>(unit >= u'a' && unit <= u'z' ? unit - 32 : unit);
  }
  return word;
}
// The text from character `start` on without outer blanks.
inline TextView Argument(TextView line, int64_t start) { return Trim(Mid(line, start)); }
// The title picture of a #STAGEFILE.
inline TextView StageFile(TextView line) { return Argument(line, 11); }

}  // namespace qlm
