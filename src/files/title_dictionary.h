// The file \_qlmfiles\cnvdict.txt: words of titles, and what the marquee shows in their place.
#pragma once

#include <string_view>

#include "base/text.h"

namespace qlm {

// The player's own dictionary into DictFrom and DictTo; without the file they have one empty entry.
void LoadTitleDictionary();
// The same from another file. False when there is none.
bool LoadTitleDictionary(TextView path);
// The entries of such a file's bytes, one a line. Any bytes will do.
void TakeTitleDictionary(std::string_view bytes);

}  // namespace qlm
