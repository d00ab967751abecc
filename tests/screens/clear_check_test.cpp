// The clear check: what it reads, when, and from which file.
#include "screens/clear_check.h"

#include <string>

#include "base/paths.h"
#include "state/lists.h"
#include "state/message.h"
#include "state/session.h"
#include "state/settings.h"
#include "state/song_select.h"
#include "tests/support/game_test.h"

namespace qlm {
namespace {

class ClearCheck : public GameTest {
 protected:
  ClearCheck() {
    ShowClearedOnList = true;
    GameState = kStateSongSelect;
    songSelect.listSettle = 1;
    songList.resize(3);
    for (size_t i = 0; i < 3; ++i)
      songList[i].path = Join(AppPath, u"\\pack\\song", static_cast<int32_t>(i), u".bms");
    lastSong = 2;
    songCleared.assign(3, false);
    songHasRecord.assign(3, false);
  }
};

TEST_F(ClearCheck, OneRowACallFromTheFirstOn) {
  WriteData(u"pack\\song0.qsd", std::string("\0\xFF", 2));
  WriteData(u"pack\\song2.qsd", std::string("\0\xFF", 2));
  CheckNextRow();
  EXPECT_TRUE(songCleared[0]);
  EXPECT_EQ(message.text, u"clear check... 0");
  EXPECT_EQ(songSelect.clearCheckRow, 1);
  EXPECT_FALSE(songCleared[2]);
  CheckNextRow();
  EXPECT_EQ(message.text, u"clear check... 1");
  CheckNextRow();
  EXPECT_FALSE(songCleared[1]);
  EXPECT_TRUE(songCleared[2]);
  EXPECT_EQ(message.text, u"clear check... 2");
  message.text.clear();
  CheckNextRow();
  EXPECT_EQ(message.text, u"");
  EXPECT_EQ(songSelect.clearCheckRow, 3);
}

TEST_F(ClearCheck, OnlyTheLastByteOfTheFileCounts) {
  WriteData(u"pack\\song0.qsd", std::string("\xFF\xFF\0", 3));
  WriteData(u"pack\\song1.qsd", std::string("\0\0\x01", 3));
  WriteData(u"pack\\song2.qsd", "");
  songCleared[0] = songCleared[2] = true;
  for (int32_t row = 0; row < 3; ++row) CheckNextRow();
  EXPECT_FALSE(songCleared[0]);
  EXPECT_TRUE(songCleared[1]);
  EXPECT_TRUE(songCleared[2]);  // nothing was read
}

TEST_F(ClearCheck, ARecordIsAFileBesideTheChart) {
  WriteData(u"pack\\song1.qpd", "");
  for (int32_t row = 0; row < 3; ++row) CheckNextRow();
  EXPECT_FALSE(songHasRecord[0]);
  EXPECT_TRUE(songHasRecord[1]);
}

TEST_F(ClearCheck, TheFolderForReadOnlyChartsGoesFirst) {
  WriteData(u"pack\\song0.qsd", std::string(1, '\0'));
  WriteData(u"_qlmfiles\\ro_score\\pack\\song0.qsd", "\x01");
  WriteData(u"_qlmfiles\\ro_score\\pack\\song1.qpd", "");
  CheckNextRow();
  EXPECT_TRUE(songCleared[0]);
  CheckNextRow();
  EXPECT_TRUE(songHasRecord[1]);
}

TEST_F(ClearCheck, CoursesHaveTheirFilesBesideTheirs) {
  GameState = kStateCourses;
  songList[0].path = Join(AppPath, u"\\_qlmfiles\\courselist\\Night.qcl");
  WriteData(u"_qlmfiles\\courselist\\Night.qsd", "\x01");
  CheckNextRow();
  EXPECT_TRUE(songCleared[0]);
}

TEST_F(ClearCheck, WaitsUntilTheWheelRests) {
  songSelect.listScroll = 0.001F;
  CheckNextRow();
  EXPECT_EQ(songSelect.clearCheckRow, 0);
  songSelect.listScroll = 0;
  songSelect.listSettle = 1.02F;
  CheckNextRow();
  EXPECT_EQ(songSelect.clearCheckRow, 0);
  songSelect.listSettle = 1;
  ShowClearedOnList = false;
  CheckNextRow();
  EXPECT_EQ(songSelect.clearCheckRow, 0);
}

TEST_F(ClearCheck, OtherListsEndIt) {
  GameState = kStateLists;
  CheckNextRow();
  EXPECT_EQ(songSelect.clearCheckRow, 3);
  EXPECT_EQ(message.text, u"");
}

TEST_F(ClearCheck, AnEmptyListIsDoneAtOnce) {
  songList.clear();
  songCleared.clear();
  lastSong = -1;
  CheckNextRow();
  EXPECT_EQ(songSelect.clearCheckRow, 0);
  EXPECT_EQ(message.text, u"");
}

TEST_F(ClearCheck, RowsWithoutAPathAreNeitherClearedNorRecorded) {
  songList[0].path.clear();
  CheckNextRow();
  EXPECT_FALSE(songCleared[0]);
  EXPECT_FALSE(songHasRecord[0]);
}

}  // namespace
}  // namespace qlm
