// The key configuration in the real program: from the menu to keys that a play takes.
#include <map>
#include <sstream>

#include "base/paths.h"
#include "tests/run/installed_game.h"
#include "tests/support/process.h"
#include "tests/support/x_display.h"

namespace qlm {
namespace {

class KeysTest : public InstalledGameTest {
 protected:
  KeysTest() : display_("1024x768") {
    WriteText(u"_qlmfiles\\qlm_conf.ini", u"[quillmarch]\r\nMenuLanguage=en\r\n");
  }

  std::map<std::string, std::string> Environment() const {
    return {{"DISPLAY", display_.Name()},
            {"WAYLAND_DISPLAY", ""},
            {"SDL_VIDEODRIVER", ""},
            {"SDL_AUDIODRIVER", "dummy"}};
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
    const ProcessResult found = qlm::Run(
        {"xdotool", "search", "--onlyvisible", "--name", "^" + title + "$", "getwindowgeometry", "--shell"},
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
    for (int i = 0; i < 1500; ++i) {
      const ProcessResult found =
          qlm::Run({"xdotool", "search", "--onlyvisible", "--name", "^" + title + "$"}, Environment(), 20);
      if (found.exitStatus != 0) return;
      Rest(10);
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

  // What it holds for each key that does something, as in "44=11".
  std::string FileBytes() const {
    const std::string bytes = ReadBytes(DataPath(u"qlm_keycnf.dat"));
    std::string kept;
    for (size_t place = 0; place + 1 < bytes.size(); place += 2) {
      if (bytes[place] == 0 && bytes[place + 1] == 0) continue;
      kept += std::to_string(place / 2) + "=" + std::to_string(bytes[place] | bytes[place + 1] << 8) + " ";
    }
    return kept + "of " + std::to_string(bytes.size()) + " bytes";
  }

  XDisplay display_;
};

TEST_F(KeysTest, KeysArePressedInTheDialogAndKept) {
  ASSERT_FALSE(display_.Name().empty());
  Process program({Program()}, Environment());
  display_.WaitForFocus("quillmarch startup menu");
  display_.Do({"key", "alt+k"});
  display_.WaitForFocus("KeyConfig");
  const Geometry form = Find("KeyConfig");
  EXPECT_GT(form.width, 600);
  // A new function by the key 2, then what would work the controls of another dialog; 62 is the right Shift.
  display_.Do({"key", "--delay", "20", "a", "2", "Tab", "Escape", "Return", "Up", "62", "alt", "space", "1",
               "1", "bracketleft"});
  ClickDone();
  const std::string written = FileBytes();
  EXPECT_EQ(
      written,
      "1=12 15=12 26=8 28=12 30=11 31=12 32=14 33=18 36=22 37=24 38=26 42=16 44=11 45=13 46=15 47=19 49=21 "
      "50=23 51=25 52=28 54=12 56=12 57=12 200=12 of 802 bytes");

  // What was written shows in the next dialog, which another window closes.
  display_.WaitForFocus("quillmarch startup menu");
  display_.Do({"key", "alt+k"});
  display_.WaitForFocus("KeyConfig");
  display_.Do({"key", "b"});
  const Process other({Program()}, Environment());
  WaitUntilClosed("KeyConfig");
  EXPECT_EQ(FileBytes(), written);
}

}  // namespace
}  // namespace qlm
