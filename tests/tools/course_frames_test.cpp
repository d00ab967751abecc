// A course of two stock charts under the stock skin: what is seen where one song gives way to the next,
// against stored pictures.
#include <algorithm>

#include "base/hooks.h"
#include "base/log.h"
#include "base/paths.h"
#include "chart/loading.h"
#include "graphics/bga.h"
#include "graphics/display.h"
#include "graphics/fades.h"
#include "library/song_list.h"
#include "platform/clock.h"
#include "platform/files.h"
#include "platform/font.h"
#include "platform/picture.h"
#include "play/position.h"
#include "play/reset.h"
#include "play/turn.h"
#include "screens/loading_screen.h"
#include "sound/play.h"
#include "state/chart.h"
#include "state/courses.h"
#include "state/gauge.h"
#include "state/lists.h"
#include "state/options.h"
#include "state/session.h"
#include "state/settings.h"
#include "state/skin.h"
#include "state/surfaces.h"
#include "tests/support/game_test.h"
#include "tests/tools/golden_frames.h"

namespace qlm {
namespace {

constexpr uint32_t kTurnMs = 10;

platform::Surface* shown = nullptr;  // the last frame

class CourseFramesTest : public GameTest {
 protected:
  // The course, loaded and in play under the machine's hands, half a second before its second song.
  CourseFramesTest() {
    shown = &frame_;
    hooks.framePresented = [] { shown->Copy(0, 0, *DDBack, kScreen); };
    logOutput.file = false;
    AppPath = platform::InnerPath(QLM_BINARY_DIR);
    SkinMapPath[0] = DataPath(u"default.brd");
    InitDD(DisplayOutput::kUnseen);
    CreateSurfaces();
    InitDS(platform::SoundOutput::kOffline);
    NOVSync = true;
    HiSpeed = RealHiSpeed = 1;
    ShowBGA = UserPlay = DEMOMode = CourseEffect = HazardGauge = true;
    for (const TextView chart : {u"march5.bms", u"march7.bme"})
      AddSong(Join(AppPath, u"\\songs\\march\\", chart));
    CourseSongs = songList;
    numsongs = 2;
    CourseMode = true;
    CourseLoadMode = 2;
    GameState = kStatePlay;
  }
  ~CourseFramesTest() override {
    ReleaseDD();
    ReleaseDS();
  }

  void PlayUpToTheSecondSong() {
    BMSLoadCourse();
    CourseSong = 0;
    ResetPlay();
    MakeFadeTiles();
    PlayAlive = true;
    const auto change = std::ranges::find_if(
        objs, [](const ChartObj& obj) { return obj.channel == ObjSongChange && obj.value == 1; });
    ASSERT_NE(change, objs.end());
    SeekChart(change->pos - 96, true);
    while (CourseSong == 0) Turn();
  }
  void Turn() {
    now_ += kTurnMs;
    platform::UseVirtualClock(now_);
    PlayStep();
  }
  void TurnFor(uint32_t ms) {
    for (uint32_t passed = 0; passed < ms; passed += kTurnMs) Turn();
  }

  void Compare(const std::string& name) const {
    const std::string file = SystemFolder() + "/frame.png";
    ASSERT_TRUE(platform::SavePng(frame_, file));
    CompareWithGoldenFrame(name, file);
  }

  platform::Surface frame_{640, 480};
  uint32_t now_ = 1'000'000;
};

TEST_F(CourseFramesTest, TheNextSongsTitlePictureZoomsInAndBreaksUp) {
  PlayUpToTheSecondSong();
  ASSERT_EQ(FadeState, kFadeTitle);
  TurnFor(250);
  Compare("course-title");
  TurnFor(260);
  ASSERT_EQ(FadeState, kFadeTiles);
  TurnFor(350);
  Compare("course-tiles");
  TurnFor(400);
  EXPECT_EQ(FadeState, kFadeNone);
  Compare("course-second-song");
}

TEST_F(CourseFramesTest, TheLoadingScreenNamesTheSongThatIsRead) {
  if (platform::FontTextWidth(u"M", 16) == 0) GTEST_SKIP() << "no font is installed";
  BMSLoadCourse();
  CourseSong = 1;
  LoadStage(Join(AppPath, u"\\songs\\march\\stage.png"));
  ASSERT_NE(DDStage, nullptr);
  DDSnapshot->Copy(0, 0, *DDStage, kScreen);
  MakeFadeTiles();
  FadeStart = platform::Now() - 200;
  Loading();
  Compare("course-loading");
}

}  // namespace
}  // namespace qlm
