// The ground of a test: the whole game at program start, a virtual clock, and a data folder of its own.
#pragma once

#include <gtest/gtest.h>

#include <string>
#include <string_view>
#include <vector>

#include "base/text.h"

namespace qlm {

class GameTest : public testing::Test {
 protected:
  // Resets the state, sets the clock to 1,000,000 and AppPath to a new empty folder with \_qlmfiles in it.
  // Log lines go to `log` as well as to the file. Fatal errors are recorded.
  GameTest();
  ~GameTest() override;

  // Writes bytes as they are, below AppPath, making folders; gives the path in the game's form.
  Text WriteData(TextView name, std::string_view bytes) const;
  // The same in code page 932.
  Text WriteText(TextView name, TextView text) const;
  std::string ReadBytes(TextView path) const;
  // The system's path of AppPath.
  const std::string& SystemFolder() const { return folder_; }
  // Whether a line stands in the log, to the letter, its indent included.
  bool Logged(TextView line) const;

  std::vector<Text> log;
  struct Fatal {
    Text title;
    Text message;
  };
  static std::vector<Fatal> fatals;

 private:
  std::string folder_;
};

// Makes texts readable in failed expectations.
std::string Utf8(TextView text);

}  // namespace qlm
