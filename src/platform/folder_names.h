// Names of a folder's entries, found by what a chart calls them.
#pragma once

#include <string>
#include <string_view>
#include <vector>

namespace platform {

// A stored name as text: UTF-8, or else code page 932.
std::u16string NameText(std::string_view bytes);

// Names in a folder (a system path) as stored, in the system's order, without "." and "..". Empty when there
// is no such folder.
std::vector<std::string> StoredNames(const std::string& folder);

// The name in `folder` ("" the current one) that stands for `part`, which is UTF-8 and does
// not exist there to the letter: the name stored as raw code page 932 bytes first, since it says the same
// text, then a name alike but for letter case and normal form, the least of several. Empty when there is
// none.
std::string FindName(const std::string& folder, const std::string& part);

}  // namespace platform
