// Numbers from texts, roundings and divisions. What fails gives nothing, and the statement it stands in is
// skipped.
#pragma once

#include <concepts>
#include <cstdint>
#include <limits>
#include <optional>

#include "base/text.h"

namespace qlm {

// Keeps `target` as it is when there is no value.
template <typename T, typename U>
void Assign(T& target, const std::optional<U>& value) {
  if (value) target = static_cast<T>(*value);
}

constexpr bool IsDigit(char16_t unit) { return unit >= u'0' && unit <= u'9'; }
constexpr bool IsHexDigit(char16_t unit) {
  return IsDigit(unit) || (unit >= u'A' && unit <= u'F') || (unit >= u'a' && unit <= u'f');
}

// The number at the start of a text, 0 when there is none. Blanks are passed over everywhere, also between
// digits. Then a sign, digits, a decimal point and an exponent with E or D as far as they go. "&H" begins
// hexadecimal digits.
double Val(TextView text);
// The digits of a text read as hexadecimal, as far as they go: 1G gives 1, ZZ gives 0. At most 32 bits are
// kept.
uint32_t ValHex(TextView text);

// Strict conversions: the whole text, without outer blanks, must be a number in the target's range. Fractions
// of whole numbers round half to even.
std::optional<double> ToDouble(TextView text);
std::optional<int32_t> ToWhole(TextView text);
std::optional<uint8_t> ToByte(TextView text);
std::optional<float> ToSingle(TextView text);
// "True" and "False" in any letter case, or a number, of which 0 is false.
std::optional<bool> ToBoolean(TextView text);

// Half to even, in 64 bits; not to be called with what does not fit.
double RoundHalfEven(double value);
// The same, failing where the result is no whole number of the target type.
template <std::integral T>
std::optional<T> RoundTo(double value) {
  // The greatest 64-bit number is no double; the one behind it is.
  constexpr T kHalf = std::numeric_limits<T>::max() / 2 + 1;
  constexpr double kEnd = 2.0 * static_cast<double>(kHalf);
  const double rounded = RoundHalfEven(value);
  if (!(rounded >= static_cast<double>(std::numeric_limits<T>::min()) && rounded < kEnd)) return std::nullopt;
  return static_cast<T>(rounded);
}
inline std::optional<int32_t> Round(double value) { return RoundTo<int32_t>(value); }
// A double brought to 32 bits; fails when finite and out of range.
std::optional<float> Narrow(double value);

// Whole-number division that truncates and fails on 0.
std::optional<int32_t> Divide(int64_t a, int64_t b);
// The rest of that division, with the sign of `a`.
std::optional<int32_t> Modulo(int64_t a, int64_t b);

inline int16_t MinI16(int16_t a, int16_t b) { return a < b ? a : b; }
inline int16_t MaxI16(int16_t a, int16_t b) { return a > b ? a : b; }
inline int32_t MinI32(int32_t a, int32_t b) { return a < b ? a : b; }
inline int32_t MaxI32(int32_t a, int32_t b) { return a > b ? a : b; }
// x, or 0 if x is negative.
inline float ZeroFloor(float x) { return x < 0 ? 0.0F : x; }

// "st", "nd", "rd" or "th" by the last digit alone.
// Quirk: 11, 12 and 13 make no exception, so 11 gives "st".
TextView OrdinalSuffix(int32_t n);

}  // namespace qlm
