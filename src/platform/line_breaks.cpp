// Line breaks: the longest beginning that fits, back to the last place that may be broken.
#include "platform/line_breaks.h"

#include <cstddef>

namespace platform {
namespace {

constexpr std::u16string_view kClosing =
    u"、。，．・：；？！゛゜ー〜…‥々〉》」』】〕）］｝ぁぃぅぇぉっゃゅょゎァィゥェォッャュョヮヵヶ"
    u"!),.:;?]}%";
constexpr std::u16string_view kOpening = u"〈《「『【〔（［｛([{";

bool LowSurrogate(char16_t unit) { return unit >= 0xDC00 && unit < 0xE000; }

// Signs that stand in words, which are not broken.
bool OfWords(char16_t unit) { return unit < 0x2E80; }

// Whether a line may end in front of `text[i]`, which is not the first unit.
bool MayBreak(std::u16string_view text, size_t i) {
  const char16_t before = text[i - 1];
  const char16_t after = text[i];
  if (after == u' ' || LowSurrogate(after)) return false;
  if (before == u' ') return true;
  if (kClosing.find(after) != kClosing.npos || kOpening.find(before) != kOpening.npos) return false;
  return !OfWords(before) || !OfWords(after);
}

std::u16string_view WithoutBlanksAtTheEnd(std::u16string_view line) {
  return line.substr(0, line.find_last_not_of(u' ') + 1);
}

// Units of the first line of a text without line feeds; at least 1, or 0 for an empty text.
size_t LengthOfFirstLine(std::u16string_view text, int32_t width,
                         int32_t (*widthOf)(std::u16string_view line)) {
  size_t breakable = 0;
  for (size_t i = 1; i <= text.size(); ++i) {
    if (i < text.size() && LowSurrogate(text[i])) continue;
    if (widthOf(WithoutBlanksAtTheEnd(text.substr(0, i))) > width) {
      if (breakable > 0) return breakable;
      const size_t cut = LowSurrogate(text[i - 1]) ? i - 2 : i - 1;
      return cut > 0 ? cut : i;
    }
    if (i < text.size() && MayBreak(text, i)) breakable = i;
  }
  return text.size();
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
