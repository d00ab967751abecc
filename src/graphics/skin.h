// Skins: the text files that lay out the play screen.
#pragma once

#include "base/text.h"

namespace qlm {

// Reads a skin into the tables; `keep` leaves what the tables hold. The reading of the file is still to come:
// until then it logs its lines and sets the path.
void loadSkin(TextView path, bool keep);
// Marks of the options in force on the play screen; they come with the skin's tables.
void PickOptionMarks();

}  // namespace qlm
