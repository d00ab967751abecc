// Tests of the cursor of the list screens.
#include "screens/list_cursor.h"

#include "platform/timers.h"
#include "state/chart.h"
#include "state/courses.h"
#include "state/scores.h"
#include "state/session.h"
#include "state/settings.h"
#include "state/song_select.h"
#include "state/surfaces.h"
#include "state/timeline.h"
#include "tests/screens/list_ground.h"

namespace qlm {
namespace {

using ListCursor = ListTest;

TEST_F(ListCursor, WrapsFromEitherEndToTheOther) {
  ShowCharts({u"A", u"B", u"C"});
  for (const auto& [from, to] : {std::pair{-1, 2}, {3, 0}, {-4, 2}, {5, 2}, {-3, 0}, {1, 1}}) {
    listCursor = from;
    chexec();
    EXPECT_EQ(listCursor, to) << from;
  }
}

TEST_F(ListCursor, ChangeOfTheRowBringsItsTitleAndForgetsTheChartBefore) {
  ShowCharts({u"A", u"SONG [ANOTHER]"});
  FillSound(SE::kCursor);
  DDStage = std::make_shared<Surface>(4, 4);
  numsongs = 3;
  curBPM = 150;
  TotalNotes = {5, 6};
  previewStop = false;
  SetNow(9000);
  MoveListCursor(1);
  EXPECT_EQ(songSelect.titleMain, u"SONG");
  EXPECT_EQ(songSelect.titleSub, u"[ANOTHER]");
  EXPECT_EQ(numsongs, 0);
  EXPECT_EQ(curBPM, 0);
  EXPECT_EQ(TotalNotes[0], 0);
  EXPECT_EQ(TotalNotes[1], 0);
  EXPECT_EQ(DDStage, nullptr);
  EXPECT_TRUE(previewStop);
  EXPECT_TRUE(Sounding(SE::kCursor));
  EXPECT_EQ(songSelect.rowCursorTime, 9000U);
  EXPECT_EQ(songSelect.repeatLast, 9000U);
}

TEST_F(ListCursor, ScoreTableIsThatOfTheRowInHand) {
  ShowCharts({u"A", u"B"});
  // Three plays, and nothing else.
  WriteData(u"song\\1.qsd", std::string("\x03\0\0\0", 4) + std::string(442, '\0'));
  MoveListCursor(1);
  EXPECT_EQ(scores.playCount, 3);
  MoveListCursor(1);
  EXPECT_EQ(scores.playCount, 0);
}

TEST_F(ListCursor, WaitForThePreviewBeginsAnew) {
  ShowCharts({u"A", u"B"});
  PreviewDelay = 500;
  SetNow(1'000'000);
  MoveListCursor(1);
  SetNow(1'000'400);
  MoveListCursor(1);
  SetNow(1'000'899);
  platform::RunDueTimers();
  EXPECT_FALSE(PreviewActive);
  SetNow(1'000'900);
  platform::RunDueTimers();
  EXPECT_TRUE(PreviewActive);
  EXPECT_FALSE(platform::TimerArmed(platform::kTimerPlayCurSong)) << "once";
}

TEST_F(ListCursor, ACoursesRowGivesTheCourseItsName) {
  ShowCharts({u"A", u"B"});
  CourseSongs.resize(3);
  CourseMode = true;
  MoveListCursor(1);
  EXPECT_TRUE(CourseSongs.empty());
  EXPECT_EQ(songSelect.courseName, u"B");
  CourseSongs.resize(3);
  songSelect.courseMaking = true;
  MoveListCursor(1);
  EXPECT_EQ(CourseSongs.size(), 3U) << "the editor's course stays";
  EXPECT_EQ(songSelect.courseName, u"B");
}

TEST_F(ListCursor, NothingHappensOnAnEmptyList) {
  listCursor = 0;
  MoveListCursor(1);
  chexec();
  DragList(0, 100);
  EXPECT_EQ(listCursor, 0);
  EXPECT_EQ(songSelect.listScroll, 0);
  EXPECT_FALSE(platform::TimerArmed(platform::kTimerPlayCurSong));
}

TEST_F(ListCursor, DragOf16PixelsDoesNothingAndOneOf17MovesByARow) {
  ShowCharts({u"A", u"B", u"C", u"D"});
  songSelect.mouseDY = 16;
  DragList(0, 16);
  EXPECT_EQ(listCursor, 0);
  EXPECT_EQ(songSelect.mouseDY, 16);
  DragList(0, -16);
  EXPECT_EQ(listCursor, 0);
  songSelect.mouseDY = 17;
  DragList(0, 17);
  EXPECT_EQ(listCursor, 3) << "down drags the row before under the cursor";
  EXPECT_EQ(songSelect.listScroll, 1);
  EXPECT_EQ(songSelect.mouseDY, 0);
  DragList(0, -35);
  EXPECT_EQ(listCursor, 1) << "two rows of 16";
}

TEST_F(ListCursor, BusyListIsNotDraggedNorTurned) {
  ShowCharts({u"A", u"B"});
  songSelect.deciding = 1;
  DragList(0, 100);
  TurnListWheel(1);
  EXPECT_EQ(listCursor, 0);
  songSelect.deciding = 0;
  TurnListWheel(-1);
  EXPECT_EQ(listCursor, 1);
}

}  // namespace
}  // namespace qlm
