// lastplay.txt, the songs of the last play session, in the program's folder.
#pragma once

namespace qlm {

// Appends the song in play: called as each one starts.
void writePlayList();
// A new session begins: its first song will have number 1.
void clearPlayList();

}  // namespace qlm
