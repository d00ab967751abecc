// The data folder: which of two programs may write into it, and how the files of the game are written.
#pragma once

#include <string>
#include <string_view>

#include "base/text.h"

namespace qlm {

// Whether this program keeps log, settings and all else below \_qlmfiles. A second one that runs from the
// same folder plays without writing, so that it takes nothing away from the first.
inline bool keepsDataFolder = true;

// Takes the folder for as long as the program lives, by a lock beside the log. False, with keepsDataFolder
// and the log switched off, when another program has it.
bool TakeDataFolder();

// Writes a file anywhere. False, with the hook for unwritten files called, when that fails and the old file
// stayed. Below \_qlmfiles a second program writes nothing, and nothing has failed.
bool SaveFile(TextView path, std::string_view bytes);
// What a file holds once these bytes are written over its beginning: a longer one keeps its end.
std::string WrittenOver(TextView path, std::string bytes);
// The same as SaveFile for a file below \_qlmfiles.
bool SaveDataFile(TextView name, std::string_view bytes);

}  // namespace qlm
