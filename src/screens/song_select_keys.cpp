// What the keys do on the list screens.
#include "screens/song_select_keys.h"

#include <algorithm>
#include <cstddef>
#include <cstdio>
#include <span>

#include "base/hooks.h"
#include "base/log.h"
#include "base/paths.h"
#include "files/course_files.h"
#include "files/record_file.h"
#include "graphics/bga.h"
#include "graphics/fades.h"
#include "library/jukebox.h"
#include "library/lists.h"
#include "library/song_list.h"
#include "library/sorts.h"
#include "net/messages.h"
#include "platform/clock.h"
#include "platform/files.h"
#include "play/input.h"
#include "play/preview.h"
#include "screens/course_editor.h"
#include "screens/joystick_keys.h"
#include "screens/list_cursor.h"
#include "screens/list_rows.h"
#include "screens/road.h"
#include "screens/song_find.h"
#include "screens/song_select.h"
#include "sound/play.h"
#include "state/chart.h"
#include "state/courses.h"
#include "state/gauge.h"
#include "state/keys.h"
#include "state/lists.h"
#include "state/message.h"
#include "state/network.h"
#include "state/options.h"
#include "state/session.h"
#include "state/settings.h"
#include "state/song_find.h"
#include "state/song_select.h"

namespace qlm {
namespace {

constexpr int32_t kPage = 5;  // rows

bool HoldsHazard() { return KeyHeld[kKeyLeftShift] || KeyHeld[kKeyRightShift] || HoldsLaneCode(12); }

// Options.

// None, Hidden, Sudden, both, Stealth, none.
void CycleVisibility() {
  const int32_t now = Stealth ? 4 : (Hidden ? 1 : 0) + (Sudden ? 2 : 0);
  const int32_t next = (now + 1) % 5;
  Hidden = next == 1 || next == 3;
  Sudden = next == 2 || next == 3;
  Stealth = next == 4;
}

// None, the first, the second, none.
void CycleTwo(bool& first, bool& second) {
  const bool none = !first && !second;
  second = first;
  first = none;
}

void ToggleFourD() {
  FourDMode = !FourDMode;
  ShowMessage(Join(u"4DMODE: ", FourDMode));
}

bool ChangeOption(int32_t key) {
  switch (key) {
    case kKeyF1: CycleVisibility(); break;
    case kKeyF2: CycleTwo(Random, ExRandom); break;
    case kKeyF3: Accel = !Accel; break;
    case kKeyF4: CycleTwo(Quil, HalfField); break;
    case kKeyF5: ToggleFourD(); break;
    case kKeyF6: CycleTwo(ShowRec, UserRec); break;
    case kKeyF12: Pressure = !Pressure; break;
    default: return false;
  }
  PlaySE(SE::kTick);
  return true;
}

// Lists.

// The cursor stays, and the panel with what it showed, until the next move.
void SortBy(void (*sort)(), TextView told) {
  if (const SongEntry* const row = PanelRow()) songSelect.rowBeforeSort = *row;
  ChangeWholeList(sort);
  ShowMessage(told);
}

bool SortList(int32_t key) {
  switch (key) {
    case kKeyPad1: SortBy(SortByLevel, u"Sorted by LEVEL"); return true;
    case kKeyPad2: SortBy(SortByGenre, u"Sorted by GENRE"); return true;
    case kKeyPad3: SortBy(SortByTitle, u"Sorted by TITLE"); return true;
    case kKeyPad4: SortBy(SortByArtist, u"Sorted by ARTIST"); return true;
    default: return false;
  }
}

bool MoveCursor(int32_t key) {
  switch (key) {
    case kKeyUp: MoveListCursor(-1); return true;
    case kKeyDown: MoveListCursor(1); return true;
    case kKeyPageUp: MoveListCursor(-kPage); return true;
    case kKeyPageDown: MoveListCursor(kPage); return true;
    default: return false;
  }
}

void StartCrossfade(uint8_t state) {
  FadeStart = platform::Now();
  FadeState = state;
}

void ShowCourses() {
  DebugLog(u">TAB Pressed - COURSE MODE");
  songSelect.clearCheckRow = 0;
  GameState = kStateCourses;
  CourseMode = true;
  ClearList();
  TakeRows(library.courseList);
  DebugLog(u"CourseList Loaded");
  ResetListState();
  StartCrossfade(kFadeToCourses);
  numsongs = 0;
  ReleaseStage();
  previewStop = true;
  PlaySE(SE::kFade);
}

void LeaveCourses() {
  JukeReady();
  CourseMode = false;
  songSelect.courseMaking = false;
  StartCrossfade(kFadeFromCourses);
}

void ChangeBetweenCoursesAndSongs() {
  if (songSelect.courseMaking) return;
  if (GameState == kStateSongSelect || GameState == kStateLists) {
    ShowCourses();
  } else if (GameState == kStateCourses) {
    LeaveCourses();
  }
}

void DeleteCourse() {
  const SongEntry* const row = HeldRow();
  const Text path = row == nullptr ? Text() : row->path;
  const bool deleted = !path.empty() && CourseDelete(path);
  if (!path.empty() && !deleted) ShowMessage(Join(GetFileName(path), u" cannot be deleted"));
  UpdateCourseList();
  // The new list has its first row in hand.
  if (deleted) chexec();
}

// Decisions. What follows runs outside the key's own event, behind the next pump.
void Decide() {
  HoldFrame();
  songSelect.deciding = 1;
  ArmFadeEnd();
}

void OpenSongs() {
  GameState = kStateSongSelect;
  listCursor = 0;
  ResetListState();
  // The first row's title picture is read once the wheel stands.
  songSelect.listScroll = kWheelStops;
  PlaySE(SE::kFade);
  chexec();
}

void RunJukebox() {
  EndlessRun = true;
  HazardGauge = true;
  StopSE(SE::kSelectMusic);
  EndPreview();
  StopPreviewTimer();
  PlaySE(SE::kDecide);
  Decide();
}

// Opens the jukebox in hand, or starts a run of all that it holds.
void OpenJukebox(int32_t key) {
  const SongEntry* const row = HeldRow();
  if (row == nullptr) return;
  songSelect.jukeCursorSaved = RowOfWholeList(listCursor);
  const Text path = row->path;
  songSelect.jukeName = GetFileName(path);
  songSelect.clearCheckRow = 0;
  // A list file that has gone leaves no row, rather than the jukeboxes in place of charts.
  ClearList();
  LoadJukeList(path, true);
  StopPreviewTimer();
  if (lastSong < 0) {
    std::fprintf(stderr, "quillmarch: %s holds no chart; search for charts again\n",
                 platform::SystemPath(path).c_str());
    if (hooks.closeRequested != nullptr) hooks.closeRequested();
    return;
  }
  // While a song is picked for a course there is nothing to run, and a battle plays one song at a time.
  if (key == kKeyEnter && HoldsHazard() && !songSelect.courseMaking && !network.NetActive) {
    RunJukebox();
  } else {
    OpenSongs();
  }
}

void BackToEditor() {
  EndPreview();
  StopPreviewTimer();
  PreviewActive = false;
  GameState = kStateEditCourse;
}

void PickSongForCourse(const SongEntry& row) {
  if (songSelect.courseSlot < CourseSongs.size()) CourseSongs[songSelect.courseSlot] = row;
  PlaySE(SE::kFade);
  BackToEditor();
}

void StartDecided() {
  StopSE(SE::kSelectMusic);
  EndPreview();
  StopPreviewTimer();
  PlaySE(SE::kDecide);
  if (HoldsHazard()) HazardGauge = true;
  Decide();
}

// Says so when it is not.
bool FileIsThere(TextView path) {
  if (FileExists(path)) return true;
  ShowMessage(Join(u"file not exist: ", GetFileName(path)));
  return false;
}

void DecideCourse() {
  const SongEntry* const row = HeldRow();
  if (row == nullptr) return;
  if (listCursor == 0) return EditNewCourse();
  if (FileIsThere(row->path)) StartDecided();
}

void DecideSong() {
  const SongEntry* const row = HeldRow();
  if (row == nullptr) return;
  if (songSelect.courseMaking) return PickSongForCourse(*row);
  if (!FileIsThere(row->path)) return;
  if (ShowRec && !FileExists(RecordPath(row->path))) {
    ShowMessage(u"RECORD NOT EXISTS. CAN'T START PLAYING!");
    return;
  }
  StartDecided();
}

void PressEnter(int32_t key) {
  if (GameState == kStateLists) return OpenJukebox(key);
  if (key != kKeyEnter) return;
  if (GameState == kStateSongSelect) DecideSong();
  if (GameState == kStateCourses) DecideCourse();
}

// True for a key whose change the other players of a battle are to see.
bool ChangeWhatOthersSee(int32_t key) {
  if (ChangeOption(key) || SortList(key) || MoveCursor(key)) return true;
  if (key != kKeyTab) return false;
  ChangeBetweenCoursesAndSongs();
  return true;
}

void PressEsc() {
  if (songFind.filtered && !ListIsBusy()) return EndFind();
  if (!songSelect.courseMaking) {
    if (hooks.closeRequested != nullptr) hooks.closeRequested();
    return;
  }
  BackToEditor();
}

void ForcePlayer() { PlayerForce = PlayerForce >= 3 ? 0 : PlayerForce + 1; }

}  // namespace

void ProcessKey_SongSelect(int32_t key) {
  if (key == kKeyEsc) return PressEsc();
  const bool controller = key >= kKeyJoy;
  if (controller) key = ssKeyCvt_Joy(key);
  if (key == 0 || ListIsBusy()) return;
  // The keyboard's own F8 goes to the settings by itself.
  if (controller && key == kKeyF8) ProcessKey_Settings(key);
  if (ChangeWhatOthersSee(key)) {
    if (network.NetActive) SendCurSongData(false);
    return;
  }
  switch (key) {
    case kKeyF10: ForcePlayer(); break;
    case kKeyLeft:
      if (GameState == kStateSongSelect) JukeReady();
      break;
    case kKeySpace:
      if (GameState == kStateCourses) EditHeldCourse();
      break;
    case kKeyDelete:
      if (GameState == kStateCourses) DeleteCourse();
      break;
    case kKeySlash:
    case kKeyPadSlash: OpenFindLine(); break;
    case kKeyEnter:
    case kKeyRight: PressEnter(key); break;
    default: break;
  }
}

void OpenOnEasiest(TextView jukebox) {
  const auto rows = [] { return std::span(songList).first(static_cast<size_t>(int64_t{lastSong} + 1)); };
  const auto named = std::ranges::find(rows(), jukebox, &SongEntry::title);
  if (named == rows().end()) return;
  listCursor = static_cast<int32_t>(named - rows().begin());
  OpenJukebox(kKeyRight);
  if (GameState != kStateSongSelect) return;
  const auto easiest = std::ranges::min_element(rows(), {}, &SongEntry::playLevel);
  listCursor = static_cast<int32_t>(easiest - rows().begin());
  chexec();
}

}  // namespace qlm
