// The probe's commands that play a chart: `play`, `frame` and `audio`.
#include "tests/tools/probe.h"

#include "base/cursor.h"
#include "platform/files.h"
#include "platform/picture.h"

namespace qlm {
namespace {

// Read with the chart, and when the play comes to it.
TEST_F(ProbeTest, SoundOfAnotherNameIsLoadedOnceForAPlay) {
  WriteWav("kick.mp3", {1, 2, 3});
  const std::string chart = Chart("a.bms", {"#WAV01 kick.wav", "#00111:01010101", "#00101:01010101"});
  EXPECT_TRUE(Holds(Probe({"chart", chart}).output, "\"01\": \"kick.mp3\""));
  for (const std::string mode : {"WAVLoadmode=0", "WAVLoadmode=1"}) {
    Probe({"play", chart, "--set", mode, "--log", At("log.txt")});
    const std::string log = ReadBytes(platform::InnerPath(At("log.txt")));
    const size_t first = log.find("CreateSndBuf:kick.mp3");
    EXPECT_NE(first, std::string::npos) << log;
    EXPECT_EQ(log.find("CreateSndBuf:kick.mp3", first + 1), std::string::npos) << log;
  }
}

TEST_F(ProbeTest, PlayHasItsKeysInOrder) {
  const ProcessResult result = Probe({"play", Chart("a.bms", kSmallChart)});
  EXPECT_EQ(result.exitStatus, 0) << result.errors;
  ExpectKeysInOrder(result.output, {"judgements", "counts", "combo", "maxCombo", "gauge", "score", "jpts",
                                    "jptsMax", "class", "exPts", "playFailed", "playCleared", "endClock",
                                    "starts", "bpmLog", "gaugeHistory", "posSamples"});
}

TEST_F(ProbeTest, PlayPrintsEachJudgement) {
  // 0.096 units a millisecond: each of the three notes falls on a turn.
  const std::string output =
      Probe(
          {"play", Chart("a.bms", {"#BPM 120", "#RANK 2", "#00011:0102", "#00112:00010000"}), "--fps", "10"})
          .output;
  EXPECT_TRUE(Holds(output,
                    "{\"turn\": 0, \"clock\": 0, \"playPos\": 0, \"obj\": 1, \"channel\": 11, \"pos\": 0, "
                    "\"delta_used\": 0, \"grade\": 4, \"tooEarly\": false, \"side\": 0}"))
      << output;
  EXPECT_TRUE(Holds(output, "\"counts\": [\n    [3, 0, 0, 0, 0],")) << output;
  EXPECT_TRUE(Holds(output, "\"class\": 0,"));
  EXPECT_TRUE(Holds(output, "\"exPts\": 6,"));
}

TEST_F(ProbeTest, NotesThatNobodyPressesAreMissed) {
  WriteData(u"none.txt", "");
  const std::string output =
      Probe({"play", Chart("a.bms", {"#BPM 120", "#00011:01", "#00211:01"}), "--events", At("none.txt")})
          .output;
  EXPECT_TRUE(Holds(output, "\"delta_used\": 48, \"grade\": 0, \"tooEarly\": false, \"side\": 0}")) << output;
  EXPECT_TRUE(Holds(output, "\"class\": 6,"));
}

TEST_F(ProbeTest, MachineStartsEachSoundInItsTurn) {
  // 120 beats a minute: a measure lasts 2000 ms, and the second half of the first begins at 1000 ms.
  const std::string chart = Chart("a.bms", {"#BPM 120", "#00011:0102", "#00001:03"});
  const std::string at60 = Probe({"play", chart}).output;
  EXPECT_TRUE(Holds(at60, "\"starts\": [\n    [0, "));
  EXPECT_TRUE(Holds(at60, "    [1000, 2]\n  ]"));
  // At 7 turns a second the first turn at or behind 1000 ms is number 7.
  EXPECT_TRUE(Holds(Probe({"play", chart, "--fps", "7"}).output, "    [1000, 2]\n  ]"));
  // At 3 turns a second turn 3 happens at 1000 ms, turn 2 at 666.
  EXPECT_TRUE(Holds(Probe({"play", chart, "--fps", "3"}).output, "    [1000, 2]\n  ]"));
}

TEST_F(ProbeTest, TurnsHappenAtWholeMillisecondsRoundedDown) {
  // Each 50th turn is told; 50 turns at 60 a second take 833.33 ms.
  const std::string output = Probe({"play", Chart("a.bms", {"#BPM 120", "#00211:01"})}).output;
  EXPECT_TRUE(Holds(output, "\"posSamples\": [\n    [0, 0],\n    [833, 79.968],\n    [1666, 159.936],\n"));
}

TEST_F(ProbeTest, TempoChangesAreTold) {
  // The tempo object lies at 192 units, which 120 beats a minute reach at 2000 ms.
  const std::string output = Probe({"play", Chart("a.bms", {"#BPM 120", "#00103:F0", "#00211:01"})}).output;
  EXPECT_TRUE(Holds(output, "\"bpmLog\": [\n    [2000, 240, -192]\n  ]"));
}

TEST_F(ProbeTest, PlayOfOneChartIsTheSameEveryTime) {
  const std::string chart = Chart("a.bms", {"#BPM 177.7", "#00011:01010001", "#00103:B2", "#00111:01"});
  const std::vector<std::string> play = {"play", chart, "--random", "--set", "RandomHiSpeed=True"};
  const std::string once = Probe(play).output;
  EXPECT_FALSE(once.empty());
  EXPECT_EQ(Probe(play).output, once);
}

TEST_F(ProbeTest, TurnsRunFromOneToAThousandASecond) {
  // The second note lies at 96 units, which 144 beats a minute reach at 833.33 ms.
  const std::string chart = Chart("a.bms", {"#BPM 144", "#00011:0102"});
  EXPECT_TRUE(Holds(Probe({"play", chart, "--fps", "1000"}).output, "    [834, 2]\n  ]"));
  EXPECT_TRUE(Holds(Probe({"play", chart, "--fps", "1"}).output, "    [1000, 2]\n  ]"));
}

TEST_F(ProbeTest, StandingChartIsStoppedByItsLimit) {
  const std::string chart = Chart("a.bms", {"#BPM 120", "#00011:0102"});
  const ProcessResult result = Probe({"play", chart, "--real-hispeed", "0", "--limit", "3000"});
  EXPECT_EQ(result.exitStatus, 0) << result.errors;
  EXPECT_TRUE(Holds(result.output, "\"playCleared\": false,"));
}

TEST_F(ProbeTest, EventsFileTakesTheMachinesHandsAway) {
  WriteData(u"none.txt", "");
  const std::string chart = Chart("a.bms", {"#BPM 120", "#00011:0102", "#00001:03"});
  const ProcessResult result = Probe({"play", chart, "--events", At("none.txt")});
  EXPECT_EQ(result.exitStatus, 0) << result.errors;
  EXPECT_TRUE(Holds(result.output, "\"starts\": [\n    [0, 3]\n  ]"));
  EXPECT_TRUE(Holds(Probe({"play", chart, "--events", At("none.txt"), "--set", "DEMOMode=True"}).output,
                    "[1000, 2]"));
}

TEST_F(ProbeTest, EscHeldEndsThePlay) {
  // Served in the turn at 100 ms, it has been held for more than 500 ms in the turn at 616 ms; the fade of
  // more than 200 ms is over in the turn at 833 ms.
  WriteData(u"esc.txt", "100 down 1\r\n\r\n2000 up 1\n");
  const ProcessResult result =
      Probe({"play", Chart("a.bms", {"#BPM 60", "#00911:01"}), "--events", At("esc.txt")});
  EXPECT_EQ(result.exitStatus, 0) << result.errors;
  EXPECT_TRUE(Holds(result.output, "\"playCleared\": false,\n  \"endClock\": 833,"));
}

TEST_F(ProbeTest, EscReleasedInTimeDoesNothing) {
  WriteData(u"esc.txt", "100 down 1\n590 up 1\n");
  const std::string output =
      Probe({"play", Chart("a.bms", {"#BPM 240", "#00111:01"}), "--events", At("esc.txt")}).output;
  EXPECT_TRUE(Holds(output, "\"playCleared\": true"));
}

TEST_F(ProbeTest, ShiftWithEscStopsAtOnce) {
  WriteData(u"esc.txt", "50 down 42\n100 down 1\n");
  const std::string output =
      Probe({"play", Chart("a.bms", {"#BPM 60", "#00911:01"}), "--events", At("esc.txt")}).output;
  EXPECT_TRUE(Holds(output, "\"playCleared\": false,\n  \"endClock\": 100,"));
}

TEST_F(ProbeTest, EventsNeedNotStandInTheOrderOfTheirTimes) {
  WriteData(u"esc.txt", "100 down 1\n2000 up 1\n");
  WriteData(u"turned.txt", "9000000000000000000 up 44\n2000 up 1\n100 down 1\n");
  const std::string chart = Chart("a.bms", {"#BPM 60", "#00911:01"});
  EXPECT_EQ(Probe({"play", chart, "--events", At("turned.txt")}).output,
            Probe({"play", chart, "--events", At("esc.txt")}).output);
}

TEST_F(ProbeTest, EventsOfOneTurnAreServedInTheOrderOfTheFile) {
  // Both in the turn at 1000 ms, the one before it being at 983 ms.
  WriteData(u"two.txt", "1000 down 45\n990 down 44\n");
  const std::string chart = Chart("a.bms", {"#BPM 240", "#00111:01", "#00113:02"});
  EXPECT_TRUE(Holds(Probe({"play", chart, "--events", At("two.txt")}).output,
                    "\"starts\": [\n    [1000, 2],\n    [1000, 1]\n  ]"));
}

TEST_F(ProbeTest, EventsFilesThatCannotBeReadAreRefused) {
  const std::string chart = Chart("a.bms", kSmallChart);
  for (const std::string text : {"100 push 1\n", "x down 1\n", "1 down 401\n", "1 down 1 2\n", "1 down\n"}) {
    WriteData(u"bad.txt", "0 up 1\n" + text);
    const ProcessResult result = Probe({"play", chart, "--events", At("bad.txt")});
    EXPECT_EQ(result.exitStatus, 1) << text;
    EXPECT_TRUE(Holds(result.errors, "line 2 is not"));
  }
  EXPECT_EQ(Probe({"play", chart, "--events", At("missing.txt")}).exitStatus, 1);
}

TEST_F(ProbeTest, LimitStopsAPlay) {
  const std::string output =
      Probe({"play", Chart("a.bms", {"#BPM 60", "#00911:01"}), "--limit", "500"}).output;
  EXPECT_TRUE(Holds(output, "\"endClock\": 500,"));
}

TEST_F(ProbeTest, PreviewLoadIsPlayedToItsEnd) {
  const ProcessResult result = Probe({"play", Chart("a.bms", {"#BPM 240", "#00111:01"}), "--preview"});
  EXPECT_EQ(result.exitStatus, 0) << result.errors;
  EXPECT_TRUE(Holds(result.output, "\"playCleared\": true"));
}

TEST_F(ProbeTest, FramesAreSavedAsPictures) {
  WriteBmp("p.bmp", 256, 256);
  const std::string chart = Chart("a.bms", {"#BPM 120", "#BMP01 p.bmp", "#00004:01", "#00111:01"});
  const ProcessResult result = Probe({"frame", chart, "--at", "510,-300,99999", "--out", At("f")});
  EXPECT_EQ(result.exitStatus, 0) << result.errors;
  // The last turn before 510 ms is number 30; the last of the pre-roll up to -300 ms is number -18. The bar
  // line of measure 2 is passed at 4000 ms, the fade begins a turn later and is over behind 200 ms more.
  EXPECT_TRUE(Holds(result.output, "{\"at\": -300, \"turn\": -300, \"file\": \"" + At("f--300.png") + "\"}"));
  EXPECT_TRUE(Holds(result.output, "{\"at\": 510, \"turn\": 500, \"file\": \"" + At("f-510.png") + "\"}"));
  EXPECT_TRUE(Holds(result.output, "{\"at\": 99999, \"turn\": 4233,"));
  const std::string png = ReadBytes(platform::InnerPath(At("f-510.png")));
  const platform::SurfacePtr picture =
      platform::DecodePicture({reinterpret_cast<const unsigned char*>(png.data()), png.size()});
  ASSERT_NE(picture, nullptr);
  EXPECT_EQ(picture->Width(), 640);
  EXPECT_EQ(picture->Height(), 480);
}

TEST_F(ProbeTest, MomentsBeforeThePreRollHaveNoFrame) {
  const ProcessResult result =
      Probe({"frame", Chart("a.bms", kSmallChart), "--at", "-1001", "--out", At("f")});
  EXPECT_EQ(result.exitStatus, 1);
  EXPECT_TRUE(Holds(result.output, "\"frames\": []"));
}

// The samples of the left channel of a WAV file that the probe wrote.
std::vector<int16_t> LeftSamples(const std::string& wav) {
  Cursor cursor(wav);
  cursor.Skip(44);
  std::vector<int16_t> samples;
  while (cursor.Left() >= 4) {
    samples.push_back(static_cast<int16_t>(cursor.U16()));
    cursor.Skip(2);
  }
  return samples;
}

TEST_F(ProbeTest, AudioStartsEachSoundOnTheSampleOfItsTurn) {
  WriteWav("x.wav", std::vector<int16_t>(441, 20000));
  const std::string chart = Chart("a.bms", {"#BPM 120", "#WAV01 x.wav", "#00011:0001"});
  const ProcessResult result = Probe({"audio", chart, "--out", At("o.wav")});
  EXPECT_EQ(result.exitStatus, 0) << result.errors;
  ExpectKeysInOrder(result.output, {"length", "peak", "starts"});
  EXPECT_TRUE(Holds(result.output, "\"starts\": [\n    [1000, 1]\n  ]"));
  const std::vector<int16_t> samples = LeftSamples(ReadBytes(platform::InnerPath(At("o.wav"))));
  ASSERT_GT(samples.size(), 44600U);
  EXPECT_EQ(samples[44099], 0);
  EXPECT_GT(samples[44200], 1000);
  EXPECT_EQ(samples[44600], 0);
}

TEST_F(ProbeTest, FirstSampleOfASoundIsThatOfItsTurnRoundedDown) {
  // 64 of 192 units at 144 beats a minute are 555.6 ms: turn 34, at 566 ms, and 566 * 44.1 is 24960.6.
  WriteWav("x.wav", std::vector<int16_t>(441, 20000));
  const std::string chart = Chart("a.bms", {"#BPM 144", "#WAV01 x.wav", "#00011:000100"});
  EXPECT_TRUE(Holds(Probe({"audio", chart, "--out", At("o.wav")}).output, "[566, 1]\n"));
  EXPECT_TRUE(Holds(Probe({"play", chart}).output, "[566, 1]\n"));
  const std::vector<int16_t> samples = LeftSamples(ReadBytes(platform::InnerPath(At("o.wav"))));
  ASSERT_GT(samples.size(), 25402U);
  EXPECT_EQ(samples[24959], 0);
  // 20000 turned down by 500 hundredths of a decibel: 20000 * 10 ^ -0.25 is 11246.8.
  EXPECT_EQ(samples[24960], 11247);
  EXPECT_EQ(samples[25400], 11247);
  EXPECT_EQ(samples[25401], 0);
}

TEST_F(ProbeTest, AudioStopsAfterTheSecondsAskedFor) {
  const std::string chart = Chart("a.bms", {"#BPM 60", "#00911:01"});
  const ProcessResult result = Probe({"audio", chart, "--out", At("o.wav"), "--seconds", "2"});
  EXPECT_EQ(result.exitStatus, 0) << result.errors;
  EXPECT_TRUE(Holds(result.output, "\"length\": 2,"));
  EXPECT_EQ(LeftSamples(ReadBytes(platform::InnerPath(At("o.wav")))).size(), 88200U);
}

TEST_F(ProbeTest, AudioOfOneChartIsTheSameEveryTime) {
  WriteWav("x.wav", std::vector<int16_t>(2000, 9000));
  const std::string chart = Chart("a.bms", {"#BPM 177.7", "#WAV01 x.wav", "#00011:01010001", "#00101:01"});
  Probe({"audio", chart, "--out", At("a.wav")});
  Probe({"audio", chart, "--out", At("b.wav")});
  EXPECT_EQ(ReadBytes(platform::InnerPath(At("a.wav"))), ReadBytes(platform::InnerPath(At("b.wav"))));
}

TEST_F(ProbeTest, HandsPlayByTheDefaultKeysOrByThoseOfAFile) {
  // A measure a second: lane 1 at 1 s, lane 2 at 2 s, both in turns of 60 a second.
  const std::string chart = Chart("a.bms", {"#BPM 240", "#RANK 3", "#00111:01", "#00212:02", "#00401:01"});
  WriteData(u"hands.txt", "1000 down 44\n1100 up 44\n2000 down 31\n2100 up 31\n");
  WriteData(u"crossed.txt", "1000 down 31\n1100 up 31\n2000 down 44\n2100 up 44\n");
  Probe({"keys", At("k.dat"), "--set", "44=12", "--set", "31=11"});
  const auto perfect = [&](const std::string& hands, std::vector<std::string> more) {
    std::vector<std::string> words = {"play", chart, "--events", At(hands)};
    words.insert(words.end(), more.begin(), more.end());
    return Probe(words).output.find("\"counts\": [\n    [2, 0, 0, 0, 0]") != std::string::npos;
  };
  const std::vector<std::string> keyFile = {"--set", "keys=" + At("k.dat")};
  EXPECT_TRUE(perfect("hands.txt", {}));
  EXPECT_FALSE(perfect("crossed.txt", {}));
  EXPECT_TRUE(perfect("crossed.txt", keyFile));
  EXPECT_FALSE(perfect("hands.txt", keyFile));
  EXPECT_EQ(Probe({"play", chart, "--set", "keys=" + At("none.dat")}).exitStatus, 1);
}

}  // namespace
}  // namespace qlm
