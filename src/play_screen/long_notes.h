// The bodies of long notes.
#pragma once

namespace qlm {

// Draws what is ahead of each body between its head and its end: the middle row of the note's own picture at
// half brightness. The heads are drawn like any note.
void DrawLongNotes();

}  // namespace qlm
