// Recording and replaying of a play.
#include "play/records.h"

#include <cmath>
#include <limits>

#include "base/numbers.h"
#include "base/paths.h"
#include "files/record_file.h"
#include "platform/files.h"
#include "play/input.h"
#include "play/loop.h"
#include "play/reset.h"
#include "state/gauge.h"
#include "state/judgement.h"
#include "state/keys.h"
#include "state/message.h"
#include "state/options.h"
#include "state/records.h"
#include "state/scores.h"
#include "state/session.h"
#include "state/settings.h"
#include "state/timeline.h"
#include "tests/play/play_test.h"

namespace qlm {
namespace {

class RecordsTest : public PlayTest {
 protected:
  RecordsTest() {
    LaneNote.fill(-1);
    LaneSound.fill(-1);
    JudgeWindow = {3, 6, 18, 24};
    for (int32_t channel = 0; channel <= 99; ++channel) ChannelMap[channel] = channel;
    KeyMap[44] = 11;
    UserRec = true;
    GameState = kStatePlay;
    EmptyRecord();
    path_ = Join(AppPath, u"\\song\\a.qpd");
    MakeFolders(GetFolder(path_));
  }

  static RecEvent Recorded() {
    EXPECT_EQ(RecCount, 1);
    EXPECT_EQ(PlayRecord.size(), 1U);
    return PlayRecord.empty() ? RecEvent() : PlayRecord[0];
  }
  // A replay of these events, with the play at `pos`.
  static void ReplayAt(double pos, const std::vector<RecEvent>& events) {
    UserRec = false;
    ShowRec = true;
    PlayRecord = events;
    RecCount = static_cast<int32_t>(events.size());
    playPos = pos;
    ReplayEvents();
  }
  // The record in the test's file, with this row.
  void Store(const ScoreEntry& entry, const std::vector<RecEvent>& events = {}) const {
    ASSERT_TRUE(platform::WriteFile(
        path_, RecordBytes(BMSID, {}, entry, static_cast<int32_t>(events.size()), events)));
  }

  Text path_;
};

TEST_F(RecordsTest, APressIsKeptWithItsDeviationAndColourRedLow) {
  Lay(11, 100);
  LaneNote[0] = 0;
  JudgeWindow = {3, 6, 18, 24};
  playPos = 91.6;  // 8.4 early: GOOD, which is blue
  ProcessKey_Play(44);
  const RecEvent event = Recorded();
  EXPECT_EQ(event.pos, 92);
  EXPECT_EQ(event.kind, 11);
  EXPECT_FLOAT_EQ(event.delta, 8.4F);
  EXPECT_EQ(event.colour, 0xFF0000) << "red lies in the low byte, blue in the third";
}

TEST_F(RecordsTest, APressWithoutANoteIsGreyAndHasNoDeviation) {
  playPos = 2.5;
  ProcessKey_Play(44);
  EXPECT_EQ(Recorded(), (RecEvent{.pos = 2, .kind = 11, .delta = 0, .colour = 0x808080}));
}

TEST_F(RecordsTest, ColoursOfTheGrades) {
  const std::vector<std::pair<double, int32_t>> colours = {
      {0, 0x00FFFF}, {5, 0x00FF00}, {10, 0xFF0000}, {20, 0xFF00FF}, {30, 0x0000FF}};
  for (const auto& [late, colour] : colours) {
    EmptyRecord();
    objs.assign(1000, {});
    objCount = 0;
    Lay(11, 100);
    LaneNote[0] = 0;
    ChordDelta = {100, 100};
    playPos = 100 + late;
    ProcessKey_Play(44);
    EXPECT_EQ(Recorded().colour, colour) << late;
  }
}

TEST_F(RecordsTest, AReleaseIsTheNegatedChannel) {
  playPos = 7;
  ReleaseLane(28);
  EXPECT_EQ(Recorded(), (RecEvent{.pos = 7, .kind = -28}));
}

TEST_F(RecordsTest, SpeedsAreKeptInHundredths) {
  KeyHeld[kKey4] = true;
  HiSpeed = 1;
  playPos = -3;
  ProcessKey_Settings(kKey2);
  EXPECT_EQ(Recorded(), (RecEvent{.pos = -3, .kind = kRecHiSpeed, .delta = 125}));
  EmptyRecord();
  KeyHeld[kKey4] = false;
  KeyHeld[kKey3] = true;
  RealHiSpeed = 1;
  ProcessKey_Settings(kKey1);
  EXPECT_EQ(Recorded(), (RecEvent{.pos = -3, .kind = kRecRealHiSpeed, .delta = 95}));
}

TEST_F(RecordsTest, NothingIsKeptWhileNothingIsRecorded) {
  UserRec = false;
  ProcessKey_Play(44);
  ReleaseLane(11);
  AddRecEvent(kRecEnd, 0, 0);
  EXPECT_EQ(RecCount, 0);
  EXPECT_TRUE(PlayRecord.empty());
}

TEST_F(RecordsTest, APlayWithoutAKeyIsItsEndAlone) {
  RunFrames(10);
  PlayLoop();
  const RecEvent event = Recorded();
  EXPECT_EQ(event.kind, kRecEnd);
  EXPECT_EQ(event.pos, Round(playPos));
  EXPECT_GT(event.pos, 200) << "behind the fade of 200 ms";
}

TEST_F(RecordsTest, TheHoldOfEscIsAnEndOfItsOwnWhileTheModeIsOn) {
  for (const bool recorded : {true, false}) {
    EmptyRecord();
    UserRec = recorded;
    EscHeld = false;
    SetNow(kStart);
    LayBars(10);
    RunFrames(10, [](int32_t ms) {
      if (ms == 1500) ProcessKey_Play(kKeyEsc);
    });
    PlayLoop();
    EXPECT_EQ(RecCount, recorded ? 2 : 0);
    for (const RecEvent& event : PlayRecord) EXPECT_EQ(event.kind, kRecEnd);
  }
}

TEST_F(RecordsTest, EventsPastTheRecordAreCountedAndLost) {
  playPos = 1;
  for (int32_t i = 0; i < 100'000; ++i) AddRecEvent(11, 0, 0);
  playPos = 2;
  AddRecEvent(-11, 0, 0);
  EXPECT_EQ(PlayRecord.size(), 100'001U);
  EXPECT_EQ(PlayRecord.back(), (RecEvent{.pos = 2, .kind = -11}));
  AddRecEvent(kRecEnd, 0, 0);
  EXPECT_EQ(PlayRecord.size(), 100'001U);
  EXPECT_EQ(RecCount, 100'002);
  SaveUserRec(path_);
  const std::string bytes = ReadBytes(path_);
  EXPECT_EQ(bytes.size(), 1443U + 18 * 100'002);
  EXPECT_EQ(bytes.substr(bytes.size() - 18), std::string(18, '\0'));
}

TEST_F(RecordsTest, ReplayedPressLightsItsLaneSoundsAndJudgesByTheRecordedDeviation) {
  Lay(11, 100, 7);
  FillSlot(7);
  LaneSound[0] = 7;
  LaneNote[0] = 0;
  playClock = 130;
  ReplayAt(101, {{.pos = 100, .kind = 11, .delta = 5}});
  EXPECT_TRUE(LaneDown[0]);
  EXPECT_EQ(LaneBeam[0], 1);
  EXPECT_EQ(Starts(), "7@130");
  ASSERT_EQ(played.judgements.size(), 1U);
  EXPECT_EQ(played.judgements[0].grade, kGreat);
  EXPECT_FLOAT_EQ(played.judgements[0].deltaUsed, 5);
  EXPECT_EQ(LaneNote[0], -1);
  EXPECT_EQ(RecCursor, 1);
}

TEST_F(RecordsTest, EventsComeOnceTheirPositionIsPassed) {
  const std::vector<RecEvent> events = {
      {.pos = 99, .kind = 11}, {.pos = 100, .kind = 12}, {.pos = 98, .kind = 13}};
  ReplayAt(100, events);
  EXPECT_EQ(RecCursor, 1);
  EXPECT_TRUE(LaneDown[0]);
  EXPECT_FALSE(LaneDown[1]);
  ReplayAt(100.5, events);
  EXPECT_EQ(RecCursor, 3) << "one that comes late does not hold up the others";
  EXPECT_TRUE(LaneDown[2]);
}

TEST_F(RecordsTest, ReplayedReleaseDarkensTheLane) {
  LaneDown[8] = true;
  LaneBeam[8] = 1;
  ReplayAt(5, {{.pos = 4, .kind = -19}});
  EXPECT_FALSE(LaneDown[8]);
  EXPECT_EQ(LaneBeam[8], 0);
}

TEST_F(RecordsTest, LanesFollowTheRandomKeymapOfThisRead) {
  ChannelMap[11] = 15;
  ReplayAt(5, {{.pos = 4, .kind = 11}});
  EXPECT_TRUE(LaneDown[4]);
  EXPECT_FALSE(LaneDown[0]);
  LaneDown[0] = true;
  ReplayAt(6, {{.pos = 4, .kind = 11}, {.pos = 5, .kind = -11}});
  EXPECT_FALSE(LaneDown[4]);
  EXPECT_TRUE(LaneDown[0]);
}

TEST_F(RecordsTest, ReplayedSpeeds) {
  HdrBPM = rawBPM = 120;
  ReplayAt(
      5, {{.pos = 4, .kind = kRecHiSpeed, .delta = 275}, {.pos = 4, .kind = kRecRealHiSpeed, .delta = 150}});
  EXPECT_FLOAT_EQ(HiSpeed, 2.75F);
  EXPECT_FLOAT_EQ(RealHiSpeed, 1.5F);
  EXPECT_FLOAT_EQ(curBPM, 180);
}

TEST_F(RecordsTest, TheEndEventEndsTheReplayAtOnce) {
  ReplayAt(5, {{.pos = 4, .kind = kRecEnd}});
  EXPECT_TRUE(PlayEnd);
  EXPECT_EQ(message.text, u"ESC Pressed");
  EXPECT_EQ(FadeState, kFadeNone);
}

TEST_F(RecordsTest, AFailedReplayJudgesNothingMore) {
  Lay(11, 100);
  LaneNote[0] = 0;
  PlayFailed = true;
  ReplayAt(101, {{.pos = 100, .kind = 11}});
  EXPECT_TRUE(LaneDown[0]);
  EXPECT_TRUE(played.judgements.empty());
  EXPECT_EQ(LaneNote[0], 0);
}

TEST_F(RecordsTest, KindsThatAreNoneAndWildNumbersDoNothing) {
  constexpr int32_t kLeast = std::numeric_limits<int32_t>::min();
  constexpr int32_t kMost = std::numeric_limits<int32_t>::max();
  ChannelMap[50] = kLeast;
  ChannelMap[51] = kMost;
  ChannelMap[52] = -11;
  LaneDown[0] = true;
  ReplayAt(5, {{.pos = kLeast, .kind = kLeast},
               {.kind = kMost},
               {.kind = 0},
               {.kind = 100},
               {.kind = -100},
               {.kind = 50},
               {.kind = -50},
               {.kind = 51},
               {.kind = -51},
               {.kind = 10},
               {.kind = 30},
               {.kind = 1023},
               {.kind = -1024}});
  EXPECT_EQ(RecCursor, 13);
  for (size_t lane = 1; lane < LaneDown.size(); ++lane) EXPECT_FALSE(LaneDown[lane]) << lane;
  EXPECT_TRUE(LaneDown[0]);
  ReplayAt(5, {{.kind = 0}});
  EXPECT_FALSE(PlayEnd);
}

TEST_F(RecordsTest, SavedRecordHoldsIdHeaderRowAndEvents) {
  BMSID = 4711;
  HdrTitle = u"March";
  Gauge[0] = 80;
  Score[0] = 1234;
  scores.PlayerName = u"Me";
  playPos = 12;
  AddRecEvent(kRecEnd, 0, 0);
  SaveUserRec(path_);
  EXPECT_TRUE(Logged(Join(u"SaveUserRec:", path_)));
  const std::string bytes = ReadBytes(path_);
  EXPECT_EQ(bytes.substr(6, 5), "March");
  const RecordFile record = TakeRecord(bytes);
  EXPECT_EQ(record.bmsId, 4711);
  EXPECT_EQ(record.entry.clear, -1);
  EXPECT_FLOAT_EQ(record.entry.score, 1234);
  EXPECT_EQ(std::string(record.entry.name.data(), 8), "Me      ");
  EXPECT_EQ(record.events, (std::vector<RecEvent>{{.pos = 12, .kind = kRecEnd}}));
}

TEST_F(RecordsTest, NothingIsSavedWithoutAnEventOrAPath) {
  log.clear();
  SaveUserRec(path_);
  EXPECT_FALSE(FileExists(path_));
  AddRecEvent(kRecEnd, 0, 0);
  SaveUserRec(u"");
  EXPECT_TRUE(log.empty());
}

TEST_F(RecordsTest, AFileNameWithoutADotGetsBpd) {
  AddRecEvent(kRecEnd, 0, 0);
  SaveUserRec(Join(AppPath, u"\\song.dir\\chart"));
  EXPECT_TRUE(Logged(Join(u"SaveUserRec:", AppPath, u"\\song.dir\\chart.bpd")));
}

TEST_F(RecordsTest, ANewRecordTakesTheOldOnesPlace) {
  WriteData(u"song\\a.qpd", std::string(5000, 'x'));
  AddRecEvent(kRecEnd, 0, 0);
  SaveUserRec(path_);
  EXPECT_EQ(ReadBytes(path_).size(), 1443U + 18);
}

TEST_F(RecordsTest, LoadingBringsBackOptionsSpeedsAndTempo) {
  ScoreEntry entry;
  entry.options1 = 5;
  entry.options2 = 2;
  entry.options3 = 6;
  entry.hiSpeed = 2.5F;
  entry.realHiSpeed = 1.5F;
  Store(entry, {{.pos = 4, .kind = 11}, {.pos = 5, .kind = kRecEnd}});
  Sudden = Random = Accel = ComboHiSpeed = RandomHiSpeed = true;
  HdrBPM = 100;
  LoadUserRec(path_);
  EXPECT_TRUE(Hidden);
  EXPECT_FALSE(Sudden);
  EXPECT_TRUE(Stealth);
  EXPECT_FALSE(Random);
  EXPECT_TRUE(ExRandom);
  EXPECT_FALSE(Accel);
  EXPECT_TRUE(Quil);
  EXPECT_TRUE(Pressure);
  EXPECT_FALSE(ComboHiSpeed);
  EXPECT_FALSE(RandomHiSpeed);
  EXPECT_FLOAT_EQ(HiSpeed, 2.5F);
  EXPECT_FLOAT_EQ(RealHiSpeed, 1.5F);
  EXPECT_FLOAT_EQ(curBPM, 150);
  EXPECT_EQ(RecCount, 2);
  EXPECT_EQ(PlayRecord[0], (RecEvent{.pos = 4, .kind = 11}));
  EXPECT_TRUE(Logged(Join(u"LoadUserRec:", path_)));
  EXPECT_TRUE(Logged(u"rhsp: 1.5"));
  EXPECT_TRUE(Logged(u"TOTALTMPOBJS: 2"));
}

TEST_F(RecordsTest, TheStoredScrollFactorTellsItsModes) {
  ScoreEntry entry;
  entry.hiSpeed = -1;
  Store(entry);
  HiSpeed = 3;
  LoadUserRec(path_);
  EXPECT_TRUE(ComboHiSpeed);
  EXPECT_FLOAT_EQ(HiSpeed, 3);
  entry.hiSpeed = 0;
  Store(entry);
  LoadUserRec(path_);
  EXPECT_FALSE(ComboHiSpeed);
  EXPECT_TRUE(RandomHiSpeed);
  EXPECT_FLOAT_EQ(HiSpeed, 0);
}

TEST_F(RecordsTest, ARecordOfAnotherChartIsRefused) {
  ScoreEntry entry;
  entry.options1 = 7;
  Store(entry, {{.pos = 4, .kind = 11}});
  BMSID = 1;
  ShowRec = true;
  RecCount = 5;
  LoadUserRec(path_);
  EXPECT_TRUE(Logged(u"RECORD IS NOT COLLECT!"));
  EXPECT_EQ(message.text, u"Record File is not collect!");
  EXPECT_EQ(RecCount, 0);
  EXPECT_FALSE(Hidden);
  EXPECT_TRUE(ShowRec);
}

TEST_F(RecordsTest, WithoutAFileNothingChanges) {
  RecCount = 1;
  PlayRecord = {{.pos = 3, .kind = 11}};
  for (const Text& path : {Text(), Join(AppPath, u"\\none.qpd"), AppPath}) {
    LoadUserRec(path);
    EXPECT_TRUE(Logged(Join(u"LoadUserRec:", path)));
    EXPECT_EQ(RecCount, 1);
  }
}

TEST_F(RecordsTest, ABrokenFileIsNoMoreThanItHolds) {
  BMSID = 0;
  for (const size_t length : {0, 4, 1100, 1443, 1460}) {
    WriteData(u"song\\a.qpd", std::string(length, '\0'));
    LoadUserRec(path_);
    EXPECT_EQ(RecCount, 0) << length;
  }
  std::string bytes = RecordBytes(0, {}, {}, 1, std::vector<RecEvent>{{.pos = 1, .kind = 11}});
  bytes[1439] = bytes[1440] = bytes[1441] = '\xFF';
  WriteData(u"song\\a.qpd", bytes);
  LoadUserRec(path_);
  EXPECT_EQ(RecCount, 1);
}

// What the machine has, the replay finds again: the same notes at the same moments.
TEST_F(RecordsTest, ARecordedPlayReplaysWithTheSameJudgements) {
  UserPlay = true;
  TotalNotes = {4, 0};
  BMSID = 9;
  LayBars(1);
  for (const int32_t pos : {200, 300, 400, 500}) Lay(11, pos);
  Lay(ObjSeparator, 700);
  RunFrames(10, [](int32_t ms) {
    // Behind the second of the pre-roll 0, 4, -10 and 1 units off.
    for (const int32_t at : {1200, 1310, 1390, 1500}) {
      if (ms == at) ProcessKey_Play(44);
      if (ms == at + 20) ReleaseLane(11);
    }
  });
  ResetPlay();
  PlayLoop();
  const std::vector<Transcript::Judgement> before = played.judgements;
  ASSERT_EQ(before.size(), 4U);
  EXPECT_EQ(JudgeCount[0], (std::array<int32_t, 5>{2, 0, 2, 0, 0}));
  const int32_t recorded = RecCount;
  EXPECT_EQ(recorded, 9);
  SaveUserRec(path_);

  UserRec = false;
  ShowRec = true;
  played = {};
  RunFrames(10);
  LoadUserRec(path_);
  ResetPlay();
  PlayLoop();
  EXPECT_EQ(RecCount, recorded);
  ASSERT_EQ(played.judgements.size(), 4U);
  for (size_t i = 0; i < before.size(); ++i) {
    EXPECT_EQ(played.judgements[i].obj, before[i].obj) << i;
    EXPECT_EQ(played.judgements[i].grade, before[i].grade) << i;
    EXPECT_FLOAT_EQ(played.judgements[i].deltaUsed, before[i].deltaUsed) << i;
  }
  EXPECT_EQ(JudgeCount[0], (std::array<int32_t, 5>{2, 0, 2, 0, 0}));
}

}  // namespace
}  // namespace qlm
