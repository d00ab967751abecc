// Cutting, comparing and making of texts.
#include "base/text.h"

#include <algorithm>
#include <array>
#include <charconv>
#include <cmath>

#include "platform/text.h"

namespace qlm {
namespace {

Text FromAscii(std::string_view ascii) { return {ascii.begin(), ascii.end()}; }

// Plain digits while they are few; the exponent form beyond, as in 1E+16.
template <typename Float>
Text ShortestText(Float value) {
  if (std::isnan(value)) return u"NaN";
  if (std::isinf(value)) return value < 0 ? u"-Infinity" : u"Infinity";
  std::array<char, 64> buffer{};
  const double size = std::abs(static_cast<double>(value));
  const bool isShort = size == 0 || (size >= 1e-5 && size < 1e16);
  const auto form = isShort ? std::chars_format::fixed : std::chars_format::scientific;
  const auto end = std::to_chars(buffer.data(), buffer.data() + buffer.size(), value, form).ptr;
  Text text = FromAscii({buffer.data(), static_cast<size_t>(end - buffer.data())});
  std::replace(text.begin(), text.end(), u'e', u'E');
  return text;
}

}  // namespace

TextView Mid(TextView text, int64_t start, int64_t count) {
  if (start < 1 || start > Len(text) || count < 1) return {};
  return text.substr(static_cast<size_t>(start - 1), static_cast<size_t>(count));
}

TextView Left(TextView text, int64_t count) { return Mid(text, 1, count); }

TextView Right(TextView text, int64_t count) {
  return Mid(text, std::max<int64_t>(1, Len(text) - count + 1), count);
}

TextView Trim(TextView text) {
  const size_t first = text.find_first_not_of(u' ');
  if (first == TextView::npos) return {};
  return text.substr(first, text.find_last_not_of(u' ') - first + 1);
}

int64_t InStr(TextView text, TextView part, int64_t start) {
  if (start < 1) return 0;
  const size_t at = text.find(part, static_cast<size_t>(start - 1));
  return at == TextView::npos ? 0 : static_cast<int64_t>(at) + 1;
}

Text UCase(TextView text) {
  Text upper(text);
  for (char16_t& unit : upper) unit = platform::UpperCase(unit);
  return upper;
}

bool BeginsWith(TextView text, TextView upper) {
  return text.size() >= upper.size() && EqualsAnyCase(text.substr(0, upper.size()), upper);
}

bool EqualsAnyCase(TextView a, TextView b) {
  return std::equal(a.begin(), a.end(), b.begin(), b.end(), [](char16_t x, char16_t y) {
    return x == y || platform::UpperCase(x) == platform::UpperCase(y);
  });
}

Text Replace(TextView text, TextView part, TextView by) {
  Text out;
  if (part.empty()) return Text(text);
  size_t begin = 0;
  for (size_t at = text.find(part); at != TextView::npos; at = text.find(part, begin)) {
    out.append(text.substr(begin, at - begin)).append(by);
    begin = at + part.size();
  }
  return out.append(text.substr(begin));
}

std::vector<Text> Split(TextView text, TextView separator) {
  std::vector<Text> pieces;
  size_t begin = 0;
  if (!separator.empty()) {
    for (size_t at = text.find(separator); at != TextView::npos; at = text.find(separator, begin)) {
      pieces.emplace_back(text.substr(begin, at - begin));
      begin = at + separator.size();
    }
  }
  pieces.emplace_back(text.substr(begin));
  return pieces;
}

Text ToText(int64_t value) { return FromAscii(std::to_string(value)); }
Text ToText(float value) { return ShortestText(value); }
Text ToText(double value) { return ShortestText(value); }
Text ToText(bool value) { return value ? u"True" : u"False"; }

Text Hex(uint32_t value) {
  constexpr std::u16string_view kDigits = u"0123456789ABCDEF";
  Text text;
  do {
    text.insert(text.begin(), kDigits[value & 15]);
    value >>= 4;
  } while (value != 0);
  return text;
}

Text Fixed(double value, int decimals, bool bare) {
  std::array<char, 400> buffer{};
  const auto end =
      std::to_chars(buffer.data(), buffer.data() + buffer.size(), value, std::chars_format::fixed, decimals)
          .ptr;
  Text text = FromAscii({buffer.data(), static_cast<size_t>(end - buffer.data())});
  if (bare && text.starts_with(u"0.")) text.erase(0, 1);
  return text;
}

Text Padded(int64_t value, int digits) {
  Text text = ToText(value < 0 ? -value : value);
  if (Len(text) < digits) text.insert(0, static_cast<size_t>(digits - Len(text)), u'0');
  return value < 0 ? u"-" + text : text;
}

}  // namespace qlm
