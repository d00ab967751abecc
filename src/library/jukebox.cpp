// Jukebox lists.
#include "library/jukebox.h"

namespace qlm {

void LoadJukeList(TextView, bool) {}

void SaveJukeList(TextView, bool) {}

}  // namespace qlm
