// What in a skin the game will not show as its author means it.
#pragma once

#include <vector>

#include "graphics/skin_report.h"

namespace probe {

// The remarks of the reading and those on the skin as a whole, which stands loaded, by line. Each ends in the
// line's text.
std::vector<qlm::SkinReport::Remark> CheckSkin(const qlm::SkinReport& report);

}  // namespace probe
