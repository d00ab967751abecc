// The search within the list that is up: a line that takes words, and the rows that hold them. These are put
// in the place of the active list; the whole one waits beside it, and no list file ever sees the part.
#pragma once

#include <cstdint>

namespace qlm {

// The line opens, with the words that are in use.
void OpenFindLine();
// A character of the line by its code: 8 takes the last one back, 13 ends the typing and leaves the rows as
// they are, 27 gives the whole list back. While no row is found 13 does nothing.
void TypeInFindLine(int32_t character);
// The whole list again, without a line. The row in hand stays in hand.
void EndFind();

// The whole list is up for as long as `change` runs, as for a sort; then the rows that hold the words again.
// The cursor stays where it is, as far as the list reaches.
void ChangeWholeList(void (*change)());
// The row of the whole list that a row of the active one is.
int32_t RowOfWholeList(int32_t row);
// Rows of the whole list.
int32_t RowsOfWholeList();

// Looks up how the kanji of some more rows are read, so that these are found by it: a frame's share.
void ReadOnForFinding();

}  // namespace qlm
