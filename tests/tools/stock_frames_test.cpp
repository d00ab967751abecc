// The stock skins in every state of a play, drawn by the real engine, against stored pictures. At 125 beats a
// minute a position unit lasts 10 ms, and a measure 1920.
#include <filesystem>
#include <map>
#include <string>
#include <vector>

#include "platform/picture.h"
#include "tests/support/whole_file.h"
#include "tests/tools/golden_frames.h"
#include "tests/tools/probe.h"

namespace qlm {
namespace {

namespace fs = std::filesystem;
using platform::Rect;
using platform::Surface;
using platform::SurfacePtr;

constexpr int32_t kMsAUnit = 10;
constexpr int32_t kStep = 24;  // from one note of a chart of steps to the next
constexpr int32_t kF9 = 67;
constexpr int32_t kF12 = 88;
constexpr Rect kWhole = {0, 0, 640, 480};
constexpr Rect kFirstField = {0, 0, 192, 480};  // of Inkwell

const std::vector<int32_t> kLanes = {11, 12, 13, 14, 15, 18, 19, 16};

// The key that the default map gives a lane of the first side.
int32_t KeyOf(int32_t channel) {
  static const std::map<int32_t, int32_t> kKeys = {{11, 44}, {12, 31}, {13, 45}, {14, 32},
                                                   {15, 46}, {16, 57}, {18, 33}, {19, 47}};
  return kKeys.at(channel);
}

int32_t LaneOfStep(int32_t step) { return kLanes[static_cast<size_t>(step) % kLanes.size()]; }

// Measure 1 begins with step 0.
int32_t MsOfStep(int32_t step) { return (192 + kStep * step) * kMsAUnit; }

// A data line whose cells marked with an x hold a note.
std::string Line(int32_t measure, int32_t channel, const std::string& marks) {
  const std::string number = std::to_string(1000 + measure).substr(1);
  std::string line = "#";
  line.append(number).append(std::to_string(channel)).append(":");
  for (const char mark : marks) line.append(mark == 'x' ? "01" : "00");
  return line;
}

class StockFramesTest : public ProbeTest {
 protected:
  StockFramesTest() {
    fs::remove_all(At("_qlmfiles"));
    fs::create_directory_symlink(QLM_BINARY_DIR "/_qlmfiles", At("_qlmfiles"));
  }

  // One note after the other over all lanes, eight measures long, behind an empty one.
  std::string Steps(int32_t player = 1) const {
    std::vector<std::string> lines = Head(player);
    for (int32_t measure = 1; measure <= 8; ++measure) {
      for (size_t lane = 0; lane < kLanes.size(); ++lane) {
        std::string marks(8, '.');
        marks[lane] = 'x';
        lines.push_back(Line(measure, kLanes[lane], marks));
        if (player > 1) lines.push_back(Line(measure, kLanes[7 - lane] + 10, marks));
      }
    }
    return Chart("steps.bms", lines);
  }

  // 40 notes a measure, at sixteenths of 120 ms: more than 1,000 in all.
  std::string Dense(int32_t player = 1) const {
    std::vector<std::string> lines = Head(player);
    for (int32_t measure = 1; measure <= 27; ++measure) {
      for (size_t lane = 0; lane < kLanes.size(); ++lane) {
        std::string marks(16, '.');
        for (size_t i = 0; i < 5; ++i) marks[(3 * i + 5 * lane + i / 3) % 16] = 'x';
        lines.push_back(Line(measure, kLanes[lane], marks));
        if (player > 1) lines.push_back(Line(measure, kLanes[7 - lane] + 10, marks));
      }
    }
    return Chart("dense.bms", lines);
  }

  // Plays the first `exact` steps exactly and the one behind them `offset` units late.
  std::vector<std::string> Hands(int32_t exact, int32_t offset, const std::string& more = {}) const {
    std::string events;
    const auto tap = [&](int32_t ms, int32_t key) {
      events += std::to_string(ms) + " down " + std::to_string(key) + "\n" + std::to_string(ms + 60) +
                " up " + std::to_string(key) + "\n";
    };
    for (int32_t step = 0; step < exact; ++step) tap(MsOfStep(step), KeyOf(LaneOfStep(step)));
    tap(MsOfStep(exact) + offset * kMsAUnit, KeyOf(LaneOfStep(exact)));
    WriteData(u"hands.txt", events + more);
    return {"--events", At("hands.txt")};
  }

  // Draws the play at `ms` and compares what `part` of the frame shows with NAME.png.
  void Expect(const std::string& name, const std::string& chart, int32_t ms,
              const std::vector<std::string>& options = {}, const Rect& part = kWhole) const {
    std::vector<std::string> arguments = {"frame", chart, "--at", std::to_string(ms), "--out", At(name)};
    arguments.insert(arguments.end(), options.begin(), options.end());
    const ProcessResult result = Probe(arguments);
    ASSERT_EQ(result.exitStatus, 0) << result.errors;
    const std::string file = At(name + "-" + std::to_string(ms) + ".png");
    Cut(file, part);
    CompareWithGoldenFrame(name, file);
  }

  // A late press of the thirteenth note, or none at all, and the word that it earns.
  void ExpectWord(const std::string& word, int32_t offset) const {
    const int32_t ms = MsOfStep(12) + offset * kMsAUnit + 200;
    Expect("inkwell-" + word, Steps(), ms, Hands(12, offset), {0, 180, 320, 480});
    std::vector<std::string> options = Hands(12, offset);
    options.insert(options.end(), {"--skin", At("_qlmfiles/draft.brd")});
    Expect("draft-" + word, Steps(), ms, options, {320, 180, 640, 480});
  }

  // The machine plays; all that the options change lies in the field.
  void ExpectOptions(const std::string& name, std::vector<std::string> options) const {
    options.insert(options.end(), {"--set", "HiSpeed=1.5"});
    Expect("inkwell-" + name, Dense(), 4500, options, kFirstField);
  }

 private:
  std::vector<std::string> Head(int32_t player) const {
    return {"#PLAYER " + std::to_string(player),
            "#TITLE The stock skins",
            "#ARTIST Nobody",
            "#BPM 125",
            "#RANK 3",
            "#TOTAL 400"};
  }

  static void Cut(const std::string& file, const Rect& part) {
    const std::string bytes = WholeFile(file);
    const SurfacePtr frame =
        platform::DecodePicture({reinterpret_cast<const unsigned char*>(bytes.data()), bytes.size()});
    ASSERT_NE(frame, nullptr) << file;
    Surface piece(part.right - part.left, part.bottom - part.top);
    piece.Copy(0, 0, *frame, part);
    ASSERT_TRUE(platform::SavePng(piece, file));
  }
};

TEST_F(StockFramesTest, TheScreenBeforeBreaksUpIntoTiles) { Expect("inkwell-tiles", Steps(), -700); }
TEST_F(StockFramesTest, BeforeTheSong) { Expect("inkwell-ready", Steps(), -100); }

TEST_F(StockFramesTest, ManyNotesAndARoundCombo) {
  Expect("inkwell-dense", Dense(), 6900, {"--set", "HiSpeed=1.5"});
  Expect("draft-dense", Dense(), 6900, {"--set", "HiSpeed=1.5", "--skin", At("_qlmfiles/draft.brd")});
}

TEST_F(StockFramesTest, AFullGaugeAndAComboOfFourDigits) {
  Expect("inkwell-full-gauge", Dense(), 51'000, {"--set", "HiSpeed=1.5"}, kFirstField);
}

TEST_F(StockFramesTest, AnEmptyGauge) {
  WriteData(u"nobody.txt", "");
  Expect("inkwell-empty-gauge", Steps(), 6000, {"--events", At("nobody.txt")}, {0, 180, 320, 480});
}

TEST_F(StockFramesTest, Perfect) { ExpectWord("perfect", 0); }
TEST_F(StockFramesTest, Great) { ExpectWord("great", 6); }
TEST_F(StockFramesTest, Good) { ExpectWord("good", 12); }
TEST_F(StockFramesTest, Bad) { ExpectWord("bad", 28); }
TEST_F(StockFramesTest, Poor) { ExpectWord("poor", 40); }

TEST_F(StockFramesTest, Hidden) { ExpectOptions("hidden", {"--set", "Hidden=True"}); }
TEST_F(StockFramesTest, Sudden) { ExpectOptions("sudden", {"--set", "Sudden=True"}); }
TEST_F(StockFramesTest, HiddenAndSudden) {
  ExpectOptions("hidden-sudden", {"--set", "Hidden=True", "--set", "Sudden=True"});
}
TEST_F(StockFramesTest, Stealth) { ExpectOptions("stealth", {"--set", "Stealth=True"}); }
TEST_F(StockFramesTest, Accel) { ExpectOptions("accel", {"--set", "Accel=True"}); }
TEST_F(StockFramesTest, Quil) { ExpectOptions("quil", {"--set", "Quil=True"}); }
TEST_F(StockFramesTest, HalfField) { ExpectOptions("half-field", {"--set", "HalfField=True"}); }
TEST_F(StockFramesTest, Random) {
  ExpectOptions("random", {"--set", "Random=True", "--rnd", "0.1,0.7,0.3,0.9,0.5"});
}
TEST_F(StockFramesTest, ExRandom) {
  ExpectOptions("ex-random", {"--set", "ExRandom=True", "--rnd", "0.1,0.7,0.3,0.9,0.5,0.02,0.85,0.35"});
}
TEST_F(StockFramesTest, Pressure) { ExpectOptions("pressure", {"--set", "Pressure=True"}); }

// The turntable and one key of each kind, long before the first note.
TEST_F(StockFramesTest, HeldKeysAreSeenPressed) {
  std::string events;
  for (const int32_t channel : {16, 11, 12}) events += "200 down " + std::to_string(KeyOf(channel)) + "\n";
  WriteData(u"held.txt", events);
  Expect("inkwell-held", Steps(), 500, {"--events", At("held.txt")}, {0, 180, 192, 480});
}

TEST_F(StockFramesTest, TheHazardGauge) {
  std::vector<std::string> options = Hands(20, 0);
  options.push_back("--hazard");
  Expect("inkwell-hazard", Steps(), MsOfStep(27), options, {0, 180, 320, 480});
}

// The first miss stops the song for a second, and then it fades for two.
TEST_F(StockFramesTest, TheFadeOfAFailedPlay) {
  std::vector<std::string> options = Hands(12, 28);
  options.insert(options.end(), {"--set", "Pressure=True"});
  Expect("inkwell-failed", Steps(), MsOfStep(12) + 28 * kMsAUnit + 1800, options);
}

TEST_F(StockFramesTest, APause) {
  const int32_t ms = MsOfStep(12) + 100;
  const std::string pause = std::to_string(ms) + " down " + std::to_string(kF12) + "\n";
  Expect("inkwell-pause", Steps(), ms + 700, Hands(12, 0, pause));
}

TEST_F(StockFramesTest, TurntableOnTheRight) {
  Expect("inkwell-right-hand", Dense(), 4500, {"--set", "SCRATCH1P=1", "--set", "HiSpeed=1.5"}, kFirstField);
}

TEST_F(StockFramesTest, TwoPlayers) { Expect("inkwell-two-players", Dense(2), 4500); }

TEST_F(StockFramesTest, TwoPlayersWithBothTurntablesTurnedRound) {
  Expect("inkwell-two-players-turned", Dense(2), 4500, {"--set", "SCRATCH1P=1", "--set", "SCRATCH2P=1"});
}

TEST_F(StockFramesTest, DoublePlay) { Expect("inkwell-double-play", Dense(3), 4500); }

TEST_F(StockFramesTest, F9ShowsTheNextSkin) {
  const int32_t ms = MsOfStep(12) + 100;
  const std::string key = std::to_string(ms) + " down " + std::to_string(kF9) + "\n";
  Expect("next-skin", Steps(), ms + 500, Hands(12, 0, key));
  Expect("next-skin-two-players", Steps(2), ms + 500, Hands(12, 0, key));
}

}  // namespace
}  // namespace qlm
