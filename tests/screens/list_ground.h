// The ground of a test of the list screens: rows of charts that exist, a screen that only memory sees, and
// keys.
#pragma once

#include <vector>

#include "base/text.h"
#include "tests/play/play_test.h"

namespace qlm {

class ListTest : public PlayTest {
 protected:
  // No list is up. The window's keys reach the game as they do in the program, and a wish to close it is
  // recorded.
  ListTest();
  ~ListTest() override;

  // Makes a list of charts with these titles the active one, in GameState 0: song\0.bms and so on. Each has
  // one note and the level of its index.
  void ShowCharts(const std::vector<Text>& titles);
  // Saves the active list as a jukebox of this name, and gives its path.
  Text SaveAsJukebox(TextView name);
  // A key goes down and up again.
  static void Press(int32_t key);
  // Lets the decision's timer run and what follows it.
  static void RunTimers();
  // The titles of the active list, one blank between them.
  static std::string Titles();

  static int32_t closeWishes;
};

}  // namespace qlm
