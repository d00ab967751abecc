// Skins: the text files that lay out the play screen.
#pragma once

#include <cstdint>

#include "base/text.h"

namespace qlm {

struct SkinReport;

// Reads a skin into the tables; `keep` leaves what the tables hold and adds to it. Nothing in the file stops
// the reading: a report, where one is asked for, takes what an author would want to know. Without a display
// the tables are read and no pictures. A file that does not exist leaves SkinPath as it is. While skins are
// watched, a load without a report leaves one for the watch.
void loadSkin(TextView path, bool keep, SkinReport* report = nullptr);
// Gives each lane the x that belongs to the place of its side's turntable.
void PlaceNotes();

}  // namespace qlm
