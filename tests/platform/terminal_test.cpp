// Commands as a person types them.
#include "platform/terminal.h"

#include <gtest/gtest.h>

#include <cstdlib>
#include <string>

#include "platform/files.h"

namespace platform {
namespace {

class Terminal : public testing::Test {
 protected:
  Terminal() {
    if (const char* const folders = std::getenv("PATH")) before_ = folders;
  }
  ~Terminal() override { setenv("PATH", before_.c_str(), 1); }

  const std::string folder_ = SystemPath(ProgramFolder());

 private:
  std::string before_;
};

TEST_F(Terminal, ProgramOfASearchedFolderIsNamedByItsName) {
  setenv("PATH", ("/usr/games:" + folder_ + ":/bin").c_str(), 1);
  EXPECT_EQ(TerminalCommand("probe", "check", "/songs/a.bms"), "probe check '/songs/a.bms'");
}

TEST_F(Terminal, AnyOtherIsNamedByItsPath) {
  const std::string command = "'" + folder_ + "/probe' check '/songs/a.bms'";
  setenv("PATH", ("/usr/games:" + folder_ + "/below:/bin").c_str(), 1);
  EXPECT_EQ(TerminalCommand("probe", "check", "/songs/a.bms"), command);
  unsetenv("PATH");
  EXPECT_EQ(TerminalCommand("probe", "check", "/songs/a.bms"), command);
}

TEST_F(Terminal, AFileIsOneWordWhateverItHolds) {
  setenv("PATH", folder_.c_str(), 1);
  EXPECT_EQ(TerminalCommand("probe", "check", "it's $HOME \"b\".bms"),
            "probe check 'it'\\''s $HOME \"b\".bms'");
  // Bytes of code page 932, which are no UTF-8.
  EXPECT_EQ(TerminalCommand("probe", "check", "\x8B\xC8.bms"), "probe check '\x8B\xC8.bms'");
}

}  // namespace
}  // namespace platform
