// Conversion of titles for the bitmap font, which has ASCII letters only.
#pragma once

#include "base/text.h"

namespace qlm {

// Any title in printable ASCII: the words of the player's dictionary are put in, kanji are read, kana are
// written in Latin letters, and what is left becomes question marks. Each stage is logged.
Text Cvt2ASCII(TextView title);

// The same, with what each stage made of the title.
struct ConvertedTitle {
  Text byDict;
  Text byMSIME;
  Text toNarrow;
  Text result;
};
ConvertedTitle ConvertTitle(TextView title);

}  // namespace qlm
