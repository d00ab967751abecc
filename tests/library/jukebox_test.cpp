// Loading and saving of jukebox lists.
#include "library/jukebox.h"

#include <cstdlib>
#include <filesystem>

#include "base/hooks.h"
#include "base/paths.h"
#include "files/list_file.h"
#include "library/song_list.h"
#include "state/lists.h"
#include "tests/support/game_test.h"

namespace qlm {
namespace {

class JukeboxTest : public GameTest {
 protected:
  JukeboxTest() {
    setenv("SDL_VIDEODRIVER", "dummy", 1);  // boxes go to standard error
    AddSong(u"");
    songList[0].title = Text(u"one");
    songList[0].lengthMs = 1000;
  }

  // What the boxes say.
  template <typename Work>
  static std::string Boxes(Work work) {
    testing::internal::CaptureStderr();
    work();
    return testing::internal::GetCapturedStderr();
  }

  const Text path_ = Join(AppPath, u"\\a.qbl");
};

TEST_F(JukeboxTest, WhatIsSavedIsLoaded) {
  AddSong(u"");
  songList[1].title = Text(u"two");
  songList[1].lengthMs = 500;
  const std::vector<SongEntry> rows = songList;
  SaveJukeList(path_, false);
  EXPECT_EQ(listFileName, path_);
  ClearList();
  AddSong(u"");
  listCursor = 4;
  EXPECT_EQ(Boxes([&] { LoadJukeList(path_, false); }), "");
  EXPECT_EQ(songList, rows);
  EXPECT_EQ(lastSong, 1);
  EXPECT_EQ(songCleared.size(), 2U);
  EXPECT_EQ(songHasRecord.size(), 2U);
  EXPECT_EQ(listTotalTime, 1500);
  EXPECT_EQ(listCursor, 0);
  EXPECT_EQ(listFileName, path_);
}

TEST_F(JukeboxTest, MarksOfTheListBeforeAreGone) {
  SaveJukeList(path_, true);
  songCleared[0] = songHasRecord[0] = true;
  LoadJukeList(path_, true);
  EXPECT_FALSE(songCleared[0]);
  EXPECT_FALSE(songHasRecord[0]);
}

TEST_F(JukeboxTest, MissingFileIsToldAndLeavesTheList) {
  EXPECT_EQ(Boxes([] { LoadJukeList(u"\\none\\a.qbl", false); }),
            "error: listfile \\none\\a.qblis not exist.\n");
  EXPECT_EQ(Boxes([] { LoadJukeList(u"\\none\\a.qbl", true); }), "");
  ASSERT_EQ(lastSong, 0);
  EXPECT_EQ(songList[0].title, u"one");
  EXPECT_EQ(listFileName, u"");
}

TEST_F(JukeboxTest, WrongMagicIsNotNoticed) {
  std::string bytes = ListFileBytes(songList);
  bytes.replace(0, 8, "whatever");
  WriteData(u"a.qbl", bytes);
  EXPECT_EQ(Boxes([&] { LoadJukeList(path_, false); }), "");
  ASSERT_EQ(lastSong, 0);
  EXPECT_EQ(songList[0].title, u"one");
}

TEST_F(JukeboxTest, FileThatBreaksOffIsToldAndGivesItsRows) {
  std::string bytes = ListFileBytes(std::vector(2, songList[0]));
  bytes.resize(bytes.size() - 40);
  WriteData(u"a.qbl", bytes);
  EXPECT_EQ(Boxes([&] { LoadJukeList(path_, false); }), "error: an error occured in list loading process!\n");
  EXPECT_EQ(lastSong, 1);
  EXPECT_EQ(songList[0].title, u"one");
  EXPECT_EQ(songList[1].title, u"one");
  EXPECT_EQ(songList[1].lengthMs, 0);
  EXPECT_EQ(listTotalTime, 1000);
  EXPECT_EQ(listFileName, path_);
  EXPECT_EQ(Boxes([&] { LoadJukeList(path_, true); }), "");
}

TEST_F(JukeboxTest, EmptyFileGivesAnEmptyList) {
  WriteData(u"a.qbl", "");
  LoadJukeList(path_, true);
  EXPECT_EQ(lastSong, -1);
  EXPECT_TRUE(songList.empty());
}

TEST_F(JukeboxTest, ListThatCannotBeSavedIsToldUnlessQuiet) {
  std::filesystem::create_directory(SystemFolder() + "/a.qbl");
  EXPECT_EQ(Boxes([&] { SaveJukeList(path_, false); }), "error: an error occured in list saving process!\n");
  EXPECT_EQ(Boxes([&] { SaveJukeList(path_, true); }), "");
}

TEST_F(JukeboxTest, PathMayBeATextOfTheListItself) {
  SaveJukeList(path_, true);
  songList[0].path = path_;
  LoadJukeList(songList[0].path, true);
  EXPECT_EQ(lastSong, 0);
  EXPECT_EQ(listFileName, path_);
}

TEST_F(JukeboxTest, ProgressIsTheCaption) {
  static Text caption;
  hooks.setCaption = [](TextView text) { caption = Text(text); };
  songList[0].lengthMs = 3'723'999;  // 1 h, 2 min, 3.999 s
  SaveJukeList(path_, true);
  library.foundCount = 9;
  LoadJukeList(path_, true);
  EXPECT_EQ(caption, u"Adding...9 files of 1files / 01:02:03");
  ClearList();
  EXPECT_EQ(caption, u"Adding...9 files of 0files / 00:00:00");
}

}  // namespace
}  // namespace qlm
