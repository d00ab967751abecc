// Splitting of a title into its main part and its sub-title.
#pragma once

#include "base/text.h"

namespace qlm {

struct SplitTitle {
  Text main;
  Text sub;
};

// "SONG [ANOTHER]" gives "SONG" and "[ANOTHER]". Brackets, hyphens, quotes and their wide forms mark a
// sub-title; a title that is nothing else stands in `main`.
SplitTitle SplitTitleOf(TextView title);

}  // namespace qlm
