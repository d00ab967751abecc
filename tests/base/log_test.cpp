// The debug log: its lines, its levels, its file.
#include "base/log.h"

#include <regex>

#include "base/hooks.h"
#include "base/paths.h"
#include "platform/files.h"
#include "tests/support/game_test.h"

namespace qlm {
namespace {

class LogTest : public GameTest {};

TEST_F(LogTest, EmptyMessageSaysReady) {
  DebugLog(u"");
  EXPECT_TRUE(Logged(u"Ready."));
}

TEST_F(LogTest, IndentIsTakenBeforeItChanges) {
  DebugLog(u"[A]", 1);
  DebugLog(u"b");
  DebugLog(u"c", -1);
  DebugLog(u"d");
  EXPECT_EQ(log, (std::vector<Text>{u"[A]", u"    b", u"    c", u"d"}));
}

TEST_F(LogTest, IndentNeverFallsBelowZero) {
  DebugLog(u"a", -1);
  DebugLog(u"b", -1);
  DebugLog(u"c", -5);
  DebugLog(u"d");
  EXPECT_EQ(log, (std::vector<Text>{u"a", u"b", u"c", u"d"}));
  EXPECT_EQ(LogIndent, 0);
}

TEST_F(LogTest, OuterBlanksOfTheMessageAreCut) {
  DebugLog(u"  playloop start ");
  EXPECT_TRUE(Logged(u"playloop start"));
}

TEST_F(LogTest, LinesStandInTheFileWithTheirTimeInCodePage932) {
  DebugLog(u"一", 1);
  DebugLog(u"b");
  const std::string file = ReadBytes(DataPath(u"debug.txt"));
  EXPECT_TRUE(std::regex_match(
      file, std::regex(
                "[0-2][0-9]:[0-5][0-9]:[0-5][0-9]> \x88\xEA\r\n[0-2][0-9]:[0-5][0-9]:[0-5][0-9]>     b\r\n")))
      << file;
}

TEST_F(LogTest, AFileThatCannotBeWrittenIsPassedOver) {
  AppPath = u"\\no such folder\\anywhere";
  DebugLog(u"a");
  EXPECT_TRUE(Logged(u"a"));
}

// The file's place is taken by a folder.
TEST_F(LogTest, ALineThatCannotBeWrittenIsTold) {
  static std::vector<Text> told;
  told.clear();
  hooks.unwritten = [](TextView path) { told.emplace_back(path); };
  DebugLog(u"one");
  EXPECT_TRUE(told.empty());
  platform::DeleteFile(LogPath());
  platform::MakeFolder(LogPath());
  DebugLog(u"two");
  EXPECT_EQ(told, (std::vector<Text>{LogPath()}));
}

}  // namespace
}  // namespace qlm
