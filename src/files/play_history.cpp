// The play history.
#include "files/play_history.h"

namespace qlm {

void writePlayList() {}

void clearPlayList() {}

}  // namespace qlm
