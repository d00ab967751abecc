// Jukebox lists: files that hold the rows of a scanned folder.
#pragma once

#include "base/text.h"

namespace qlm {

// Replaces the active list by the rows of a list file. A missing file leaves the list as it is, one that
// breaks off gives the rows that it holds. `quiet` leaves out the boxes that tell of either.
void LoadJukeList(TextView path, bool quiet);
// Writes the active list to a list file; a failure leaves the old file, and is told in a box unless `quiet`.
void SaveJukeList(TextView path, bool quiet);

// The list file of a searched folder, which is named by the folder's last part; one separator behind it does
// not count.
Text JukeboxOf(TextView folder);
// ".qbl"; ".qwl" for lists made by the wide reading, so that neither reading sees those of the other.
TextView JukeboxExtension();

}  // namespace qlm
