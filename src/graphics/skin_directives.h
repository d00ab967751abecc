// The directives of a skin.
#pragma once

#include <cstdint>
#include <string_view>

#include "graphics/skin_report.h"

namespace qlm {

// Reads the lines of a skin, which end in CR LF or LF, into the tables. Lines without a directive are passed
// over.
void ReadSkin(std::string_view bytes, SkinReport* report);
// The file that a skin names as a picture: one of the data folder, unless the name has a drive.
Text SkinPicturePath(TextView name);
// Adds a number to a list in the order of the file; what goes past its end is dropped.
void Append(SkinOrder& order, uint8_t number);

}  // namespace qlm
