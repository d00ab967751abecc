// The ground of a test of the list screens.
#include "tests/screens/list_ground.h"

#include <cstdlib>

#include "base/hooks.h"
#include "base/paths.h"
#include "library/jukebox.h"
#include "library/song_list.h"
#include "platform/clock.h"
#include "platform/timers.h"
#include "screens/screen_table.h"
#include "state/keys.h"
#include "state/lists.h"
#include "state/session.h"
#include "state/settings.h"
#include "state/song_select.h"

namespace qlm {

int32_t ListTest::closeWishes = 0;

ListTest::ListTest() {
  closeWishes = 0;
  PreviewDelay = 1000;
  // Where a deleted course goes.
  setenv("XDG_DATA_HOME", (SystemFolder() + "/home").c_str(), 1);
  hooks.closeRequested = [] { ++closeWishes; };
  hooks.keyDown = [](int32_t key) {
    if (void (*const routine)(int32_t) = ScreenOf(GameState).key) routine(key);
  };
}

ListTest::~ListTest() { unsetenv("XDG_DATA_HOME"); }

void ListTest::ShowCharts(const std::vector<Text>& titles) {
  ClearList();
  for (size_t i = 0; i < titles.size(); ++i) {
    AddSong(WriteText(Join(u"song\\", static_cast<int32_t>(i), u".bms"),
                      Join(u"\r\n#TITLE ", titles[i], u"\r\n#PLAYER 1\r\n#BPM 150\r\n#PLAYLEVEL ",
                           static_cast<int32_t>(i), u"\r\n#00011:01\r\n")));
  }
  GameState = kStateSongSelect;
}

Text ListTest::SaveAsJukebox(TextView name) {
  MakeFolders(DataPath(u"jukelist"));
  Text path = DataPath(Join(u"jukelist\\", name, u".qbl"));
  SaveJukeList(path, true);
  return path;
}

void ListTest::Press(int32_t key) {
  KeyHeld[key] = true;
  hooks.keyDown(key);
  KeyHeld[key] = false;
}

void ListTest::RunTimers() {
  platform::UseVirtualClock(platform::Now() + 1);
  platform::RunDueTimers();
}

std::string ListTest::Titles() {
  std::string titles;
  for (const SongEntry& song : songList) {
    if (!titles.empty()) titles += ' ';
    titles += Utf8(song.title);
  }
  return titles;
}

}  // namespace qlm
