// A play without surfaces: no pixel is composed, and all that counts is the same.
#include "base/rnd.h"
#include "play/judgement.h"
#include "play/loop.h"
#include "play/reset.h"
#include "state/gauge.h"
#include "state/judgement.h"
#include "state/options.h"
#include "state/session.h"
#include "state/settings.h"
#include "state/skin.h"
#include "state/surfaces.h"
#include "state/timeline.h"
#include "tests/play/play_test.h"

namespace qlm {
namespace {

class ScreenlessTest : public PlayTest {
 protected:
  // A play on two lanes: the hand presses one of them at each note, a little late, and never the other; at
  // 1500 ms an attack strikes. Gives the transcript as text, with the figures at the end.
  std::string Play(bool surfaces) {
    played = {};
    if (!surfaces) {
      for (SurfacePtr* surface : {&DDBack, &DDSnapshot, &DDBga, &DDGraph, &DDPrimary}) surface->reset();
    }
    SetNow(kStart);
    SetRndList({0.1F, 0.6F, 0.3F, 0.9F});
    HiSpeed = RealHiSpeed = 1;
    HiSpeedTarget = 0;
    ExRandom = UserPlay = true;
    JudgeWindow = {3, 6, 18, 24};
    ChordDelta = {};
    JudgeY = 400;
    GaugeGain = {2, 2};
    ScorePerNote = {100, 100};
    TotalNotes = {60, 0};
    objCount = 0;
    for (int32_t note = 0; note < 60; ++note) Lay(note % 2 == 0 ? 11 : 16, 500 + note * 40, 1);
    Lay(ObjSeparator, 3000);
    RunFrames(10, [](int32_t ms) {
      if (ms == 1500) {
        AttackKind = kAttackTempoUp;
        AttackStart = kStart + 1500;
      }
      for (size_t lane = 0; lane < LaneNote.size(); ++lane) {
        const ChartObj* note = lane == 5 ? nullptr : FindObj(LaneNote[lane]);
        float used = 0;
        if (note == nullptr || playPos - note->pos < 4) continue;
        if (JudgeNote(LaneNote[lane], 0, false, used)) LaneNote[lane] = -1;
      }
    });
    ResetPlay();
    SeekChart0();
    PlayLoop();
    return Told();
  }

  static void SeekChart0() {
    playStart = kStart;
    objCursor = 0;
  }

  std::string Told() const {
    std::string text;
    for (const Transcript::Judgement& judgement : played.judgements) {
      text += std::to_string(judgement.turn) + ":" + std::to_string(judgement.obj) + "/" +
              std::to_string(judgement.channel) + "=" + std::to_string(judgement.grade) + "@" +
              std::to_string(judgement.playPos) + " ";
    }
    for (const Transcript::Tempo& tempo : played.tempi) text += std::to_string(tempo.posOffset) + " ";
    return text + std::to_string(Gauge[0]) + " " + std::to_string(GaugeShown[0]) + " " +
           std::to_string(Score[0]) + " " + std::to_string(JPts[0]) + " " + std::to_string(MaxCombo[0]) +
           " " + std::to_string(playClock) + " " + std::to_string(FramesShown()) +
           (PlayCleared ? " cleared" : "");
  }
};

TEST_F(ScreenlessTest, TranscriptIsTheSame) {
  const std::string with = Play(true);
  EXPECT_EQ(played.judgements.size(), 60U);
  EXPECT_GT(JudgeCount[0][4], 20);
  EXPECT_GT(JudgeCount[0][0] + JudgeCount[0][1] + JudgeCount[0][2], 20);
  EXPECT_EQ(Play(false), with);
  EXPECT_EQ(DDBack, nullptr);
}

TEST_F(ScreenlessTest, FadesGoOn) {
  Play(false);
  EXPECT_TRUE(PlayCleared);
  EXPECT_TRUE(PlayEnd);
  EXPECT_EQ(FadeState, kFadeNone);
}

}  // namespace
}  // namespace qlm
