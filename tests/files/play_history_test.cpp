// lastplay.txt.
#include "files/play_history.h"

#include "base/paths.h"
#include "files/data_folder.h"
#include "platform/files.h"
#include "platform/text.h"
#include "state/chart.h"
#include "state/courses.h"
#include "state/lists.h"
#include "tests/support/game_test.h"

namespace qlm {
namespace {

class PlayHistoryTest : public GameTest {
 protected:
  PlayHistoryTest() {
    HdrPlayLevel = 7;
    HdrGenre = Text(u"Pop");
    HdrTitle = Text(u"春");
    HdrArtist = Text(u"me");
    BMSLengthMs = 125'999;
  }

  Text History() const { return platform::DecodeCp932(ReadBytes(Join(AppPath, u"\\lastplay.txt"))); }
};

TEST_F(PlayHistoryTest, LineTellsNumberLevelNamesAndLength) {
  writePlayList();
  EXPECT_EQ(ReadBytes(Join(AppPath, u"\\lastplay.txt")),
            "1>\t\x81\x9A"
            "7 [Pop] \x8F\x74 / me\t<02:05>\r\n");
}

TEST_F(PlayHistoryTest, SongsOfASessionAreNumbered) {
  writePlayList();
  HdrTitle = Text(u"b");
  BMSLengthMs = 6'000'000;
  writePlayList();
  EXPECT_EQ(History(), u"1>\t★7 [Pop] 春 / me\t<02:05>\r\n2>\t★7 [Pop] b / me\t<100:00>\r\n");
}

TEST_F(PlayHistoryTest, ClearedHistoryBeginsWithNumber1) {
  writePlayList();
  clearPlayList();
  EXPECT_FALSE(FileExists(Join(AppPath, u"\\lastplay.txt")));
  BMSLengthMs = 0;
  writePlayList();
  EXPECT_EQ(History(), u"1>\t★7 [Pop] 春 / me\t<00:00>\r\n");
}

TEST_F(PlayHistoryTest, SongOfACourseIsToldAsItsListHasIt) {
  CourseMode = true;
  CourseSongs.resize(2);
  CourseSongs[1].playLevel = 2;
  CourseSongs[1].genre = Text(u"Waltz");
  CourseSongs[1].title = Text(u"夏");
  CourseSongs[1].artist = Text(u"you");
  CourseSongs[1].lengthMs = 61'000;
  CourseSong = 1;
  writePlayList();
  EXPECT_EQ(History(), u"1>\t★2 [Waltz] 夏 / you\t<01:01>\r\n");
}

TEST_F(PlayHistoryTest, SecondProgramKeepsNoHistory) {
  WriteData(u"lastplay.txt", "of the first one");
  keepsDataFolder = false;
  writePlayList();
  clearPlayList();
  keepsDataFolder = true;
  EXPECT_EQ(History(), u"of the first one");
}

}  // namespace
}  // namespace qlm
