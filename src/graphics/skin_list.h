// The list of skins.
#pragma once

#include <cstdint>

#include "base/text.h"

namespace qlm {

// Finds the skins of the data folder, by name, and what each is good for.
void UpdateSkinList();
// Place of a skin in skinList, -1 when it is not there.
int16_t FindSkin(TextView path);

}  // namespace qlm
