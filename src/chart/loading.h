// Loading of one chart, and joining of the charts of a course.
#pragma once

#include <cstdint>

#include "base/text.h"

namespace qlm {

// 1 when the chart was loaded, -1 when the file does not exist or the object table is too small. CourseMode
// must be off, or the chart's files go to the tables of a course.
int32_t BMSLoad(TextView path);
// The first half of BMSLoadCourse: the songs are read, one behind the other, but not prepared. False when the
// join was aborted or the object table is too small.
bool ReadCourse();
// Joins CourseSongs into one table, each song two measures behind the one before. The caller clears LoadAbort
// and sets WAVLoadmode. A join that was aborted leaves a table that must not be played.
void BMSLoadCourse();

// Gives up the load that runs behind the loading screen; nothing happens outside one.
void AbortLoad();

}  // namespace qlm
