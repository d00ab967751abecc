// The lists that are rebuilt from the data folder. Each becomes the active list.
#pragma once

namespace qlm {

// The jukeboxes; kept in library.jukeList.
void UpdateJukeList();
// A row that makes a new course, and the courses; kept in library.courseList. Drops the loaded course.
void UpdateCourseList();

}  // namespace qlm
