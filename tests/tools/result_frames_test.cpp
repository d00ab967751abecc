// The results of a play and the entry of a name under the stock skin and with the stock pictures, against
// stored frames.
#include <cmath>
#include <cstring>
#include <functional>
#include <memory>
#include <string>

#include "base/hooks.h"
#include "base/log.h"
#include "base/paths.h"
#include "graphics/display.h"
#include "graphics/skin.h"
#include "platform/clock.h"
#include "platform/files.h"
#include "platform/picture.h"
#include "play_screen/gauge_graph.h"
#include "screens/name_entry.h"
#include "screens/results.h"
#include "screens/stills.h"
#include "state/chart.h"
#include "state/gauge.h"
#include "state/judgement.h"
#include "state/keys.h"
#include "state/scores.h"
#include "state/session.h"
#include "state/settings.h"
#include "state/skin.h"
#include "state/surfaces.h"
#include "state/timeline.h"
#include "tests/support/game_test.h"
#include "tests/tools/golden_frames.h"

namespace qlm {
namespace {

constexpr uint32_t kStart = 6'400'000;  // at which the moving ground begins anew
constexpr int32_t kFade = 210;          // ms of the fade before the results

std::function<void()> afterFrame;

int32_t TimeOfResults() { return platform::Elapsed(platform::Now(), kStart) - kFade; }

class ResultFramesTest : public GameTest {
 protected:
  ResultFramesTest() {
    logOutput.file = false;
    AppPath = platform::InnerPath(QLM_BINARY_DIR);
    InitDD(DisplayOutput::kUnseen);
    CreateSurfaces();
    NOVSync = true;
    loadSkin(DataPath(u"default.brd"), false);
    LoadSS();
    LayGround();
    PlayEnd = true;
    hooks.framePresented = [] {
      if (afterFrame) afterFrame();
    };
    platform::UseVirtualClock(kStart);
    platform::SetFrameClock([](uint32_t now) { return now + 10; });
    afterFrame = {};
  }
  ~ResultFramesTest() override {
    afterFrame = {};
    platform::SetFrameClock(nullptr);
    ReleaseDD();
  }

  // A tile of the test's own, so that the frames do not hang on that of the song select.
  static void LayGround() {
    SSBack = std::make_shared<Surface>(160, 120);
    SSBack->Fill(SSBack->Bounds(), 0x131A2E);
    SSBack->Fill({8, 8, 152, 112}, 0x161E36);
  }

  // 300 notes, of which one in ten was missed; the gauge rises to `gauge`.
  static void LayPlay(float gauge) {
    PlayCleared = true;
    Gauge = {gauge, 22};
    TotalNotes = {300, 0};
    JudgeCount[0] = {200, 50, 15, 5, 30};
    Score[0] = 150'000.5;
    JPts[0] = 3210;
    JPtsMax = {5400, 0};
    MaxCombo[0] = 123;
    PaintGraph();
    for (int32_t slot = 1; slot < 300; ++slot) {
      const double share = slot / 300.0;
      DrawGaugeSample(slot, static_cast<uint8_t>(22 + (gauge - 22) * share));
      DrawJudgedNote(slot, slot % 100, slot % 10 == 0 ? kPoor : slot % 4 == 0 ? kGreat : kPerfect);
    }
  }

  void Keep(const std::string& name) const {
    const std::string file = SystemFolder() + "/" + name + ".png";
    ASSERT_TRUE(platform::SavePng(*DDBack, file));
    CompareWithGoldenFrame(name, file);
  }

  // The results, with the frame at `ms` compared.
  void ExpectResults(const std::string& name, int32_t ms) const {
    bool seen = false;
    afterFrame = [&] {
      if (GameState != kStateResults || TimeOfResults() != ms) return;
      seen = true;
      Keep(name);
      LaneDown[0] = true;
    };
    ShowResults();
    EXPECT_TRUE(seen);
  }
};

TEST_F(ResultFramesTest, TheSheetUnrolls) {
  LayPlay(90);
  DDBack->Fill(kScreen, 0x3A4566);
  ExpectResults("results-opening", 100);
}

TEST_F(ResultFramesTest, TheGraphIsWrittenWhileTheFiguresCount) {
  LayPlay(90);
  ExpectResults("results-counting", 800);
}

TEST_F(ResultFramesTest, AClear) {
  LayPlay(90);
  ExpectResults("results-cleared", 2000);
}

TEST_F(ResultFramesTest, AFailure) {
  LayPlay(40);
  ExpectResults("results-failed", 2500);
}

TEST_F(ResultFramesTest, ACourse) {
  LayPlay(100);
  CourseMode = true;
  CourseSong = 3;
  Score[0] = 450;  // a course counts a note as 2
  for (int32_t song = 0; song < 3; ++song) CourseExPts[song] = static_cast<int16_t>(110 * (song + 1));
  ExpectResults("results-course", 2000);
}

TEST_F(ResultFramesTest, TheLedger) {
  // On the stock ground, since the manual shows this frame.
  LoadSS();
  LayPlay(90);
  constexpr const char* kNames[] = {"Anna    ", "QuIl :- ", "ink     ", "B.      "};
  for (int32_t row = 0; row < 4; ++row) {
    ScoreEntry& entry = scores.ScoreTable[row];
    std::memcpy(entry.name.data(), kNames[row], 8);
    entry.score = 190'000.0F - 20'000.0F * static_cast<float>(row);
    entry.jpts = 4321.0F - 1500.0F * static_cast<float>(row);
    entry.hiSpeed = row == 1 ? -1.0F : 1.5F;
    entry.realHiSpeed = 1;
    entry.maxCombo = static_cast<int16_t>(250 - 70 * row);
    entry.classIndex = static_cast<uint8_t>(2 * row);
  }
  scores.PlayerName = u"Nib";
  bool seen = false;
  afterFrame = [&] {
    if (GameState != kStateEnterName || platform::Now() % 1000 != 700) return;
    if (!seen) Keep("name-entry");
    seen = true;
    ProcessKey_EnterName(13);
  };
  EXPECT_EQ(AddScoreDat(), 3) << "150000.5 is above the 150000 of the third row";
  EXPECT_TRUE(seen);
}

}  // namespace
}  // namespace qlm
