// Lines of a skin: how they are cleaned, and the ways in which directives take their arguments.
#pragma once

#include <array>
#include <concepts>
#include <cstdint>
#include <optional>
#include <utility>
#include <vector>

#include "base/numbers.h"
#include "base/text.h"
#include "graphics/skin_report.h"

namespace qlm {

// Bytes of a skin that are read; none comes near it.
constexpr int64_t kLongestSkin = int64_t{4} << 20;

// A line as the reading takes it: blanks for tabs, cut at the first "//", trimmed.
// Quirk: the cut does not ask what it cuts, so a file name that holds "//" loses its end.
Text CleanSkinLine(TextView raw);

// Whether a line without the field makes sense to an author. The reading itself takes either.
enum class Field : bool { kNeeded, kMayBeLeftOut };

// The word before the first blank, split at "_".
struct SkinWord {
  std::vector<Text> pieces;    // in capitals; at least one
  std::optional<size_t> side;  // 0 or 1: the digit that ends the last piece

  // Empty when there are fewer.
  TextView Piece(size_t index) const { return index < pieces.size() ? TextView(pieces[index]) : TextView(); }
};

// The reading of one skin: the line at hand, what is left of its arguments, and what lasts from line to line.
class SkinReading {
 public:
  explicit SkinReading(SkinReport* report) : report_(report) {}

  // Turns to the next line, which must outlive the reading of it.
  void Begin(TextView line);
  TextView Line() const { return line_; }

  // The word, as it stands and split.
  TextView WholeWord() const { return line_.substr(0, line_.find(u' ')); }
  SkinWord Word() const { return SplitWord(WholeWord()); }
  // Quirk: a word that carries a side has its last letter cut off first, whatever it is: "1P" is meant.
  SkinWord SidedWord() const { return SplitWord(Left(WholeWord(), Len(WholeWord()) - 1)); }

  // Two hexadecimal digits from a column on, 0 when they are none; two decimal ones, nothing then.
  int64_t HexDigits(int64_t column);
  std::optional<int32_t> DecimalDigits(int64_t column);

  // Where the arguments begin: at a column counted from 1, whatever stands before it, or behind the first
  // blank.
  void ArgumentsFrom(int64_t column);
  void ArgumentsBehindBlank();

  // The next argument. A field that is missing or no number, or whose number does not fit, leaves `target` as
  // it is; a hexadecimal one that is there and is none gives 0. `name` is for the report.
  template <std::integral T>
  void Whole(TextView name, T& target, Field field = Field::kNeeded) {
    const std::optional<TextView> text = Next(name, field);
    const std::optional<double> number = text ? Decimal(name, *text, field) : std::nullopt;
    if (number) Store(name, target, RoundTo<T>(*number), *text);
  }
  // The same, with 0 for a field that is missing or no number.
  template <std::integral T>
  void WholeOrZero(TextView name, T& target, Field field = Field::kNeeded) {
    const std::optional<TextView> text = Next(name, field);
    const std::optional<double> number = text ? Decimal(name, *text, field) : std::nullopt;
    Store(name, target, RoundTo<T>(number.value_or(0)), text.value_or(TextView()));
  }
  template <std::integral T>
  void Hex(TextView name, T& target, Field field = Field::kNeeded) {
    const std::optional<TextView> text = Next(name, field);
    if (!text) return;
    const uint32_t number = Hexadecimal(name, *text, field);
    Store(name, target, std::in_range<T>(number) ? std::optional(number) : std::nullopt, *text);
  }
  // A hexadecimal one up to FF; nothing when it is missing, no number or larger.
  std::optional<uint8_t> HexByte(TextView name);
  void Single(TextView name, float& target);
  double SingleOrZero(TextView name, Field field);
  // A name without outer blanks; empty when it is missing.
  TextView Name(TextView name);

  // For the report. Without one nothing happens, and no text is made.
  template <typename... Parts>
  void Remark(const Parts&... parts) {
    if (report_ != nullptr) AddRemark(Join(parts...));
  }
  void Sets(const void* entry) {
    if (report_ != nullptr) AddSet(entry);
  }
  void Uses(SkinPart part, int64_t index) {
    if (report_ != nullptr) report_->uses.push_back({lineNumber_, part, index});
  }
  void Stands(SkinPart part, int64_t index, int32_t x, int32_t y, AtEdge atEdge) {
    if (report_ != nullptr) report_->places.push_back({lineNumber_, part, index, x, y, atEdge});
  }
  SkinReport* Report() const { return report_; }

  // Row of the option that the next unknown option word falls on.
  // Quirk: it is the number that all directives of the load share: the one of the last sheet, clip or digit
  // strip, or the row of the last known option word.
  int64_t row = 0;

 private:
  static SkinWord SplitWord(TextView word);
  void TakeArguments(TextView arguments);
  // Nothing when there are no more.
  std::optional<TextView> Next(TextView name, Field field);
  std::optional<double> Decimal(TextView name, TextView text, Field field);
  uint32_t Hexadecimal(TextView name, TextView text, Field field);
  template <typename T, typename U>
  void Store(TextView name, T& target, const std::optional<U>& value, TextView text) {
    Assign(target, value);
    if (!value) Remark(name, u" is out of range: ", text);
  }
  void CheckBlankAt(int64_t column);
  void CheckColumn(int64_t column);
  void AddRemark(Text text);
  void AddSet(const void* entry);

  SkinReport* report_;
  int32_t lineNumber_ = 0;
  TextView line_;
  std::optional<TextView> rest_;  // of the arguments; nothing behind the last one
};

}  // namespace qlm
