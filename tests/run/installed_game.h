// The ground of tests with the real program and the stock data, as they are in a new installation.
#pragma once

#include <string>
#include <string_view>

#include "tests/support/game_test.h"

namespace qlm {

class InstalledGameTest : public GameTest {
 protected:
  // Copies the program with its stock data, and nothing that a run has left there, to the test's folder.
  InstalledGameTest();

  // The copy, by the system's path.
  std::string Program() const { return SystemFolder() + "/quillmarch"; }

  std::string DebugText() const;
  int CountLines(std::string_view words) const;
  bool LogHolds(std::string_view words) const { return CountLines(words) > 0; }
  // Waits until the words stand in the log so many times; fails the test when they do not come.
  void WaitForLine(std::string_view words, int times = 1) const;
  static void Rest(int ms);
};

}  // namespace qlm
