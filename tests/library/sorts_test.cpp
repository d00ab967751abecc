// The sorts of the active list.
#include "library/sorts.h"

#include <cstdlib>

#include "state/lists.h"
#include "tests/support/game_test.h"

namespace qlm {
namespace {

using Texts = std::vector<Text>;

class SortsTest : public GameTest {
 protected:
  SortsTest() { setenv("LC_ALL", "en_US.UTF-8", 1); }
  ~SortsTest() override { unsetenv("LC_ALL"); }

  static void Titles(const Texts& titles) {
    songList.assign(titles.size(), SongEntry{});
    for (size_t row = 0; row < titles.size(); ++row) {
      songList[row].title = titles[row];
      songList[row].numWav = static_cast<int32_t>(row);
    }
    lastSong = static_cast<int32_t>(titles.size()) - 1;
  }
  static Texts Titles() {
    Texts titles;
    for (const SongEntry& song : songList) titles.push_back(song.title);
    return titles;
  }
  // Where the rows came from.
  static std::vector<int32_t> Origins() {
    std::vector<int32_t> origins;
    for (const SongEntry& song : songList) origins.push_back(song.numWav);
    return origins;
  }
};

TEST_F(SortsTest, RowsKeepTheirMarks) {
  Titles({u"c", u"a", u"b"});
  songCleared = {true, false, false};
  songHasRecord = {false, true, true};
  SortByTitle();
  EXPECT_EQ(songCleared, (std::vector<bool>{false, false, true}));
  EXPECT_EQ(songHasRecord, (std::vector<bool>{true, true, false}));
}

TEST_F(SortsTest, LevelsComeAsSignedNumbers) {
  Titles({u"a", u"b", u"c"});
  songList[0].playLevel = 10;
  songList[1].playLevel = 9;
  songList[2].playLevel = -1;
  SortByLevel();
  EXPECT_EQ(Titles(), (Texts{u"c", u"b", u"a"}));
}

TEST_F(SortsTest, EachSortHasItsOwnField) {
  Titles({u"1", u"2", u"3"});
  for (size_t row = 0; row < 3; ++row) {
    songList[row].genre = Texts{u"b", u"c", u"a"}[row];
    songList[row].artist = Texts{u"c", u"a", u"b"}[row];
  }
  SortByGenre();
  EXPECT_EQ(Titles(), (Texts{u"3", u"1", u"2"}));
  SortByArtist();
  EXPECT_EQ(Titles(), (Texts{u"2", u"3", u"1"}));
  SortByTitle();
  EXPECT_EQ(Titles(), (Texts{u"1", u"2", u"3"}));
}

TEST_F(SortsTest, CaseDoesNotCountAndRowsMoveWhole) {
  Titles({u"c", u"B", u"a", u"D"});
  SortByTitle();
  EXPECT_EQ(Titles(), (Texts{u"a", u"B", u"c", u"D"}));
  EXPECT_EQ(Origins(), (std::vector<int32_t>{2, 1, 0, 3}));
}

// By hand: the pivot is the key of all. i and j meet all the way in and swap 0 with 3 and 1 with 2; then the
// ranges (2, 3) and (0, 1) are each swapped.
TEST_F(SortsTest, RowsAlikeComeAsTheSchemeLeavesThem) {
  Titles({u"a", u"A", u"a", u"A"});
  SortByTitle();
  EXPECT_EQ(Origins(), (std::vector<int32_t>{2, 3, 0, 1}));
}

TEST_F(SortsTest, OrderIsThatOfTheUsersLanguage) {
  const Texts words = {u"z", u"ä", u"b"};
  Titles(words);
  setenv("LC_ALL", "de_DE.UTF-8", 1);
  SortByTitle();
  EXPECT_EQ(Titles(), (Texts{u"ä", u"b", u"z"}));
  setenv("LC_ALL", "sv_SE.UTF-8", 1);
  SortByTitle();
  EXPECT_EQ(Titles(), (Texts{u"b", u"z", u"ä"}));
}

TEST_F(SortsTest, EmptyListAndListOfOneStay) {
  Titles({});
  SortByTitle();
  SortByLevel();
  EXPECT_TRUE(songList.empty());
  Titles({u"a"});
  SortByTitle();
  EXPECT_EQ(Titles(), (Texts{u"a"}));
}

TEST_F(SortsTest, EmptyTextsComeFirst) {
  Titles({u"a", u"", u"春"});
  SortByTitle();
  EXPECT_EQ(Titles(), (Texts{u"", u"a", u"春"}));
}

}  // namespace
}  // namespace qlm
