// Rows of the active list.
#include "library/song_list.h"

#include "state/lists.h"
#include "tests/support/game_test.h"

namespace qlm {
namespace {

class SongListTest : public GameTest {
 protected:
  Text Chart(TextView name) const { return WriteText(name, u"\r\n#TITLE x\r\n#BPM 125\r\n#00111:01\r\n"); }
};

TEST_F(SongListTest, SongsAreAppended) {
  const Text a = Chart(u"a.bms");
  const Text b = Chart(u"b.bms");
  AddSong(a);
  songCleared[0] = true;
  songHasRecord[0] = true;
  AddSong(b);
  EXPECT_EQ(lastSong, 1);
  ASSERT_EQ(songList.size(), 2U);
  EXPECT_EQ(songList[0].path, a);
  EXPECT_EQ(songList[0].title, u"x");
  EXPECT_EQ(songList[1].path, b);
  EXPECT_EQ(songCleared, (std::vector<bool>{true, false}));
  EXPECT_EQ(songHasRecord, (std::vector<bool>{true, false}));
  EXPECT_EQ(listTotalTime, 2 * 1920);
}

TEST_F(SongListTest, MissingFileLeavesAnEmptyRow) {
  AddSong(Join(Chart(u"a.bms"), u".none"));
  EXPECT_EQ(lastSong, 0);
  EXPECT_EQ(songList, std::vector<SongEntry>(1));
  EXPECT_EQ(listTotalTime, 0);
}

TEST_F(SongListTest, ClearedListIsEmpty) {
  AddSong(Chart(u"a.bms"));
  listCursor = 3;
  listFileName = Text(u"x");
  ClearList();
  EXPECT_EQ(lastSong, -1);
  EXPECT_TRUE(songList.empty());
  EXPECT_TRUE(songCleared.empty());
  EXPECT_TRUE(songHasRecord.empty());
  EXPECT_EQ(listTotalTime, 0);
  EXPECT_EQ(listCursor, 0);
  EXPECT_EQ(listFileName, u"");
}

}  // namespace
}  // namespace qlm
