// Counts what the turns of a running play allocate: nothing, as long as they log and post nothing.
#include <memory>

#include "base/hooks.h"
#include "chart/loading.h"
#include "graphics/display.h"
#include "input/input.h"
#include "net/session.h"
#include "platform/clock.h"
#include "platform/timers.h"
#include "play/input.h"
#include "play/judgement.h"
#include "play/position.h"
#include "play/reset.h"
#include "play/turn.h"
#include "state/gauge.h"
#include "state/judgement.h"
#include "state/keys.h"
#include "state/network.h"
#include "state/options.h"
#include "state/records.h"
#include "state/session.h"
#include "state/settings.h"
#include "state/skin.h"
#include "state/surfaces.h"
#include "state/timeline.h"
#include "tests/play/play_test.h"
#include "tests/support/allocations.h"
#include "tests/support/virtual_keyboard.h"
#include "tests/support/virtual_stick.h"

namespace qlm {
namespace {

class AllocationTest : public PlayTest {
 protected:
  AllocationTest() {
    transcript = nullptr;
    numObjs = 65535;
    WAVLoadmode = 0;
    DEMOMode = true;
    GameState = kStatePlay;
    for (const TextView name : {u"a.wav", u"b.wav"}) WriteData(Join(u"song\\", name), WavBytes(50));
    // Sixteen measures with notes and sounds on every 48th, and no tempo change.
    Text lines = u"\r\n#BPM 150\r\n#WAV01 a.wav\r\n#WAV02 b.wav\r\n";
    for (int32_t measure = 0; measure < 16; ++measure) {
      for (const TextView channel : {u"01", u"11", u"14", u"16"}) {
        lines += Join(u"#", Padded(measure, 3), channel, u":", Text(96, u'0'), u"\r\n");
        for (size_t cell = 0; cell < 48; ++cell) {
          lines[lines.size() - 2 - 96 + cell * 2 + 1] = cell % 2 == 0 ? u'1' : u'2';
        }
      }
    }
    EXPECT_EQ(BMSLoad(WriteText(u"song\\a.bms", lines)), 1);
    ResetPlay();
    platform::SetFrameClock([](uint32_t now) { return now + 5; });
    PlayAlive = true;
    SeekChart(0, false);
    SeekChart(0, true);
  }

  // What `turns` turns of 5 ms allocate once a few have run.
  static size_t AllocatedIn(int32_t turns) {
    for (int32_t turn = 0; turn < 10; ++turn) PlayStep();
    const size_t before = Allocations();
    for (int32_t turn = 0; turn < turns; ++turn) {
      PlayStep();
      if (PreviewActive) SetNow(platform::Now() + 5);  // without frames nothing else moves the clock
    }
    return Allocations() - before;
  }
};

TEST_F(AllocationTest, CounterCounts) {
  const size_t before = Allocations();
  const auto number = std::make_unique<int>(7);
  EXPECT_EQ(*number, 7);
  EXPECT_GT(Allocations(), before);
}

TEST_F(AllocationTest, TurnsWithSoundsAndFramesAllocateNothing) {
  EXPECT_EQ(AllocatedIn(1000), 0U);
  EXPECT_GT(objCursor, 200);
  EXPECT_LT(objCursor, objCount);
}

// A skin with lanes, figures, a title and a word on every sheet's first pixels.
TEST_F(AllocationTest, TurnsThatDrawASkinAllocateNothing) {
  const auto lay = [](uint8_t file) {
    SkinFile[file] = std::make_shared<Surface>(64, 64);
    SkinFile[file]->SetColourKey(1, 1);
    SkinClip& clip = Clip[file];
    clip.file = file;
    clip.frames = 2;
    clip.stepX = 32;
    clip.rect = {0, 0, 32, 16};
    clip.width = 32;
    clip.height = 16;
    clip.speed = 30;
    clip.animMode = kClipByClock;
    ClipList.entries[static_cast<size_t>(++ClipList.last)] = file;
  };
  for (const uint8_t file : {1, 2, 3}) lay(file);
  Number[1] = {.file = 2, .width = 4, .height = 8};
  Number[1].rects.fill({0, 0, 4, 8});
  SysFont.Fill({0, 0, 8, 16});
  SysFontW = 8;
  TitleChars = 20;
  NoteSkin.Fill({.clip = 2, .x = 100, .beamClip = 3});
  for (SkinPos* pos : {&BpmPos, &PlayPos1, &FpsPos, &CountPos, &ScorePos[0], &MaxPos[0]})
    *pos = {1, 9, 9, 5, 0};
  JudgePos[0].fill({2, 200, 200, 0, 0});
  GaugePos[0] = {2, 300, 300, 1, 0};
  LastJudge[0] = 4;
  EXPECT_EQ(AllocatedIn(1000), 0U);
  EXPECT_GT(Fps, 1.0);
}

// Five players, of whom nothing is heard; the poll runs with the pump.
TEST_F(AllocationTest, TurnsOfABattleWithoutNewsAllocateNothing) {
  InitDD(DisplayOutput::kUnseen);
  CreateSurfaces();
  network.NetActive = true;
  network.NetUserCount = 5;
  for (NetUser& user : network.NetUsers) user.name = u"Someone";
  HistoryStep = 1'000'000;  // no sample is due
  static int polls;
  polls = 0;
  platform::SetTimer(platform::kTimerNetwork, 50, [] {
    ++polls;
    NetPoll();
  });
  EXPECT_EQ(AllocatedIn(1000), 0U);
  EXPECT_GT(polls, 50);
}

TEST_F(AllocationTest, TurnsOfAPreviewAllocateNothing) {
  PreviewActive = true;
  PlayKeySound = true;
  EXPECT_EQ(AllocatedIn(1000), 0U);
}

TEST_F(AllocationTest, JudgementsOfEveryGradeAllocateNothing) {
  InitDD(DisplayOutput::kUnseen);
  CreateSurfaces();
  JudgeWindow = {3, 6, 18, 24};
  TotalNotes = {100, 0};
  JudgeCount = {};
  ComboHiSpeed = true;
  ChartObj& note = objs[0];
  note.channel = 11;
  note.pos = 1000;
  const size_t before = Allocations();
  for (int32_t round = 0; round < 30; ++round) {
    for (const double late : {0, 4, 10, 20, 30, -30}) {
      Combo[0] = 99;  // a figure rises, or is written on the graph
      ChordDelta = {100, 0};
      playPos = 1000 + late;
      float used = 0;
      JudgeNote(0, 0, false, used);
    }
    LaneNote[0] = 0;
    playPos = 1048;
    JudgeScrolledPast();
  }
  EXPECT_EQ(Allocations() - before, 0U);
  EXPECT_EQ(JudgeCount[0], (std::array<int32_t, 5>{30, 30, 30, 30, 90}));
}

// A key and a controller's button, each pressed in every other turn.
TEST_F(AllocationTest, HandsAtKeysAndControllersAllocateNothing) {
  DEMOMode = false;
  UserPlay = true;
  JudgeWindow = {3, 6, 18, 24};
  KeyMap[44] = 11;
  for (const int32_t button : {260, 300}) KeyMap[button] = 14;
  hooks.keyDown = ProcessKey_Play;
  hooks.keyUp = [](int32_t key) { ReleaseLane(LaneChannel(key)); };
  InitDI_Joystick();
  const VirtualStick other;
  VirtualStick stick;
  static VirtualStick* pressed;
  static bool down;
  pressed = &stick;
  down = false;
  hooks.pumped = [] {
    down = !down;
    DispatchKey(44, down);
    pressed->Button(0, down);
  };
  EXPECT_EQ(AllocatedIn(1000), 0U);
  hooks.pumped = nullptr;
  pressed = nullptr;
  EXPECT_EQ(JoyCount, 2);
  EXPECT_GT(JudgeCount[0][3], 100) << "pressed that often, most notes are struck early";
  ReleaseDI();
}

// A key that goes down or up while the frame of each turn waits.
TEST_F(AllocationTest, KeysServedWhileTheFrameWaitsAllocateNothing) {
  const VirtualKeyboard keyboard;
  constexpr int32_t kUsage = 29;  // the key Z
  DEMOMode = false;
  UserPlay = KeysAtOnce = true;
  JudgeWindow = {3, 6, 18, 24};
  KeyMap[44] = 11;
  hooks.keyDown = ProcessKey_Play;
  hooks.keyUp = [](int32_t key) { ReleaseLane(LaneChannel(key)); };
  static bool down;
  static int32_t servedInTheWait;
  down = false;
  servedInTheWait = 0;
  hooks.pumped = [] {
    down = !down;
    VirtualKeyboard::Key(kUsage, down);
  };
  hooks.framePresented = [] { servedInTheWait += LaneDown[0] == down ? 1 : 0; };
  EXPECT_EQ(AllocatedIn(1000), 0U);
  hooks.pumped = hooks.framePresented = nullptr;
  EXPECT_EQ(servedInTheWait, 1010);
  EXPECT_GT(JudgeCount[0][3], 100) << "pressed that often, most notes are struck early";
}

TEST_F(AllocationTest, ARecordedPlayAllocatesNothing) {
  DEMOMode = false;
  UserPlay = UserRec = true;
  KeyMap[44] = 11;
  KeyHeld[kKey4] = true;
  ResetPlay();
  hooks.pumped = [] {
    for (int i = 0; i < 60; ++i) {
      ProcessKey_Play(44);
      ReleaseLane(11);
    }
  };
  EXPECT_EQ(AllocatedIn(1000), 0U);
  hooks.pumped = nullptr;
  EXPECT_EQ(RecCount, 1010 * 120) << "past the end of the record";
}

TEST_F(AllocationTest, AReplayAllocatesNothing) {
  DEMOMode = false;
  UserPlay = ShowRec = true;
  for (int32_t i = 0; i < 1000; ++i) PlayRecord.push_back({.pos = i / 2, .kind = i % 2 == 0 ? 11 : -11});
  RecCount = 1000;
  EXPECT_EQ(AllocatedIn(1000), 0U);
  EXPECT_GT(RecCursor, 100);
  EXPECT_GT(JudgeCount[0][0], 0) << "with the stored deviation of 0";
}

TEST_F(AllocationTest, ShufflesAllocateNothing) {
  ExRandom = true;
  HiSpeed = 2;
  EXPECT_EQ(AllocatedIn(200), 0U);
}

TEST_F(AllocationTest, FadesAllocateNothing) {
  FadeState = kFadeTiles;
  FadeStart = platform::Now();
  EXPECT_EQ(AllocatedIn(200), 0U);
  FadeState = kFadeFail;
  FadeStart = platform::Now();
  EXPECT_EQ(AllocatedIn(200), 0U);
}

}  // namespace
}  // namespace qlm
