// Plays of charts that the wide reading made, from the text to the judgement.
#include "chart/loading.h"
#include "play/judgement.h"
#include "state/gauge.h"
#include "state/judgement.h"
#include "state/keys.h"
#include "state/options.h"
#include "state/session.h"
#include "state/settings.h"
#include "state/timeline.h"
#include "tests/play/play_test.h"

namespace qlm {
namespace {

// At 1250 BPM a position unit is a millisecond.
class WidePlayTest : public PlayTest {
 protected:
  WidePlayTest() {
    WideCharts = true;
    WAVLoadmode = 0;
    for (const TextView name : {u"a.wav", u"b.wav"}) WriteData(Join(u"song\\", name), WavBytes(20));
  }

  void Load(TextView lines) {
    ASSERT_EQ(
        BMSLoad(WriteText(u"song\\a.bms",
                          Join(u"#BPM 1250\n#WAV0Y a.wav\n#WAV0Z b.wav\n#STOP0Z 100\n#LNOBJ ZZ\n", lines))),
        1);
    Begin();
  }
  // "channel@clock" of each judgement.
  std::string Judged() const {
    std::string judged;
    for (const Transcript::Judgement& each : played.judgements) {
      judged += std::to_string(each.channel) + "@" + std::to_string(each.clock) + " ";
    }
    return judged;
  }
};

TEST_F(WidePlayTest, AStopHoldsTheNotesBehindItUpAndNotThoseAtIt) {
  DEMOMode = true;
  Load(u"#00109:000Z\n#00111:0Y0Y\n#00112:0000000Z\n");
  for (uint32_t ms = 0; ms < 700; ++ms) Turn(ms);
  // 192 and 288 before the stop, which lasts from 288 to 388; 336 behind it.
  EXPECT_EQ(Starts(), "34@192 34@288 35@436");
  EXPECT_EQ(Judged(), "11@192 11@288 12@436 ");
}

TEST_F(WidePlayTest, ATempoAtAStopHoldsInIt) {
  DEMOMode = true;
  // Half the tempo from 192 on: the 100 units of the stop and the 96 behind it last twice as long.
  Load(u"#BPM01 625\n#00108:01\n#00109:0Z\n#00111:000Y\n");
  for (uint32_t ms = 0; ms < 700; ++ms) Turn(ms);
  EXPECT_EQ(Judged(), "11@584 ");  // 192 + 2 * 196
}

TEST_F(WidePlayTest, ATempoHoldsFromItsOwnPlaceHoweverLateTheTurnIs) {
  DEMOMode = true;
  // Ten times the tempo from 192 to 288, which takes 9.6 ms and is over before the turn at 250.
  Load(u"#BPM01 12500\n#BPM02 1250\n#00108:0102\n#00111:000Y\n#00211:0Y\n");
  for (uint32_t ms = 0; ms < 700; ms += 50) Turn(ms);
  EXPECT_EQ(Judged(), "11@250 11@300 ");  // 201.6 and 297.6
}

TEST_F(WidePlayTest, NothingRunsAheadOfATempoThatALateTurnComesTo) {
  // At 250 ms, 336.4: the lane turns to its second sound at 576.
  Load(u"#BPM01 12500\n#BPM02 1250\n#00108:0102\n#00211:0Y\n#00411:0Z\n");
  for (uint32_t ms = 0; ms <= 250; ms += 50) Turn(ms);
  EXPECT_EQ(LaneSound[0], 34);
  EXPECT_NEAR(playPos, 336.4, 0.001);
}

TEST_F(WidePlayTest, BehindATempoOf0ThePositionGoesOnFromWhereItStood) {
  Load(u"#BPM 0\n#BPM01 1250\n#00008:01\n#00111:0Y\n");
  Turn(100);
  EXPECT_EQ(playPos, 0);
  Turn(150);
  EXPECT_EQ(playPos, 50);
}

TEST_F(WidePlayTest, ManyTempiAddUpToNoDrift) {
  DEMOMode = true;
  Text cells;
  for (int32_t i = 0; i < 48; ++i) cells += u"0102";
  // Each of them holds for 2 units: 2 ms, and 2.499 ms at 0.8004 units a millisecond.
  Load(Join(u"#BPM01 1250\n#BPM02 1000.5\n#00108:", cells, u"\n#00211:0Y\n"));
  for (uint32_t ms = 0; ms < 700; ++ms) Turn(ms);
  EXPECT_EQ(Judged(), "11@408 ");  // 192 + 48 * 4.49875
}

TEST_F(WidePlayTest, ALongNoteIsJudgedAndHeardAtItsHeadAlone) {
  DEMOMode = true;
  Load(u"#00151:0Y000Y00\n#00112:0Z00ZZ00\n");
  for (uint32_t ms = 0; ms < 500; ++ms) Turn(ms);
  EXPECT_EQ(TotalNotes[0], 2);
  std::vector<Transcript::Start> starts = played.starts;
  EXPECT_EQ(starts.size(), 2U);
  for (const Transcript::Start& start : starts) EXPECT_EQ(start.clock, 192);
  EXPECT_EQ(played.judgements.size(), 2U);
}

TEST_F(WidePlayTest, LettingGoOfALongNoteEarlyCostsNothing) {
  Load(u"#00151:0Y00000000000Y\n");
  for (uint32_t ms = 0; ms <= 192; ++ms) Turn(ms);
  float used = 0;
  LaneNote.fill(-1);
  for (int32_t i = 0; i < objCount; ++i) {
    if (objs[static_cast<size_t>(i)].channel == 11) LaneNote[0] = i;
  }
  ASSERT_TRUE(JudgeNote(LaneNote[0], 0, false, used));
  LaneNote[0] = -1;
  LaneDown[0] = true;
  Turn(200);
  LaneDown[0] = false;
  for (uint32_t ms = 201; ms < 600; ++ms) {
    Turn(ms);
    JudgeScrolledPast();
  }
  EXPECT_EQ(JudgeCount[0][0], 1);  // PERFECT
  EXPECT_EQ(Combo[0], 1);
  EXPECT_EQ(played.judgements.size(), 1U);
}

TEST_F(WidePlayTest, MinesDoNothing) {
  DEMOMode = true;
  Load(u"#001D1:ZZ\n#00111:000Y\n");
  for (uint32_t ms = 0; ms < 500; ++ms) Turn(ms);
  EXPECT_EQ(Judged(), "11@288 ");
  EXPECT_EQ(Starts(), "34@288");
  EXPECT_EQ(Combo[0], 1);
}

TEST_F(WidePlayTest, ATurnOfAWideChartMovesTheLaneSoundBeyondFf) {
  Load(u"#00131:0Z\n");
  for (uint32_t ms = 0; ms <= 192; ++ms) Turn(ms);
  EXPECT_EQ(LaneSound[0], 35);
}

}  // namespace
}  // namespace qlm
