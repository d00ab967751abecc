// The stock charts for five keys under the hands of beginners: those who hit three notes of four end near the
// clear mark, and a little practice clears safely.
#include <algorithm>
#include <cmath>
#include <map>
#include <numbers>
#include <numeric>
#include <random>
#include <set>
#include <string>
#include <vector>

#include "tests/tools/probe.h"

namespace qlm {
namespace {

constexpr double kClearMark = 80;
constexpr int32_t kEvenings = 16;  // plays by the same hands, each with luck of its own

struct Note {
  int32_t clock;  // ms
  int32_t channel;
};

struct Hands {
  double hits;    // the share of the notes that they strike at all
  double spread;  // ms, the standard deviation of those
};

int32_t NumberBehind(const std::string& text, const std::string& words, size_t from = 0) {
  const size_t at = text.find(words, from);
  return at == std::string::npos ? -1 : std::stoi(text.substr(at + words.size()));
}

// Numbers that are the same with every standard library.
class Luck {
 public:
  explicit Luck(uint32_t seed) : generator_(seed) {}
  // Above 0, up to 1.
  double Even() { return (generator_() + 1.0) / 4294967296.0; }
  // Around 0, with a standard deviation of 1.
  double Normal() {
    const double reach = std::sqrt(-2 * std::log(Even()));
    return reach * std::cos(2 * std::numbers::pi * Even());
  }

 private:
  std::mt19937 generator_;
};

class FirstEveningTest : public ProbeTest, public testing::WithParamInterface<const char*> {
 protected:
  static std::string ChartPath() { return std::string(QLM_BINARY_DIR "/songs/") + GetParam(); }

  std::string Play(std::vector<std::string> options) const {
    options.insert(options.begin(), {"play", ChartPath(), "--no-wav", "--no-bga"});
    const ProcessResult result = Probe(options);
    EXPECT_EQ(result.exitStatus, 0) << result.errors;
    return result.output;
  }

  // The machine strikes each note in its turn of a millisecond.
  std::vector<Note> Notes() const {
    const std::string output = Play({"--fps", "1000"});
    std::vector<Note> notes;
    for (size_t at = output.find("{\"turn\""); at != std::string::npos;
         at = output.find("{\"turn\"", at + 1)) {
      notes.push_back({NumberBehind(output, "\"clock\": ", at), NumberBehind(output, "\"channel\": ", at)});
    }
    return notes;
  }

  // The gauge at the end of a play.
  double GaugeAfter(const std::vector<Note>& notes, const Hands& hands, uint32_t seed) const {
    static const std::map<int32_t, int32_t> kKeys = {{11, 44}, {12, 31}, {13, 45},
                                                     {14, 32}, {15, 46}, {16, 57}};
    Luck luck(seed);
    std::map<int32_t, std::set<int32_t>> presses;  // by key, in ms
    for (const Note& note : notes) {
      if (luck.Even() > hands.hits) continue;
      presses[kKeys.at(note.channel)].insert(note.clock +
                                             static_cast<int32_t>(std::lround(hands.spread * luck.Normal())));
    }
    std::multimap<int32_t, std::string> events;
    for (const auto& [key, times] : presses) {
      for (auto press = times.begin(); press != times.end(); ++press) {
        // The key is up again before it is pressed anew.
        const auto next = std::next(press);
        const int32_t up = next == times.end() ? *press + 70 : std::min(*press + 70, *next - 1);
        events.insert({*press, std::to_string(*press) + " down " + std::to_string(key)});
        events.insert({up, std::to_string(up) + " up " + std::to_string(key)});
      }
    }
    std::string text;
    for (const auto& [ms, line] : events) text += line + "\n";
    WriteData(u"hands.txt", text);
    const std::string output = Play({"--events", At("hands.txt")});
    const size_t gauge = output.find("\"gauge\": [");
    return gauge == std::string::npos ? -1 : std::stod(output.substr(gauge + 10));
  }

  std::vector<double> GaugesAfter(const Hands& hands) const {
    const std::vector<Note> notes = Notes();
    EXPECT_GT(notes.size(), 50u);
    std::vector<double> gauges;
    for (uint32_t seed = 1; seed <= kEvenings; ++seed) gauges.push_back(GaugeAfter(notes, hands, seed));
    return gauges;
  }
};

INSTANTIATE_TEST_SUITE_P(Songs, FirstEveningTest,
                         testing::Values("march/march5.bms", "inkwell/inkwell5.bms",
                                         "blueprint/blueprint5.bms"),
                         [](const auto& each) {
                           const std::string chart = each.param;
                           return chart.substr(0, chart.find('/'));
                         });

// One evening it is enough and another it is not; on the whole it is just about.
TEST_P(FirstEveningTest, ABeginnerEndsNearTheClearMark) {
  const std::vector<double> gauges = GaugesAfter({0.75, 80});
  const auto cleared =
      std::count_if(gauges.begin(), gauges.end(), [](double gauge) { return gauge >= kClearMark; });
  EXPECT_GE(cleared, kEvenings / 4) << testing::PrintToString(gauges);
  EXPECT_LE(cleared, 3 * kEvenings / 4) << testing::PrintToString(gauges);
  const double mean = std::accumulate(gauges.begin(), gauges.end(), 0.0) / kEvenings;
  EXPECT_NEAR(mean, kClearMark, 10) << testing::PrintToString(gauges);
  RecordProperty("mean", static_cast<int>(std::lround(mean)));
}

TEST_P(FirstEveningTest, ALittlePracticeClearsSafely) {
  for (const double gauge : GaugesAfter({0.85, 60})) EXPECT_GT(gauge, kClearMark);
}

}  // namespace
}  // namespace qlm
