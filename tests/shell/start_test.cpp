// What the boot screen shows while the program starts, in a process of its own.
#include <cstdio>
#include <cstdlib>

#include "base/hooks.h"
#include "base/log.h"
#include "platform/font.h"
#include "shell/boot.h"
#include "shell/version.h"
#include "state/surfaces.h"
#include "tests/support/game_test.h"

namespace qlm {
namespace {

constexpr int32_t kTop = 6;
constexpr int32_t kLineHeight = 12;

// Whether something is written on that line of the boot screen; its ground has one colour in each row.
bool Written(int32_t line) {
  for (int32_t y = kTop + line * kLineHeight; y < kTop + (line + 1) * kLineHeight; ++y) {
    for (int32_t x = 0; x < 639; ++x) {
      if (DDBack->Pixel(x, y) != DDBack->Pixel(639, y)) return true;
    }
  }
  return false;
}

// On standard error: the log's last line, the boot list, and the lines of the screen that hold something.
void TellFrame() {
  std::fprintf(stderr, "%s =", Utf8(Trim(logOutput.lines->back())).c_str());
  for (const BootLine& line : bootLines) std::fprintf(stderr, " <%s>", Utf8(line.text).c_str());
  std::fputs(" seen:", stderr);
  for (int32_t line = 0; line < 39; ++line) {
    if (Written(line)) std::fprintf(stderr, " %d", line);
  }
  std::fputs("\n", stderr);
}

void StartWithoutADisplay() {
  setenv("SDL_VIDEODRIVER", "dummy", 1);
  setenv("SDL_AUDIODRIVER", "dummy", 1);
  hooks.framePresented = TellFrame;
  Start({});
}

using StartTest = GameTest;

TEST_F(StartTest, TheBootScreenShowsItsThreePrintsBehindEachStepOfTheLog) {
  if (platform::FontTextWidth(u"A", 12) == 0) GTEST_SKIP() << "no font is installed";
  // A jukebox, so that nothing is searched.
  WriteData(u"_qlmfiles\\jukelist\\some.qbl", "");
  // Two empty lines, and the banner on the third.
  const std::string list = " = <> <> <quillmarch " + std::to_string(ProgramVersion().revision) +
                           R"( booting\.\.\. > seen: 2)"
                           "\n";
  std::string expected = "^";
  for (const char* step : {R"(\[Start\] preparing\.\.\.)", "Updating list contents", "Done",
                           R"(Opening MixerHandle\.\.\.)", R"(Loading ConvDict\.\.\.)"}) {
    expected += step + list;
  }
  EXPECT_EXIT(StartWithoutADisplay(), testing::ExitedWithCode(0),
              expected + "quillmarch: no chart was named");
}

}  // namespace
}  // namespace qlm
