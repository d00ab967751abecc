// Charts that a player would sit before without knowing why: empty, silent, or without an end.
#include "chart/trouble.h"

#include "chart/loading.h"
#include "platform/sound_device.h"
#include "sound/slots.h"
#include "state/message.h"
#include "state/settings.h"
#include "tests/chart/chart_test.h"
#include "tools/media_files/wav.h"

namespace qlm {
namespace {

class TroubleTest : public ChartTest {
 protected:
  TroubleTest() {
    platform::OpenSoundDevice(platform::SoundOutput::kOffline);
    WAVLoadmode = 0;
    WriteData(u"song\\there.wav", media::WavBytes({1, 2, 3}, 1, 22050));
  }
  ~TroubleTest() override {
    ReleaseAllSounds();
    platform::CloseSoundDevice();
  }
  TextView Trouble(const std::vector<Text>& lines) const {
    EXPECT_EQ(BMSLoad(WriteChart(lines)), 1);
    return TroubleOfChart();
  }

  static constexpr TextView kEmpty = u"This chart is empty, since no note and no sound was read";
  static constexpr TextView kSilent = u"This chart is silent, since none of its sounds was loaded";
  static constexpr TextView kEndless = u"This chart never ends, since its tempo is 0";
};

TEST_F(TroubleTest, OneWithoutObjectsIsEmpty) {
  EXPECT_EQ(Trouble({u"#TITLE a", u"#BPM 120"}), kEmpty);
  // Pictures and tempos are no play.
  EXPECT_EQ(Trouble({u"#BPM 120", u"#00103:80", u"#00104:01"}), kEmpty);
}

TEST_F(TroubleTest, OneWithLineFeedsOnlyIsEmpty) {
  EXPECT_EQ(BMSLoad(WriteText(u"song\\lf.bms", u"#BPM 120\n#WAV01 there.wav\n#00111:01\n")), 1);
  EXPECT_EQ(TroubleOfChart(), kEmpty);
}

TEST_F(TroubleTest, OneWithoutAnyOfItsSoundsIsSilent) {
  EXPECT_EQ(Trouble({u"#BPM 120", u"#WAV01 gone.wav", u"#WAV02 lost.wav", u"#00111:0102"}), kSilent);
  EXPECT_EQ(Trouble({u"#BPM 120", u"#WAV01 gone.wav", u"#WAV02 there.wav", u"#00111:0102"}), u"");
}

TEST_F(TroubleTest, OneThatNamesNoSoundIsNotCalledSilent) {
  EXPECT_EQ(Trouble({u"#BPM 120", u"#00111:01"}), u"");
}

TEST_F(TroubleTest, SoundsThatAreNotLoadedNowAreNotMissed) {
  const std::vector<Text> lines = {u"#BPM 120", u"#WAV01 gone.wav", u"#00111:01"};
  WAVLoadmode = 1;
  EXPECT_EQ(Trouble(lines), u"");
  WAVLoadmode = 0;
  NoWAV = true;
  EXPECT_EQ(Trouble(lines), u"");
}

TEST_F(TroubleTest, OneWhoseTempoIsNothingNeverEnds) {
  EXPECT_EQ(Trouble({u"#BPM 0", u"#00111:01"}), kEndless);
  // From measure 1 on position stands still, with the note of measure 2 ahead.
  EXPECT_EQ(Trouble({u"#BPM 120", u"#BPM01 0", u"#00108:01", u"#00211:01"}), kEndless);
  EXPECT_EQ(Trouble({u"#BPM 120", u"#BPM01 60", u"#00108:01", u"#00211:01"}), u"");
}

TEST_F(TroubleTest, ANoteOfTheMachinesLanesIsHeardToo) {
  EXPECT_EQ(Trouble({u"#BPM 120", u"#00101:01"}), u"");
  EXPECT_EQ(Trouble({u"#BPM 120", u"#00131:01"}), u"");
}

TEST_F(TroubleTest, ItIsToldInLinesThatFitIntoThePictureAndAtTheTerminal) {
  const Text path = WriteChart({u"#BPM 0", u"#00111:01"});
  BMSLoad(path);
  testing::internal::CaptureStderr();
  TellTrouble(path);
  EXPECT_EQ(chartTrouble, (std::vector<Text>{u"This chart never ends, since",
                                             u"its tempo is 0; qlmprobe check", u"chart.bms says why"}));
  EXPECT_EQ(testing::internal::GetCapturedStderr(),
            "quillmarch: This chart never ends, since its tempo is 0; '" QLM_BINARY_DIR "/qlmprobe' check '" +
                SystemFolder() + "/song/chart.bms' says why\n");
}

// The letters of the screen are ASCII, and a line has 30 of them.
TEST_F(TroubleTest, ANameThatTheScreenCannotShowIsLeftOut) {
  for (const TextView name : {u"song\\羽.bms", u"song\\a name with more letters than 30.bms"}) {
    const Text path = WriteChart({u"#BPM 0", u"#00111:01"}, name);
    BMSLoad(path);
    testing::internal::CaptureStderr();
    TellTrouble(path);
    EXPECT_EQ(chartTrouble.back(), u"CHART says why");
    EXPECT_NE(testing::internal::GetCapturedStderr().find(Utf8(name.substr(5))), std::string::npos);
  }
}

TEST_F(TroubleTest, NothingIsSaidOfAChartWithoutTroubleNorInTheLog) {
  const Text path = WriteChart({u"#BPM 120", u"#00111:01"});
  BMSLoad(path);
  const size_t lines = log.size();
  TellTrouble(path);
  EXPECT_TRUE(chartTrouble.empty());
  BMSLoad(WriteChart({u"#BPM 0", u"#00111:01"}));
  const size_t more = log.size();
  testing::internal::CaptureStderr();
  TellTrouble(path);
  testing::internal::GetCapturedStderr();
  EXPECT_FALSE(chartTrouble.empty());
  EXPECT_EQ(log.size(), more);
  EXPECT_GE(more, lines);
}

}  // namespace
}  // namespace qlm
