// The keys of the course editor.
#include "screens/course_editor.h"

#include <algorithm>
#include <cstddef>

#include <span>

#include "base/log.h"
#include "base/numbers.h"
#include "base/paths.h"
#include "files/course_files.h"
#include "library/lists.h"
#include "screens/list_cursor.h"
#include "screens/list_rows.h"
#include "screens/song_find.h"
#include "screens/song_select.h"
#include "sound/play.h"
#include "state/chart.h"
#include "state/courses.h"
#include "state/key_numbers.h"
#include "state/keys.h"
#include "state/lists.h"
#include "state/message.h"
#include "state/session.h"
#include "state/song_select.h"

namespace qlm {
namespace {

// A count of a byte takes one more or one less; where it would leave its range it stays.
void Step(uint8_t& count, int32_t by) { Assign(count, RoundTo<uint8_t>(count + by)); }

bool OnSong() { return songSelect.courseCursor >= 0 && songSelect.courseCursor < songSelect.courseNumSongs; }
bool OnAddLine() { return songSelect.courseCursor == songSelect.courseNumSongs; }

void OpenEditor() {
  StopPreviewTimer();
  songSelect.courseMaking = true;
  songSelect.courseSlot = 0;
  songSelect.courseCursor = kCourseNameLine;
  songSelect.courseCursorSaved = RowOfWholeList(listCursor);
  GameState = kStateEditCourse;
}

// The course list is up again, made anew. Its rows' scores are looked for from the first one on.
void ShowCourseList() {
  GameState = kStateCourses;
  CourseMode = true;
  songSelect.courseMaking = false;
  songSelect.clearCheckRow = 0;
  UpdateCourseList();
}

void HoldCourse(int32_t row) {
  listCursor = row;
  chexec();
}

// The row of a course's file; where the list does not have it, the row from which the editor was opened.
int32_t RowOfCourse(TextView path) {
  const auto found = std::ranges::find(songList, path, &SongEntry::path);
  return found != songList.end() ? static_cast<int32_t>(found - songList.begin())
                                 : songSelect.courseCursorSaved;
}

void LeaveUnsaved() {
  ShowCourseList();
  HoldCourse(songSelect.courseCursorSaved);
}

// Picking.

// The lists come up, and the song that is decided there becomes that of the slot.
void PickSong(uint8_t slot) {
  songSelect.courseSlot = slot;
  GameState = kStateCourseSongs;
  JukeReady();
}

void PickNewSong() {
  const uint8_t slot = songSelect.courseNumSongs;
  // Quirk: with 255 songs the count stays, and what is picked for the slot behind them is never seen.
  CourseSongs.resize(size_t{slot} + 1);
  Step(songSelect.courseNumSongs, 1);
  PickSong(slot);
}

void TypeName() {
  if (songSelect.nameEntry) return;
  GameState = kStateEnterCourse;
  songSelect.nameEntry = true;
}

void PressEnter() {
  if (enterEaten) {
    enterEaten = false;
    return;
  }
  PlaySE(SE::kFade);
  if (songSelect.courseCursor == kCourseNameLine) return TypeName();
  if (OnSong()) return PickSong(static_cast<uint8_t>(songSelect.courseCursor));
  if (OnAddLine()) PickNewSong();
}

void ChangeStars(int32_t by) {
  PlaySE(SE::kFade);
  if (songSelect.courseCursor == kCourseStarsLine) Step(songSelect.courseLevel, by);
}

void DeleteSong() {
  PlaySE(SE::kFade);
  if (OnSong()) CourseRemove(songSelect.courseCursor);
}

void MoveCursor(int32_t lines) {
  songSelect.courseCursor += lines;
  PlaySE(SE::kCursor);
}

// Saving.

// Whether there were any.
bool RemoveEmptySongs() {
  bool found = false;
  for (int32_t index = songSelect.courseNumSongs - 1; index >= 0; --index) {
    if (!CourseSongs[static_cast<size_t>(index)].path.empty()) continue;
    CourseRemove(index);
    found = true;
  }
  return found;
}

void FillHead() {
  courseStars = songSelect.courseLevel;
  numsongs = songSelect.courseNumSongs;
  courseTitle.clear();
  courseLength = LengthOfSongs(std::span(CourseSongs).first(songSelect.courseNumSongs));
}

void SaveCourse() {
  if (RemoveEmptySongs()) {
    ShowMessage(u"Null items has removed. please re-press F10 key");
    return;
  }
  PlaySE(SE::kDecide);
  DebugLog(u"[CreateCourse]");
  FillHead();
  const Text path = DataPath(Join(u"courselist\\", songSelect.courseName, u".qcl"));
  if (!CourseSave(path)) {
    // The course stays in the editor: another name, or room on the disk, may help.
    ShowMessage(Join(GetFileName(path), u" cannot be written"));
    return;
  }
  DebugLog(u"Saved.");
  ShowCourseList();
  DebugLog(u"ListUpdate");
  songSelect.courseNumSongs = 0;
  HoldCourse(RowOfCourse(path));
  DebugLog(u"OK");
}

}  // namespace

void EditNewCourse() {
  OpenEditor();
  CourseSongs.clear();
  songSelect.courseNumSongs = 0;
  songSelect.courseName = u"NEW COURSE";
  songSelect.courseLevel = 3;
}

void EditHeldCourse() {
  const SongEntry* const row = HeldRow();
  if (listCursor <= 0 || row == nullptr) return;
  OpenEditor();
  CourseLoad(row->path, false);
  CourseSongs.resize(numsongs);
  songSelect.courseName = row->title;
  songSelect.courseNumSongs = numsongs;
  songSelect.courseLevel = courseStars;
}

void ProcessKey_EditCourse(int32_t key) {
  switch (key) {
    case kKeyEsc: return LeaveUnsaved();
    case kKeyEnter: return PressEnter();
    case kKeyRight: return ChangeStars(1);
    case kKeyLeft: return ChangeStars(-1);
    case kKeyDelete: return DeleteSong();
    case kKeyUp: return MoveCursor(-1);
    case kKeyDown: return MoveCursor(1);
    case kKeyF10: return SaveCourse();
    default: return;
  }
}

void CourseRemove(int32_t index) {
  // Quirk: while the active list is empty no song can be taken out.
  if (lastSong == -1 || index < 0 || index >= songSelect.courseNumSongs) return;
  Step(songSelect.courseNumSongs, -1);
  CourseSongs.erase(CourseSongs.begin() + index);
  CourseSongs.resize(songSelect.courseNumSongs);
}

}  // namespace qlm
