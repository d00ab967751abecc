// Where the lines of a text end, as Japanese and Latin are set.
#pragma once

#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

namespace platform {

// The text in lines that are at most `width` wide, as `widthOf` measures them. A line feed ends a line; a
// line that is too long is broken at a blank, which goes, or between two signs of Japanese, though not in
// front of one that closes (a full stop, a bracket, a small kana) nor behind an opening bracket. A word that
// does not fit at all is cut. Every line has one character at least, or is empty in the text.
std::vector<std::u16string> BreakLines(std::u16string_view text, int32_t width,
                                       int32_t (*widthOf)(std::u16string_view line));

}  // namespace platform
