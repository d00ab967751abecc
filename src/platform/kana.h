// Kana of the other script and of the other width, and the readings of kanji.
#pragma once

#include <optional>
#include <string>
#include <string_view>

namespace platform {

// Hiragana become katakana, and what has a half-width form gets it: letters, digits and signs (U+FF01 to
// U+FF5E), the wide blank, kana, and the signs 。「」、・ー゛゜. A voiced kana becomes two characters, the
// kana and its mark. ヮ ヰ ヱ ヵ ヶ have no such form and stay, as does all else.
std::u16string NarrowKatakana(std::u16string_view text);

// The text with its kanji as katakana, as the system's dictionary of Japanese reads them. Half-width kana
// come back wide. Blanks, ASCII and its wide forms stay, and so does a word that the dictionary does not
// know. Nothing where no dictionary is installed; the first call opens it.
std::optional<std::u16string> ReadKanji(std::u16string_view text);

}  // namespace platform
