// Searching folders for charts.
#include "library/scan.h"

#include <sys/stat.h>
#include <unistd.h>

#include <algorithm>
#include <cstdlib>
#include <filesystem>
#include <memory>

#include "base/hooks.h"
#include "base/paths.h"
#include "files/list_file.h"
#include "library/lists.h"
#include "library/song_list.h"
#include "platform/surface.h"
#include "state/courses.h"
#include "state/lists.h"
#include "state/settings.h"
#include "state/surfaces.h"
#include "tests/support/game_test.h"

namespace qlm {
namespace {

namespace fs = std::filesystem;
using Texts = std::vector<Text>;

class ScanTest : public GameTest {
 protected:
  ScanTest() {
    setenv("SDL_VIDEODRIVER", "dummy", 1);  // boxes go to standard error
    heard_.clear();
    MakeFolders(DataPath(u"jukelist\\"));
  }

  void Chart(TextView name, TextView title = u"x") const {
    WriteText(Join(u"bms\\", name), Join(u"\r\n#TITLE ", title, u"\r\n#BPM 125\r\n#00111:01\r\n"));
  }
  Text Folder() const { return Join(AppPath, u"\\bms"); }
  std::string SystemPath(const std::string& name) const { return SystemFolder() + "/bms/" + name; }
  void SearchIn(TextView lines) const { WriteText(u"_qlmfiles\\qlm_searchdir.txt", lines); }

  // What was found, below the folder.
  Texts Found() const {
    Texts names;
    for (const Text& path : library.foundFiles) names.push_back(path.substr(Folder().size() + 1));
    return names;
  }
  Texts Find(TextView patterns = u"*.bms;*.bme", bool recurse = true) const {
    library.foundFiles.clear();
    FindFiles(Folder(), patterns, recurse);
    EXPECT_EQ(library.scanDepth, 0);
    EXPECT_EQ(library.foundCount, static_cast<int32_t>(library.foundFiles.size()));
    return Found();
  }
  Texts Titles() const {
    Texts titles;
    for (const SongEntry& song : songList) titles.push_back(song.title);
    return titles;
  }
  template <typename Work>
  static std::string Boxes(Work work) {
    testing::internal::CaptureStderr();
    work();
    return testing::internal::GetCapturedStderr();
  }

  static Texts heard_;
};

Texts ScanTest::heard_;

// --- FindFiles ---

TEST_F(ScanTest, FilesOfOnePatternStandBeforeThoseOfTheNextAndBeforeFolders) {
  for (const TextView name : {u"b.bme", u"a\\d.bms", u"c.bms", u"a.bme", u"B.BMS"}) Chart(name);
  WriteData(u"bms\\a.txt", "");
  EXPECT_EQ(Find(), (Texts{u"B.BMS", u"c.bms", u"a.bme", u"b.bme", u"a\\d.bms"}));
}

TEST_F(ScanTest, SearchGoesTwoLevelsDeep) {
  for (const TextView name : {u"0.bms", u"a\\1.bms", u"a\\b\\2.bms", u"c\\3.bms"}) Chart(name);
  EXPECT_EQ(Find(), (Texts{u"0.bms", u"a\\1.bms", u"c\\3.bms"}));
}

TEST_F(ScanTest, WithoutTheLimitItGoesToAnyDepth) {
  Text name;
  for (int depth = 0; depth < 100; ++depth) name.append(u"d\\");
  name.append(u"x.bms");
  Chart(name);
  Chart(u"0.bms");
  library.scanNoLimit = true;
  EXPECT_EQ(Find(), (Texts{u"0.bms", name}));
}

TEST_F(ScanTest, WithoutRecursionFoldersStayOut) {
  Chart(u"0.bms");
  Chart(u"a\\1.bms");
  EXPECT_EQ(Find(u"*.bms", false), (Texts{u"0.bms"}));
}

TEST_F(ScanTest, FoldersThatBeginWithADotStayOut) {
  Chart(u".a\\1.bms");
  Chart(u"b.c\\1.bms");
  Chart(u".2.bms");
  EXPECT_EQ(Find(), (Texts{u".2.bms", u"b.c\\1.bms"}));
}

TEST_F(ScanTest, FolderNamedLikeAChartIsNone) {
  Chart(u"a.bms\\1.bms");
  EXPECT_EQ(Find(), (Texts{u"a.bms\\1.bms"}));
}

TEST_F(ScanTest, FindsAreAppended) {
  Chart(u"1.bms");
  Find();
  FindFiles(Join(Folder(), u"\\"), u"*.bms", false);
  EXPECT_EQ(Found(), (Texts{u"1.bms", u"1.bms"}));
  EXPECT_EQ(library.foundCount, 2);
}

TEST_F(ScanTest, BeyondTheLimitNothingIsLookedAt) {
  Chart(u"1.bms");
  library.scanDepth = 2;
  FindFiles(Folder(), u"*.bms", true);
  EXPECT_TRUE(library.foundFiles.empty());
  EXPECT_EQ(library.scanDepth, 2);
}

TEST_F(ScanTest, NamesInAnyCodingAreFound) {
  Chart(u"曲\\한.bms");
  EXPECT_EQ(Find(), (Texts{u"曲\\한.bms"}));
  fs::remove_all(SystemPath("曲"));
  std::FILE* const file = std::fopen(SystemPath("\x95\x5C.bms").c_str(), "wb");  // 表 in code page 932
  ASSERT_NE(file, nullptr);
  std::fclose(file);
  EXPECT_EQ(Find(), (Texts{u"表.bms"}));
  EXPECT_TRUE(FileExists(library.foundFiles[0]));
}

// --- links and what cannot be read ---

TEST_F(ScanTest, LinksThatLoopEnd) {
  Chart(u"a\\1.bms");
  fs::create_directory_symlink("..", SystemPath("a/up"));
  fs::create_directory_symlink(".", SystemPath("self"));
  // Two levels: by the link the folder is seen once more.
  EXPECT_EQ(Find(), (Texts{u"a\\1.bms"}));
  library.scanNoLimit = true;
  EXPECT_EQ(Find(), (Texts{u"a\\1.bms"}));
}

TEST_F(ScanTest, ManyLinksToEachOtherEndSoon) {
  for (int from = 0; from < 30; ++from) {
    const fs::path folder = SystemPath(std::to_string(from));
    fs::create_directories(folder);
    for (int to = 0; to < 30; ++to) {
      const std::string name = std::to_string(to);
      fs::create_directory_symlink(fs::path("..") / name, folder / ("link" + name));
    }
  }
  Chart(u"7\\1.bms");
  library.scanNoLimit = true;
  EXPECT_EQ(Find().size(), 1U);
}

TEST_F(ScanTest, SecondSearchEntersTheSameFoldersAgain) {
  Chart(u"1.bms");
  library.scanNoLimit = true;
  EXPECT_EQ(Find().size(), 1U);
  EXPECT_EQ(Find().size(), 1U);
}

TEST_F(ScanTest, MissingFolderIsLogged) {
  EXPECT_TRUE(Find().empty());
  EXPECT_EQ(log, (Texts{Join(u"# cannot be read: ", Folder(), u"\\: No such file or directory")}));
}

TEST_F(ScanTest, LinkToNothingAndPipeAreLoggedAndLeftOut) {
  Chart(u"1.bms");
  fs::create_symlink("nowhere", SystemPath("2.bms"));
  fs::create_symlink("3.bms", SystemPath("3.bms"));
  ASSERT_EQ(mkfifo(SystemPath("4.bms").c_str(), 0600), 0);
  ScanFolder(Folder());
  EXPECT_EQ(lastSong, 0);
  for (const TextView name : {u"2.bms", u"3.bms", u"4.bms"}) {
    EXPECT_TRUE(
        Logged(Join(u"# cannot be read: ", Folder(), u"\\", name, u": It is no file, or a link to none")));
  }
}

// Runs as a user who owns nothing, where the test runs as one who may read all.
class AsNobody {
 public:
  AsNobody() {
    if (root_) root_ = seteuid(65534) == 0;
  }
  ~AsNobody() {
    if (root_ && seteuid(0) != 0) ADD_FAILURE() << "the test's own user has not come back";
  }

 private:
  bool root_ = geteuid() == 0;
};

TEST_F(ScanTest, FilesAndFoldersWithoutTheRightToReadAreLoggedWithTheReasonAndSurvived) {
  hooks.unreadable = [](TextView path, TextView why) {
    heard_.push_back(Join(GetFileName(path.substr(0, path.find_last_not_of(u'\\') + 1)), u": ", why));
  };
  Chart(u"1.bms", u"one");
  Chart(u"2.bms", u"two");
  Chart(u"3.bms", u"three");
  Chart(u"closed\\4.bms");
  fs::permissions(SystemFolder(), fs::perms::all);
  fs::permissions(SystemPath("2.bms"), fs::perms::none);
  fs::permissions(SystemPath("closed"), fs::perms::none);
  {
    const AsNobody nobody;
    ScanFolder(Folder());
  }
  fs::permissions(SystemPath("closed"), fs::perms::all);
  // The chart's row has what a chart has that says nothing.
  EXPECT_EQ(Titles(), (Texts{u"one", u"", u"three"}));
  EXPECT_EQ(songList[1].playLevel, 3);
  EXPECT_TRUE(Logged(Join(u"# cannot be read: ", Folder(), u"\\2.bms: Permission denied")));
  EXPECT_TRUE(Logged(Join(u"# cannot be read: ", Folder(), u"\\closed\\: Permission denied")));
  EXPECT_EQ(heard_, (Texts{u"closed: Permission denied", u"2.bms: Permission denied"}));
}

TEST_F(ScanTest, ChartOfHostileSizeIsRefusedUnread) {
  Chart(u"1.bms", u"one");
  Chart(u"2.bms", u"two");
  fs::resize_file(SystemPath("1.bms"), (uintmax_t{256} << 20) + 1);
  ScanFolder(Folder());
  EXPECT_EQ(Titles(), (Texts{u"", u"two"}));
  EXPECT_TRUE(Logged(Join(u"# cannot be read: ", Folder(), u"\\1.bms: This is too long")));
}

// --- ScanFolder ---

TEST_F(ScanTest, ScanAddsEachChartFoundInItsOrder) {
  Chart(u"b.bms", u"B");
  Chart(u"a.bme", u"A");
  Chart(u"c\\c.bms", u"C");
  library.foundFiles = {u"old"};
  library.foundCount = 1;
  ScanFolder(Folder());
  EXPECT_EQ(Titles(), (Texts{u"B", u"A", u"C"}));
  EXPECT_EQ(lastSong, 2);
  EXPECT_EQ(library.foundCount, 3);
  EXPECT_EQ(listTotalTime, 3 * 1920);
  EXPECT_EQ(songList[2].path, Join(Folder(), u"\\c\\c.bms"));
}

TEST_F(ScanTest, ScanAppendsToTheListThatStands) {
  Chart(u"a.bms", u"A");
  ScanFolder(Folder());
  ScanFolder(Folder());
  EXPECT_EQ(Titles(), (Texts{u"A", u"A"}));
}

// --- progress ---

TEST_F(ScanTest, ProgressIsTheCaptionWhileThereIsNoDisplay) {
  hooks.setCaption = [](TextView text) { heard_.emplace_back(text); };
  Chart(u"1.bms");
  Chart(u"a\\2.bms");
  ScanFolder(Folder());
  EXPECT_EQ(heard_,
            (Texts{Join(u"Seaching 1... ", Folder(), u"\\"), Join(u"Seaching 2... ", Folder(), u"\\a\\"),
                   u"Adding...2 files of 1files / 00:00:01", u"Adding...2 files of 2files / 00:00:03"}));
}

TEST_F(ScanTest, WithADisplayNoProgressIsShownButFoldersAreTold) {
  hooks.setCaption = [](TextView text) { heard_.push_back(Join(u"caption ", text)); };
  hooks.folderSearched = [](TextView line) { heard_.emplace_back(line); };
  DDBack = std::make_shared<platform::Surface>(640, 480);
  Chart(u"1.bms");
  ScanFolder(Folder());
  EXPECT_EQ(heard_, (Texts{Join(u"Seaching 1... ", Folder(), u"\\")}));
}

TEST_F(ScanTest, EventsRunWhileFoldersAreSearchedAndAreToldOfTheScan) {
  hooks.loadPump = [] { heard_.emplace_back(library.scanRunning ? u"scan" : u"none"); };
  Chart(u"1.bms");
  ScanFolder(Folder());
  EXPECT_EQ(heard_, (Texts{u"scan"}));
  EXPECT_FALSE(library.scanRunning);
  library.lastPump.reset();
  UpdateJukeList();
  EXPECT_EQ(heard_, (Texts{u"scan", u"scan"}));
  EXPECT_FALSE(library.scanRunning);
}

// --- MakeBMSListFile ---

TEST_F(ScanTest, EachFolderWithChartsBecomesAJukeboxOfItsName) {
  Chart(u"one\\a.bms", u"A");
  Chart(u"two\\b.bms", u"B");
  Chart(u"two\\c.bms", u"C");
  fs::create_directory(SystemPath("none"));
  SearchIn(
      u"// mine\r\n<CURRENTDIR>\\bms\\one\r\n<currentdir>\\bms\\two\\\r\n#<CURRENTDIR>\\bms\r\n\r\n"
      u"<CURRENTDIR>\\bms\\none // to be filled\r\n");
  EXPECT_TRUE(MakeBMSListFile(false));
  EXPECT_EQ(Titles(), (Texts{u"one", u"two"}));
  EXPECT_EQ(songList[1].path, DataPath(u"jukelist\\two.qbl"));
  const ListFile two = ReadListFile(ReadBytes(DataPath(u"jukelist\\two.qbl")));
  ASSERT_EQ(two.rows.size(), 2U);
  EXPECT_EQ(two.rows[0].title, u"B");
  EXPECT_EQ(two.rows[1].title, u"C");
  EXPECT_EQ(two.rows[1].path, Join(Folder(), u"\\two\\c.bms"));
  EXPECT_FALSE(FileExists(DataPath(u"jukelist\\none.qbl")));
  EXPECT_EQ(log, (Texts{u"[MakeBMSListFile] depth limit:True", Join(u"seeking ", Folder(), u"\\one"),
                        u"founds: 0", Join(u"seeking ", Folder(), u"\\two\\"), u"founds: 1",
                        Join(u"seeking ", Folder(), u"\\none"),
                        Join(u"# cannot be read: ", Folder(), u"\\none \\: No such file or directory"),
                        u"founds: -1", u"[UpdateJukeList]", u"1 juke(s) has detected.", u"complete."}));
}

TEST_F(ScanTest, EmptySearchFileAndOneOfCommentsEndInTheBox) {
  Chart(u"..\\songs\\a.bms");  // what a first start would find
  for (const TextView lines : {u"", u"// nothing\r\n", u"#<CURRENTDIR>\\songs\r\n\r\n"}) {
    SearchIn(lines);
    EXPECT_EQ(Boxes([] { EXPECT_FALSE(MakeBMSListFile(false)); }),
              "No BMSs: "
              "BMSファイルが見つかりません。「BMS再検索」で検索フォルダを追加してBMS検索をしてください。\n");
    EXPECT_EQ(lastSong, -1);
  }
  EXPECT_FALSE(Logged(u"complete."));
}

TEST_F(ScanTest, FirstStartSearchesTheStockSongs) {
  WriteText(u"songs\\march\\a.bms", u"\r\n#TITLE march\r\n");
  EXPECT_TRUE(MakeBMSListFile(false));
  EXPECT_EQ(Titles(), (Texts{u"songs"}));
  EXPECT_TRUE(Logged(Join(u"seeking ", AppPath, u"\\songs")));
  const ListFile list = ReadListFile(ReadBytes(DataPath(u"jukelist\\songs.qbl")));
  ASSERT_EQ(list.rows.size(), 1U);
  EXPECT_EQ(list.rows[0].title, u"march");
}

TEST_F(ScanTest, FirstStartWithoutStockSongsEndsInTheBox) {
  EXPECT_NE(Boxes([] { EXPECT_FALSE(MakeBMSListFile(false)); }), "");
}

TEST_F(ScanTest, JukeboxOfAFolderThatHasBecomeEmptyStays) {
  Chart(u"a\\1.bms");
  SearchIn(u"<CURRENTDIR>\\bms\\a\r\n");
  EXPECT_TRUE(MakeBMSListFile(false));
  const std::string before = ReadBytes(DataPath(u"jukelist\\a.qbl"));
  fs::remove(SystemPath("a/1.bms"));
  EXPECT_TRUE(MakeBMSListFile(false));
  EXPECT_EQ(ReadBytes(DataPath(u"jukelist\\a.qbl")), before);
}

TEST_F(ScanTest, TwoFoldersOfOneNameShareAJukeboxAndTheLaterWins) {
  Chart(u"1\\same\\a.bms", u"A");
  Chart(u"2\\same\\b.bms", u"B");
  SearchIn(u"<CURRENTDIR>\\bms\\1\\same\r\n<CURRENTDIR>\\bms\\2\\same\r\n");
  EXPECT_TRUE(MakeBMSListFile(false));
  EXPECT_EQ(Titles(), (Texts{u"same"}));
  EXPECT_EQ(ReadListFile(ReadBytes(songList[0].path)).rows[0].title, u"B");
}

TEST_F(ScanTest, DepthLimitIsLoggedAndLiftedApart) {
  Chart(u"a\\b\\c\\1.bms");
  SearchIn(u"<CURRENTDIR>\\bms");
  Boxes([] { EXPECT_FALSE(MakeBMSListFile(true)); });
  EXPECT_TRUE(Logged(u"[MakeBMSListFile] depth limit:False"));
  library.scanNoLimit = true;
  EXPECT_TRUE(MakeBMSListFile(false));
  EXPECT_TRUE(Logged(u"[MakeBMSListFile] depth limit:True"));
}

TEST_F(ScanTest, StoppedSearchKeepsTheJukeboxesOfTheFoldersItDidNotFinish) {
  Chart(u"a\\1.bms", u"A");
  Chart(u"b\\1.bms", u"B");
  Chart(u"b\\2.bms", u"C");
  SearchIn(u"<CURRENTDIR>\\bms\\a\r\n<CURRENTDIR>\\bms\\b\r\n<CURRENTDIR>\\bms\\a\r\n");
  // In the second folder, once a chart of it stands in the list.
  hooks.setCaption = [](TextView) { library.scanStopped = lastSong == 0 && songList[0].title == u"B"; };
  EXPECT_TRUE(MakeBMSListFile(false)) << "there is a jukebox";
  EXPECT_EQ(Titles(), (Texts{u"a"}));
  EXPECT_FALSE(FileExists(DataPath(u"jukelist\\b.qbl")));
  EXPECT_TRUE(Logged(u"stopped."));
  EXPECT_EQ(std::count(log.begin(), log.end(), Join(u"seeking ", Folder(), u"\\a")), 1)
      << "the third is left out";
  // The next search is whole again.
  hooks.setCaption = nullptr;
  EXPECT_TRUE(MakeBMSListFile(false));
  EXPECT_EQ(Titles(), (Texts{u"a", u"b"}));
}

TEST_F(ScanTest, SearchThatIsStoppedBeforeItFoundAnythingShowsNoBox) {
  Chart(u"1.bms");
  SearchIn(u"<CURRENTDIR>\\bms");
  hooks.folderSearched = [](TextView) { library.scanStopped = true; };
  EXPECT_EQ(Boxes([] { EXPECT_FALSE(MakeBMSListFile(false)); }), "");
}

TEST_F(ScanTest, EndOfAScanIsTheCaption) {
  hooks.setCaption = [](TextView text) { heard_.emplace_back(text); };
  Chart(u"1.bms");
  SearchIn(u"<CURRENTDIR>\\bms");
  EXPECT_TRUE(MakeBMSListFile(false));
  EXPECT_EQ(heard_.back(), u"Scan complete.");
}

TEST_F(ScanTest, PersonsFormOfAFolderNamesItsJukebox) {
  Chart(u"a\\1.bms");
  WriteData(u"_qlmfiles\\qlm_searchdir.txt", SystemPath("a") + "/\n");
  EXPECT_TRUE(MakeBMSListFile(false));
  EXPECT_EQ(Titles(), (Texts{u"a"}));
}

// --- lists ---

TEST_F(ScanTest, JukeboxesAreListedByTheirNamesWithAChartsStartValues) {
  WriteData(u"_qlmfiles\\jukelist\\a.b.qbl", ListFileBytes(std::vector(1, SongEntry{})));
  WriteData(u"_qlmfiles\\jukelist\\sub\\z.QBL", "");
  WriteData(u"_qlmfiles\\jukelist\\c.txt", "");
  AddSong(u"");
  UpdateJukeList();
  ASSERT_EQ(Titles(), (Texts{u"a.b", u"z"}));
  EXPECT_EQ(songList[0].path, DataPath(u"jukelist\\a.b.qbl"));
  EXPECT_EQ(songList[0].player, 1);
  EXPECT_EQ(songList[0].playLevel, 3);
  EXPECT_EQ(songList[0].lengthMs, 0);
  EXPECT_EQ(library.jukeList, songList);
  EXPECT_EQ(library.lastJuke, 1);
  EXPECT_EQ(log, (Texts{u"[UpdateJukeList]", u"1 juke(s) has detected."}));
}

TEST_F(ScanTest, NoJukeboxLeavesAnEmptyList) {
  UpdateJukeList();
  EXPECT_EQ(lastSong, -1);
  EXPECT_EQ(library.lastJuke, -1);
  EXPECT_TRUE(Logged(u"-1 juke(s) has detected."));
}

TEST_F(ScanTest, CoursesFollowTheRowThatMakesOne) {
  WriteData(u"_qlmfiles\\courselist\\a.qcl", "qlmcourse2");
  numsongs = 3;
  CourseSongs.resize(3);
  AddSong(u"");
  listTotalTime = 5;
  UpdateCourseList();
  ASSERT_EQ(Titles(), (Texts{u"[MAKE NEW COURSE]", u"a"}));
  EXPECT_EQ(songList[0].playLevel, 0);
  EXPECT_EQ(songList[1].path, DataPath(u"courselist\\a.qcl"));
  EXPECT_EQ(library.courseList, songList);
  EXPECT_EQ(library.lastCourse, 1);
  EXPECT_EQ(numsongs, 0);
  EXPECT_TRUE(CourseSongs.empty());
  EXPECT_EQ(log, (Texts{u"[UpdateCourseList]", u"1 course(s) has detected."}));
}

// --- the wide reading ---

TEST_F(ScanTest, TheWideReadingFindsBmlToo) {
  Chart(u"a.bms");
  Chart(u"b.bml");
  ScanFolder(Folder());
  EXPECT_EQ(Found(), (Texts{u"a.bms"}));
  WideCharts = true;
  ScanFolder(Folder());
  EXPECT_EQ(Found(), (Texts{u"a.bms", u"b.bml"}));
}

TEST_F(ScanTest, EachReadingHasListsOfItsOwn) {
  WriteText(u"bms\\one\\a.bms", u"\n#TITLE A\n");  // line feeds alone
  SearchIn(u"<CURRENTDIR>\\bms\\one\r\n");
  EXPECT_TRUE(MakeBMSListFile(false));
  const std::string classic = ReadBytes(DataPath(u"jukelist\\one.qbl"));
  EXPECT_EQ(ReadListFile(classic).rows[0].title, u"");
  WideCharts = true;
  UpdateJukeList();
  EXPECT_TRUE(Titles().empty());  // so that the start makes a list
  EXPECT_TRUE(MakeBMSListFile(false));
  EXPECT_EQ(Titles(), (Texts{u"one"}));
  EXPECT_EQ(songList[0].path, DataPath(u"jukelist\\one.qwl"));
  EXPECT_EQ(ReadListFile(ReadBytes(DataPath(u"jukelist\\one.qwl"))).rows[0].title, u"A");
  EXPECT_EQ(ReadBytes(DataPath(u"jukelist\\one.qbl")), classic);
  WideCharts = false;
  UpdateJukeList();
  EXPECT_EQ(songList[0].path, DataPath(u"jukelist\\one.qbl"));
}

}  // namespace
}  // namespace qlm
