// Rebuilding of lists from the data folder.
#include "library/lists.h"

#include "base/log.h"
#include "base/paths.h"
#include "files/course_files.h"
#include "library/jukebox.h"
#include "library/scan.h"
#include "library/song_list.h"
#include "state/courses.h"
#include "state/lists.h"
#include "state/song_select.h"

namespace qlm {
namespace {

Text WithoutExtension(TextView name) { return Text(name.substr(0, name.rfind(u'.'))); }

// A row that stands for a file as a whole.
void AddFile(const Text& path) {
  // Quirk: the file is read as if it were a chart, which leaves a chart's start values in the row.
  AddSong(path);
  songList.back().title = WithoutExtension(GetFileName(path));
  songList.back().path = path;
}

}  // namespace

void UpdateJukeList() {
  DebugLog(u"[UpdateJukeList]");
  ClearList();
  for (const Text& path : SearchFiles(DataPath(u"jukelist\\"), Join(u"*", JukeboxExtension()))) AddFile(path);
  library.jukeList = songList;
  library.lastJuke = lastSong;
  // Quirk: the last index, one less than there are.
  DebugLog(Join(library.lastJuke, u" juke(s) has detected."));
}

void UpdateCourseList() {
  DebugLog(u"[UpdateCourseList]");
  ClearList();
  SongEntry maker;
  maker.title = Text(u"[MAKE NEW COURSE]");
  TakeRows({maker});
  for (const Text& path : SearchFiles(DataPath(u"courselist\\"), u"*.qcl")) {
    AddFile(path);
    CourseLoad(path, true);
    songList.back().playLevel = courseStars;
    songList.back().lengthMs = courseLength;
  }
  library.courseList = songList;
  library.lastCourse = lastSong;
  DebugLog(Join(library.lastCourse, u" course(s) has detected."));
  // No course outlives the list that named it.
  ResetCourses();
  songSelect.courseNumSongs = 0;
}

}  // namespace qlm
