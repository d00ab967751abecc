// Decoding of chart text and taking apart of its lines.
#include "chart/lines.h"

#include <algorithm>
#include <cmath>

#include "platform/text.h"
#include "state/slots.h"

namespace qlm {
namespace {

constexpr TextView kCommandStart = u"\r\n#";

// Each CR as CR LF.
Text WithLineFeeds(TextView text) {
  Text converted(text.size() + static_cast<size_t>(std::count(text.begin(), text.end(), kCr)), u'\0');
  char16_t* out = converted.data();
  for (const char16_t unit : text) {
    *out++ = unit;
    if (unit == kCr) *out++ = kLf;
  }
  return converted;
}

}  // namespace

ChartText DecodeChart(std::string_view bytes) {
  ChartText chart{platform::DecodeCp932(bytes.substr(0, bytes.find('\0')))};
  chart.converted = chart.text.find(kCrLf) == Text::npos;
  if (chart.converted) chart.text = WithLineFeeds(chart.text);
  chart.text += kCrLf;
  return chart;
}

size_t FindCommand(TextView text, size_t from) {
  const size_t place = text.find(kCommandStart, from);
  return place == TextView::npos ? place : place + kCommandStart.size();
}

size_t FindLineEnd(TextView text, size_t from) { return std::min(text.find(kCrLf, from), text.size()); }

std::optional<int32_t> MeasureOf(TextView line, int32_t basePos) {
  if (line.size() >= 3 && IsDigit(line[0]) && IsDigit(line[1]) && IsDigit(line[2])) {
    const int64_t measure =
        (line[0] - u'0') * 100 + (line[1] - u'0') * 10 + (line[2] - u'0') + int64_t{basePos};
    return measure <= INT32_MAX ? std::optional(static_cast<int32_t>(measure)) : std::nullopt;
  }
  return Round(Val(Left(line, 3)) + basePos);
}

std::optional<int32_t> ChannelOf(TextView line) {
  if (line.size() >= 5 && IsDigit(line[3]) && IsDigit(line[4])) {
    return (line[3] - u'0') * 10 + (line[4] - u'0');
  }
  return Round(Val(Mid(line, 4, 2)));
}

std::optional<float> LengthOf(TextView line) {
  const double length = Val(Mid(line, 7));
  return std::isfinite(length) ? Narrow(length) : std::nullopt;
}

int32_t SlotValue(TextView digits) {
  if (SlotBase == 16) return static_cast<int32_t>(ValHex(digits));
  int32_t value = 0;
  for (const char16_t unit : digits.substr(0, 2)) {
    int32_t digit = SlotBase;
    if (IsDigit(unit)) digit = unit - u'0';
    if (unit >= u'A' && unit <= u'Z') digit = unit - u'A' + 10;
    if (unit >= u'a' && unit <= u'z') digit = unit - u'a' + (SlotBase == 62 ? 36 : 10);
    if (digit >= SlotBase) break;
    value = value * SlotBase + digit;
  }
  return value;
}

std::optional<int32_t> PosOf(int32_t measure, int32_t tick) {
  const int64_t pos = int64_t{measure} * kMeasureUnits + tick;
  return pos >= INT32_MIN && pos <= INT32_MAX ? std::optional(static_cast<int32_t>(pos)) : std::nullopt;
}

int32_t Cells::Value(int64_t j) const { return static_cast<int32_t>(ValHex(Letters(j))); }

int32_t Cells::Tick(int64_t j) const {
  return static_cast<int32_t>(RoundHalfEven(step_ * static_cast<double>(j)));
}

}  // namespace qlm
