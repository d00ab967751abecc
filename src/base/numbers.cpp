// Reading and rounding of numbers.
#include "base/numbers.h"

#include <algorithm>
#include <charconv>
#include <cmath>
#include <string>

namespace qlm {
namespace {

// Of a hexadecimal digit. The low bits of "A" and "a" are 1.
constexpr uint32_t DigitValue(char16_t unit) { return IsDigit(unit) ? unit - u'0' : (unit & 15U) + 9; }

constexpr bool IsExponentLetter(char16_t unit) {
  return unit == u'E' || unit == u'e' || unit == u'D' || unit == u'd';
}

// An exponent beyond it outweighs the digits of any text.
constexpr int64_t kFarShift = int64_t{1} << 40;

// Walks over a text without seeing its blanks.
class BlankSkipper {
 public:
  explicit BlankSkipper(TextView text) : text_(text) {}
  // The unit at the reader's place, 0 behind the end.
  char16_t Peek() {
    while (at_ < text_.size() && text_[at_] == u' ') ++at_;
    return at_ < text_.size() ? text_[at_] : u'\0';
  }
  void Next() { ++at_; }
  size_t Place() const { return at_; }
  void Return(size_t place) { at_ = place; }

 private:
  TextView text_;
  size_t at_ = 0;
};

// The longest number at the reader's place, in the form that the standard conversion reads. Empty when there
// is none.
std::string TakeNumber(BlankSkipper& reader) {
  std::string number;
  const auto takeDigits = [&] {
    bool any = false;
    for (; IsDigit(reader.Peek()); reader.Next(), any = true) number += static_cast<char>(reader.Peek());
    return any;
  };
  const auto takeSign = [&] {
    if (reader.Peek() == u'-') number += '-';
    if (reader.Peek() == u'-' || reader.Peek() == u'+') reader.Next();
  };
  takeSign();
  bool digits = takeDigits();
  if (reader.Peek() == u'.') {
    reader.Next();
    if (!digits) number += '0';
    number += '.';
    const bool decimals = takeDigits();
    if (!decimals) number += '0';
    digits = digits || decimals;
  }
  if (!digits) return {};
  if (IsExponentLetter(reader.Peek())) {
    const size_t place = reader.Place();
    const size_t length = number.size();
    number += 'e';
    reader.Next();
    takeSign();
    if (!takeDigits()) {
      number.resize(length);
      reader.Return(place);
    }
  }
  return number;
}

// Whether a number that does not fit a double is too small for it, and not too large: by the place of its
// first digit that counts, moved by the exponent.
bool IsTooSmall(const std::string& number) {
  const size_t letter = std::min(number.find('e'), number.size());
  const size_t point = std::min(number.find('.'), letter);
  const auto magnitude =
      static_cast<int64_t>(point) - static_cast<int64_t>(number.find_first_of("123456789"));
  if (letter == number.size()) return magnitude < 0;
  const char* const exponent = number.data() + letter + 1;
  int64_t shift = 0;
  const auto result = std::from_chars(exponent, number.data() + number.size(), shift);
  if (result.ec != std::errc() || shift < -kFarShift || shift > kFarShift) return *exponent == '-';
  return magnitude + shift < 0;
}

double Convert(const std::string& number) {
  double value = 0;
  const auto result = std::from_chars(number.data(), number.data() + number.size(), value);
  if (result.ec == std::errc::result_out_of_range) {
    const double size = IsTooSmall(number) ? 0.0 : HUGE_VAL;
    return number.starts_with('-') ? -size : size;
  }
  return value;
}

}  // namespace

double Val(TextView text) {
  BlankSkipper reader(text);
  if (reader.Peek() == u'&') {
    reader.Next();
    if (reader.Peek() != u'H' && reader.Peek() != u'h') return 0;
    return ValHex(text.substr(reader.Place() + 1));
  }
  const std::string number = TakeNumber(reader);
  return number.empty() ? 0 : Convert(number);
}

uint32_t ValHex(TextView text) {
  uint32_t value = 0;
  for (const char16_t unit : text) {
    if (unit == u' ') continue;
    if (!IsHexDigit(unit)) break;
    value = value << 4 | DigitValue(unit);
  }
  return value;
}

std::optional<double> ToDouble(TextView text) {
  const TextView trimmed = Trim(text);
  if (trimmed.empty() || trimmed.find(u' ') != TextView::npos) return std::nullopt;
  BlankSkipper reader(trimmed);
  const std::string number = TakeNumber(reader);
  if (number.empty() || reader.Place() != trimmed.size()) return std::nullopt;
  const double value = Convert(number);
  if (!std::isfinite(value)) return std::nullopt;
  return value;
}

std::optional<int32_t> ToWhole(TextView text) {
  const std::optional<double> value = ToDouble(text);
  return value ? Round(*value) : std::nullopt;
}

std::optional<uint8_t> ToByte(TextView text) {
  const std::optional<double> value = ToDouble(text);
  return value ? RoundTo<uint8_t>(*value) : std::nullopt;
}

std::optional<float> ToSingle(TextView text) {
  const std::optional<double> value = ToDouble(text);
  return value ? Narrow(*value) : std::nullopt;
}

std::optional<bool> ToBoolean(TextView text) {
  const TextView trimmed = Trim(text);
  if (EqualsAnyCase(trimmed, u"TRUE")) return true;
  if (EqualsAnyCase(trimmed, u"FALSE")) return false;
  const std::optional<double> value = ToDouble(trimmed);
  if (!value) return std::nullopt;
  return *value != 0;
}

// The program never leaves the default rounding mode, which is half to even.
double RoundHalfEven(double value) { return std::nearbyint(value); }

std::optional<float> Narrow(double value) {
  const auto narrowed = static_cast<float>(value);
  if (std::isfinite(value) && !std::isfinite(narrowed)) return std::nullopt;
  return narrowed;
}

std::optional<int32_t> Divide(int64_t a, int64_t b) {
  if (b == 0) return std::nullopt;
  const int64_t quotient = a / b;
  if (quotient < INT32_MIN || quotient > INT32_MAX) return std::nullopt;
  return static_cast<int32_t>(quotient);
}

std::optional<int32_t> Modulo(int64_t a, int64_t b) {
  if (b == 0 || b == -1) return b == 0 ? std::nullopt : std::optional<int32_t>(0);
  return static_cast<int32_t>(a % b);
}

TextView OrdinalSuffix(int32_t n) {
  switch (n % 10) {
    case 1: return u"st";
    case 2: return u"nd";
    case 3: return u"rd";
    default: return u"th";
  }
}

}  // namespace qlm
