// The player's own words for titles.
#pragma once

#include <vector>

#include "base/text.h"

namespace qlm {

// By entry of the dictionary; both are of one length, 1 at least.
inline std::vector<Text> DictFrom = {{}};
inline std::vector<Text> DictTo = {{}};

inline bool ToldOfNoReadings = false;  // the log said that kanji are not read

void ResetTitles();

}  // namespace qlm
