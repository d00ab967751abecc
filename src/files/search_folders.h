// The file \_qlmfiles\qlm_searchdir.txt: the folders in which charts are looked for, one a line.
#pragma once

#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "base/text.h"

namespace qlm {

// Its lines as they stand; nothing when there is no such file. One that cannot be read has no lines.
std::optional<std::vector<Text>> ReadSearchFile();
// The lines of such a file's bytes: UTF-8, or else code page 932, up to the first zero byte. Lines end in CR
// LF or LF.
std::vector<Text> SearchLines(std::string_view bytes);

// Stands for the program's folder, in any letter case.
constexpr TextView kCurrentFolder = u"<CURRENTDIR>";
// With the program's folder in place of each.
Text WithProgramFolder(TextView line);

// The folder that a line has a scan look into; nothing for a comment and for a folder that is switched off.
std::optional<Text> SearchedFolder(TextView line);

// The file as a person keeps it: which folders there are, and which of them are searched.
struct SearchFolder {
  Text folder;         // as its line gives it
  bool ticked = true;  // searched; otherwise its line begins with "#"
};
struct SearchFolders {
  Text comments;  // the lines that begin with "/", each with its CR LF
  std::vector<SearchFolder> folders;
};
// Empty without the file. A line that begins with "/" and is a folder of this system is no comment.
SearchFolders ReadSearchFolders();
// The comments come first. False, with the hook for unwritten files called, when the old file stayed.
bool SaveSearchFolders(const SearchFolders& search);
// Code page 932, or UTF-8 where that cannot hold a line.
std::string SearchFileBytes(const SearchFolders& search);

// The characters of a folder's name that keep it from being a line of the file, each once: those that code
// page 932 does not hold, and the sign of what is switched off.
Text LettersNotStored(TextView folder);

}  // namespace qlm
