// The sorts of the active list.
#include "library/sorts.h"

namespace qlm {

void SortByLevel() {}

void SortByGenre() {}

void SortByTitle() {}

void SortByArtist() {}

}  // namespace qlm
