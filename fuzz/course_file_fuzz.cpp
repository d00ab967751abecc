// Any bytes as a course file: what is read fits in them, and what is written and read again is the same.
#include <cstddef>
#include <cstdint>
#include <cstdlib>
#include <string>
#include <string_view>

#include "files/course_files.h"
#include "state/courses.h"

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size) {
  using namespace qlm;
  // So short that no text becomes too long by being written.
  constexpr size_t kMostBytes = 20'000;
  const std::string_view bytes(reinterpret_cast<const char*>(data), size);
  const CourseFile course = ReadCourseFile(bytes);
  if (course.rows.size() != size_t{course.songs} + 1 || course.unread > size) std::abort();
  if (course.old != bytes.starts_with("qlm_course")) std::abort();
  if (course.old && (course.stars != 5 || course.songs != 5 || !course.title.empty())) std::abort();

  const std::string written = CourseFileBytes(course);
  const CourseFile again = ReadCourseFile(written);
  if (again.old || again.unread != 0) std::abort();
  if (again.stars != course.stars || again.songs != course.songs || again.length != course.length)
    std::abort();
  if (size > kMostBytes) return 0;
  for (size_t row = 0; row < course.rows.size(); ++row) {
    if (again.rows[row].path != course.rows[row].path) std::abort();
  }
  if (CourseFileBytes(again) != written) std::abort();

  TakeCourse(course, false);
  if (numsongs != course.songs || CourseSongs.size() != course.rows.size()) std::abort();
  return 0;
}
