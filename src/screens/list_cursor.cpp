// Changes of the row in hand.
#include "screens/list_cursor.h"

#include <algorithm>
#include <cstdlib>

#include "files/scores.h"
#include "graphics/bga.h"
#include "library/title_split.h"
#include "platform/clock.h"
#include "platform/timers.h"
#include "platform/window.h"
#include "play/preview.h"
#include "screens/list_rows.h"
#include "screens/song_select.h"
#include "sound/play.h"
#include "state/chart.h"
#include "state/courses.h"
#include "state/lists.h"
#include "state/session.h"
#include "state/settings.h"
#include "state/song_select.h"
#include "state/surfaces.h"
#include "state/timeline.h"

namespace qlm {
namespace {

// The panel takes 0 for "no chart is loaded yet".
void ForgetLoadedChart() {
  curBPM = 0;
  TotalNotes = {};
}

}  // namespace

void MoveListCursor(int32_t rows) {
  if (lastSong < 0) return;
  listCursor += rows;
  songSelect.listScroll -= static_cast<float>(rows);
  // Two moves may cancel out; the title picture is gone all the same, and is read again when the wheel stops.
  if (songSelect.listScroll == 0) songSelect.listScroll = kWheelStops;
  chexec();
}

void chexec() {
  if (lastSong < 0) return;
  const uint32_t now = platform::Now();
  numsongs = 0;
  songSelect.repeatLast = now;
  ReleaseStage();
  songSelect.rowCursorTime = now;
  songSelect.rowBeforeSort.reset();
  PlaySE(SE::kCursor);
  previewStop = true;
  // The row before may still be loading for its preview: this one does not wait for it.
  if (previewLoading) LoadAbort = true;
  ForgetLoadedChart();
  listCursor = WrappedRow(listCursor);
  const SongEntry& row = songList[static_cast<size_t>(listCursor)];
  if (CourseMode && !songSelect.courseMaking) {
    CourseSongs.clear();
    songSelect.courseName = row.title;
  }
  const SplitTitle title = SplitTitleOf(row.title);
  songSelect.titleMain = title.main;
  songSelect.titleSub = title.sub;
  LoadScoreDat();
  RestartPreviewTimer();
}

void DragList(int32_t, int32_t down) {
  constexpr int32_t kRow = 16;  // pixels
  if (std::abs(down) <= kRow || ListIsBusy()) return;
  MoveListCursor(-(down / kRow));
  songSelect.mouseDY = 0;
  platform::MoveMouse(kScreen.Width() / 2, kScreen.Height() / 2);
}

void TurnListWheel(int32_t steps) {
  if (!ListIsBusy()) MoveListCursor(-steps);
}

bool ListIsBusy() { return selectLocked || songSelect.deciding != 0 || library.scanRunning; }

void RestartPreviewTimer() {
  platform::SetTimer(platform::kTimerPlayCurSong, static_cast<uint32_t>(std::max(PreviewDelay, 1)), [] {
    // Within the load of another row the wait begins anew.
    if (previewLoading) return;
    StopPreviewTimer();
    StartPreview();
  });
}

void StopPreviewTimer() { platform::KillTimer(platform::kTimerPlayCurSong); }

}  // namespace qlm
