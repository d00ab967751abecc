// The song select screen, which is still to come: until then its keys do nothing.
#include "library/song_select.h"

namespace qlm {

void ProcessKey_SongSelect(int32_t) {}

}  // namespace qlm
