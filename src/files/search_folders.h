// The file \_qlmfiles\qlm_searchdir.txt: the folders in which charts are looked for, one a line.
#pragma once

#include <optional>
#include <string_view>
#include <vector>

#include "base/text.h"

namespace qlm {

// Its lines as they stand; nothing when there is no such file. One that cannot be read has no lines.
std::optional<std::vector<Text>> ReadSearchFile();
// The lines of such a file's bytes: UTF-8, or else code page 932, up to the first zero byte. Lines end in CR
// LF or LF.
std::vector<Text> SearchLines(std::string_view bytes);

// The folder that a line has a scan look into; nothing for a comment and for a folder that is switched off.
std::optional<Text> SearchedFolder(TextView line);

// Stands for the program's folder, in any letter case.
constexpr TextView kCurrentFolder = u"<CURRENTDIR>";

}  // namespace qlm
