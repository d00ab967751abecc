// Jukebox lists: files that hold the rows of a scanned folder.
#pragma once

#include "base/text.h"

namespace qlm {

// Replaces the active list by the rows of a list file. `quiet` leaves out the boxes that tell of a failure.
// The reading of list files is still to come: until then the list stays as it is.
void LoadJukeList(TextView path, bool quiet);

}  // namespace qlm
