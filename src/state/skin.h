// Which skin is in use, and which one each play mode takes.
#pragma once

#include <array>

#include "base/text.h"

namespace qlm {

inline Text SkinPath;                    // of the skin in use
inline std::array<Text, 3> SkinMapPath;  // 1P, 2P, DP; kept in the settings file

void ResetSkin();

}  // namespace qlm
