// What in a skin the game will not show as its author means it.
#pragma once

#include <vector>

#include "graphics/skin_report.h"

namespace qlm {

// The remarks of the reading and those on the skin as a whole, which stands loaded, by line. Each ends in the
// line's text.
std::vector<SkinReport::Remark> CheckSkin(const SkinReport& report);

}  // namespace qlm
