// The sorts of the active list, each in ascending order and in place. Rows alike in their key come in no
// certain order.
#pragma once

namespace qlm {

void SortByLevel();
// Texts come in the order of the user's language, capitals and small letters alike.
void SortByGenre();
void SortByTitle();
void SortByArtist();

}  // namespace qlm
