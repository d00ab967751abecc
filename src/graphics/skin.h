// Skins: the text files that lay out the play screen.
#pragma once

#include "base/text.h"

namespace qlm {

// Reads a skin into the tables; `keep` leaves what the tables hold. The reading of the file is still to come:
// until then it logs its lines and sets the path.
void loadSkin(TextView path, bool keep);
// Gives each lane the x that belongs to the place of its side's turntable.
void PlaceNotes();
// Finds the skins of the data folder, by name, and what each is good for.
void UpdateSkinList();
// Marks of the options in force on the play screen.
void PickOptionMarks();

}  // namespace qlm
