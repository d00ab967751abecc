// What is seen while the song plays: which picture in which slot, and when.
#pragma once

#include <map>
#include <string>
#include <vector>

#include "bms.h"
#include "score.h"

namespace assetmaker {

// The pictures' files by slot. They are drawn elsewhere in the build; only their names are known here.
std::map<int, std::string> PictureFiles();

// The objects of the picture channels: base, layer and the picture shown on a miss.
std::vector<ChartObject> PictureObjects(const Score& score);

}  // namespace assetmaker
