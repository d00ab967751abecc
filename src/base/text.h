// Text as the game counts it: UTF-16 units, numbered from 1.
#pragma once

#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

namespace qlm {

using Text = std::u16string;
using TextView = std::u16string_view;

constexpr char16_t kCr = u'\r';
constexpr char16_t kLf = u'\n';
constexpr TextView kCrLf = u"\r\n";

inline int32_t Len(TextView text) { return static_cast<int32_t>(text.size()); }

// `count` units from unit `start` on; fewer, or none, where the text ends. A start below 1 gives nothing.
TextView Mid(TextView text, int64_t start, int64_t count = INT64_MAX);
TextView Left(TextView text, int64_t count);
TextView Right(TextView text, int64_t count);
// Without the blanks (U+0020, nothing else) at both ends.
TextView Trim(TextView text);
// Place of `part` from unit `start` on, counted from 1; 0 when it is not there.
int64_t InStr(TextView text, TextView part, int64_t start = 1);

Text UCase(TextView text);
// Whether `text` begins with `upper`, which is in capitals, in any letter case.
bool BeginsWith(TextView text, TextView upper);
bool EqualsAnyCase(TextView a, TextView b);

Text Replace(TextView text, TextView part, TextView by);
// The pieces between separators; one empty piece for an empty text.
std::vector<Text> Split(TextView text, TextView separator);

// A whole number in decimal; a float in the shortest form that reads back to the same value of its width,
// without an exponent where that is short; a Boolean as "True" or "False".
Text ToText(int64_t value);
Text ToText(float value);
Text ToText(double value);
Text ToText(bool value);
inline Text ToText(int32_t value) { return ToText(int64_t{value}); }
inline Text ToText(uint32_t value) { return ToText(int64_t{value}); }
inline TextView ToText(TextView text) { return text; }
inline TextView ToText(const Text& text) { return text; }
inline TextView ToText(const char16_t* text) { return text; }

// Capitals, without padding.
Text Hex(uint32_t value);
// With a fixed number of decimals, half to even, and at least one digit before the point unless `bare`.
Text Fixed(double value, int decimals, bool bare = false);
// At least `digits` digits, filled with zeros.
Text Padded(int64_t value, int digits);

// All arguments, each as ToText gives it, one behind the other.
template <typename... Parts>
Text Join(const Parts&... parts) {
  Text text;
  (text.append(ToText(parts)), ...);
  return text;
}

}  // namespace qlm
