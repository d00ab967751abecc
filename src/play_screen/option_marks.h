// Which option marks show.
#pragma once

namespace qlm {

// Marks of the options in force on the play screen.
void PickOptionMarks();

}  // namespace qlm
