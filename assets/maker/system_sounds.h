// The sixteen sounds of the menus and screens.
#pragma once

#include <string>
#include <vector>

#include "sound.h"

namespace assetmaker {

struct SystemSound {
  std::string name;  // of the file, without its ending
  Sound sound;
};

// All sixteen, finished: trimmed and matched in loudness.
std::vector<SystemSound> MakeSystemSounds();

}  // namespace assetmaker
