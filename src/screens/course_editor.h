// The course editor: its keys, and the ways into it and out of it. The course in hand stands in
// state/song_select.h, its songs in CourseSongs.
#pragma once

#include <cstdint>

namespace qlm {

// Opens the editor on a new course, or on the course in hand; the row that makes a new one holds none.
void EditNewCourse();
void EditHeldCourse();

// A key by its number goes down in the editor.
void ProcessKey_EditCourse(int32_t key);

// Takes a song out; later ones move down by one. Nothing happens for an index without a song.
void CourseRemove(int32_t index);

}  // namespace qlm
