// Text services of the system: code pages, letter case and normal forms of file names.
#pragma once

#include <string>
#include <string_view>

namespace platform {

// Code page 932 as the files of the game hold it. A lead byte followed by a trail byte is one character,
// U+30FB where the pair is unassigned; a lead byte without a trail byte stands alone and becomes U+30FB too.
// The single bytes 80, A0, FD, FE and FF become U+0080, U+00A0, U+F8F1, U+F8F2 and U+F8F3.
std::u16string DecodeCp932(std::string_view bytes);
// What the code page does not hold becomes "?".
std::string EncodeCp932(std::u16string_view text);

// Bad sequences and lone surrogates become U+FFFD.
std::u16string DecodeUtf8(std::string_view bytes);
std::string EncodeUtf8(std::u16string_view text);
bool IsUtf8(std::string_view bytes);

// A form of a file name that is equal for names that differ in letter case or in Unicode normal form only.
std::u16string FoldName(std::u16string_view name);

// Upper case, letter by letter; the length stays.
char16_t UpperCase(char16_t unit);

}  // namespace platform
