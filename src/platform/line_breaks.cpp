// Line breaks by ICU: the longest beginning that fits, back to the last place that may be broken.
#include "platform/line_breaks.h"

#include <unicode/ubrk.h>
#include <unicode/utf16.h>

#include <memory>

namespace platform {
namespace {

struct CloseBreaks {
  void operator()(UBreakIterator* breaks) const { ubrk_close(breaks); }
};
using Breaks = std::unique_ptr<UBreakIterator, CloseBreaks>;

// In the strict manner of Japanese: no line begins with a small kana.
Breaks BreaksOf(std::u16string_view text) {
  UErrorCode status = U_ZERO_ERROR;
  return Breaks(
      ubrk_open(UBRK_LINE, "ja@lb=strict", text.data(), static_cast<int32_t>(text.size()), &status));
}

std::u16string_view WithoutBlanksAtTheEnd(std::u16string_view line) {
  return line.substr(0, line.find_last_not_of(u' ') + 1);
}

// Units of the first line of a text without line feeds; at least 1, or 0 for an empty text.
size_t LengthOfFirstLine(std::u16string_view text, int32_t width,
                         int32_t (*widthOf)(std::u16string_view line)) {
  const auto fits = [&](size_t length) {
    return widthOf(WithoutBlanksAtTheEnd(text.substr(0, length))) <= width;
  };
  if (fits(text.size())) return text.size();
  size_t breakable = 0;
  if (const Breaks breaks = BreaksOf(text)) {
    for (int32_t place = ubrk_next(breaks.get()); place != UBRK_DONE && fits(static_cast<size_t>(place));
         place = ubrk_next(breaks.get())) {
      breakable = static_cast<size_t>(place);
    }
  }
  if (breakable > 0) return breakable;
  // Nothing may be broken: as many characters as fit, and one at least.
  size_t end = 0;
  do {
    breakable = end;
    U16_FWD_1(text, end, text.size());
  } while (end < text.size() && fits(end));
  return breakable > 0 ? breakable : end;
}

}  // namespace

std::vector<std::u16string> BreakLines(std::u16string_view text, int32_t width,
                                       int32_t (*widthOf)(std::u16string_view line)) {
  std::vector<std::u16string> lines;
  while (true) {
    const size_t end = text.find(u'\n');
    std::u16string_view rest = text.substr(0, end);
    do {
      const size_t length = LengthOfFirstLine(rest, width, widthOf);
      lines.emplace_back(WithoutBlanksAtTheEnd(rest.substr(0, length)));
      rest.remove_prefix(length);
    } while (!rest.empty());
    if (end == text.npos) return lines;
    text.remove_prefix(end + 1);
  }
}

}  // namespace platform
