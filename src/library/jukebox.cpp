// Jukebox lists.
#include "library/jukebox.h"

namespace qlm {

void LoadJukeList(TextView, bool) {}

}  // namespace qlm
