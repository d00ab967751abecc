// The key configuration in the real program: from the menu to keys that a play takes.
#include <chrono>
#include <filesystem>
#include <sstream>
#include <thread>

#include "base/paths.h"
#include "files/key_table.h"
#include "state/keys.h"
#include "tests/support/game_test.h"
#include "tests/support/process.h"
#include "tests/support/x_display.h"

namespace qlm {
namespace {

namespace fs = std::filesystem;

class KeysTest : public GameTest {
 protected:
  KeysTest() : display_("1024x768") {
    fs::copy_file(QLM_BINARY_DIR "/quillmarch", SystemFolder() + "/quillmarch");
    fs::copy(QLM_BINARY_DIR "/_qlmfiles", SystemFolder() + "/_qlmfiles",
             fs::copy_options::recursive | fs::copy_options::overwrite_existing);
    for (const char* const file : {"qlm_conf.ini", "qlm_keycnf.dat", "debug.txt", "jukelist"}) {
      fs::remove_all(SystemFolder() + "/_qlmfiles/" + file);
    }
    WriteText(u"_qlmfiles\\qlm_conf.ini", u"[quillmarch]\r\nMenuLanguage=en\r\n");
  }

  std::map<std::string, std::string> Environment() const {
    return {{"DISPLAY", display_.Name()}, {"WAYLAND_DISPLAY", ""}, {"SDL_VIDEODRIVER", ""}, {"SDL_AUDIODRIVER", "dummy"}};
  }

  // Where a window lies, by its title.
  struct Geometry {
    int x = 0;
    int y = 0;
    int width = 0;
    int height = 0;
  };
  Geometry Find(const std::string& title) const {
    display_.WaitForWindow(title);
    const ProcessResult found = Run({"xdotool", "search", "--onlyvisible", "--name", "^" + title + "$",
                                     "getwindowgeometry", "--shell"},
                                    Environment(), 20);
    std::map<std::string, int> values;
    std::istringstream lines(found.output);
    for (std::string line; std::getline(lines, line);) {
      const size_t sign = line.find('=');
      if (sign != std::string::npos) values[line.substr(0, sign)] = std::atoi(line.c_str() + sign + 1);
    }
    return {values["X"], values["Y"], values["WIDTH"], values["HEIGHT"]};
  }
  void WaitUntilClosed(const std::string& title) const {
    for (int i = 0; i < 200; ++i) {
      const ProcessResult found =
          Run({"xdotool", "search", "--onlyvisible", "--name", "^" + title + "$"}, Environment(), 20);
      if (found.exitStatus != 0) return;
      std::this_thread::sleep_for(std::chrono::milliseconds(10));
    }
    ADD_FAILURE() << title << " stays open";
  }
  // The button in the lower right corner but one.
  void ClickDone() const {
    const Geometry form = Find("KeyConfig");
    display_.Do({"mousemove", std::to_string(form.x + form.width - 130),
                 std::to_string(form.y + form.height - 23), "click", "1"});
    WaitUntilClosed("KeyConfig");
  }

  XDisplay display_;
};

TEST_F(KeysTest, KeysArePressedInTheDialogAndKept) {
  ASSERT_FALSE(display_.Name().empty());
  Process program({SystemFolder() + "/quillmarch"}, Environment());
  display_.WaitForWindow("quillmarch startup menu");
  display_.Do({"sleep", "0.2", "key", "alt+k"});
  const Geometry form = Find("KeyConfig");
  EXPECT_GT(form.width, 600);
  // A new function by the key 2, then what would work the controls of another dialog.
  display_.Do({"sleep", "0.2", "key", "--delay", "20", "a", "2", "Tab", "Escape", "Return", "Up", "Shift_R",
               "alt", "space", "1", "1", "bracketleft"});
  ClickDone();
  std::string expected(802, '\0');
  const auto give = [&expected](size_t key, char function) { expected[2 * key] = function; };
  const std::pair<size_t, char> kKept[] = {{31, 12}, {45, 13}, {32, 14}, {46, 15}, {33, 18}, {47, 19},
                                           {42, 16}, {49, 21}, {36, 22}, {50, 23}, {37, 24}, {51, 25},
                                           {38, 26}, {52, 28}, {44, 11}};
  for (const auto& [key, function] : kKept) give(key, function);
  give(30, 11);
  for (const size_t key : {15, 1, 28, 200, 54, 56, 57}) give(key, 12);
  give(26, 8);
  EXPECT_EQ(ReadBytes(DataPath(u"qlm_keycnf.dat")), expected);

  // What was written shows in the next dialog, which another window closes.
  display_.Do({"key", "space"});
  Find("KeyConfig");
  display_.Do({"sleep", "0.2", "key", "b"});
  const Process other({SystemFolder() + "/quillmarch"}, Environment());
  WaitUntilClosed("KeyConfig");
  EXPECT_EQ(ReadBytes(DataPath(u"qlm_keycnf.dat")), expected);
}

}  // namespace
}  // namespace qlm
