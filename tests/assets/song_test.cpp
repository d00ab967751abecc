// The march: its three charts and its samples.
#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>
#include <complex>
#include <cstdlib>
#include <numbers>
#include <set>
#include <tuple>

#include "chart_text.h"
#include "wav.h"

namespace stock {
namespace {

const std::vector<std::string> names = {"march5.bms", "march7.bme", "marchdp.bme"};

const ChartText& Chart(const std::string& name) {
  static std::map<std::string, ChartText> charts;
  const auto found = charts.find(name);
  return found != charts.end() ? found->second
                               : charts.emplace(name, ReadChart(March() / name)).first->second;
}

bool IsKey(int channel) { return channel >= 11 && channel <= 29; }

long NotesOf(const std::string& name) {
  const std::vector<Cell>& cells = Chart(name).cells;
  return std::count_if(cells.begin(), cells.end(), [](const Cell& cell) { return IsKey(cell.channel); });
}

std::set<int> ChannelsOf(const std::string& name) {
  std::set<int> channels;
  for (const Cell& cell : Chart(name).cells) channels.insert(cell.channel);
  return channels;
}

class EachChart : public testing::TestWithParam<std::string> {
 protected:
  const ChartText& chart = Chart(GetParam());
};

INSTANTIATE_TEST_SUITE_P(Song, EachChart, testing::ValuesIn(names),
                         [](const auto& each) { return each.param.substr(0, each.param.find('.')); });

TEST_P(EachChart, EndsAllLinesWithCrLf) {
  ASSERT_FALSE(chart.bytes.empty());
  EXPECT_TRUE(chart.bytes.ends_with("\r\n"));
  for (const std::string& line : chart.lines)
    EXPECT_EQ(line.find_first_of("\r\n"), std::string::npos) << line;
}

TEST_P(EachChart, HasNoCommandOnItsFirstLine) { EXPECT_NE(chart.lines.at(0).substr(0, 1), "#"); }

TEST_P(EachChart, IsValidInCodePage932) {
  for (std::size_t i = 0; i < chart.bytes.size(); ++i) {
    const auto byte = static_cast<unsigned char>(chart.bytes[i]);
    ASSERT_NE(byte, 0) << i;
    if (byte < 0x80 || (byte >= 0xA1 && byte <= 0xDF)) continue;
    ASSERT_TRUE((byte >= 0x81 && byte <= 0x9F) || (byte >= 0xE0 && byte <= 0xFC)) << i;
    ASSERT_LT(i + 1, chart.bytes.size());
    const auto trail = static_cast<unsigned char>(chart.bytes[++i]);
    ASSERT_TRUE(trail >= 0x40 && trail <= 0xFC && trail != 0x7F) << i;
  }
}

TEST_P(EachChart, HasTheJapaneseTitle) {
  // 羽ペンの行進
  EXPECT_TRUE(chart.commands.at("TITLE").starts_with("\x89\x48\x83\x79\x83\x93\x82\xCC\x8D\x73\x90\x69 ["));
}

TEST_P(EachChart, GivesAllOfItsHeader) {
  EXPECT_EQ(chart.commands.at("ARTIST"), "quillmarch");
  EXPECT_EQ(chart.commands.at("GENRE"), "MARCH");
  EXPECT_EQ(chart.commands.at("BPM"), "132");
  EXPECT_EQ(chart.commands.at("STAGEFILE"), "stage.png");
  EXPECT_GT(std::stoi(chart.commands.at("PLAYLEVEL")), 0);
  EXPECT_GE(std::stoi(chart.commands.at("RANK")), 0);
  EXPECT_LE(std::stoi(chart.commands.at("RANK")), 3);
  EXPECT_GE(std::stoi(chart.commands.at("TOTAL")), 200);
}

TEST_P(EachChart, HoldsOnlyWholeHexadecimalCells) {
  for (const std::string& data : chart.data) {
    EXPECT_EQ(data.size() % 2, 0u) << data;
    EXPECT_EQ(data.find_first_not_of("0123456789ABCDEF"), std::string::npos) << data;
  }
}

TEST_P(EachChart, UsesOnlyChannelsThatMakeObjects) {
  const std::set<int> known = {1,  3,  4,  6,  7,  8,  11, 12, 13, 14, 15, 16, 18, 19, 21, 22, 23, 24, 25,
                               26, 28, 29, 31, 32, 33, 34, 35, 36, 38, 39, 41, 42, 43, 44, 45, 46, 48, 49};
  for (const int channel : ChannelsOf(GetParam())) EXPECT_TRUE(known.contains(channel)) << channel;
}

TEST_P(EachChart, NamesOnlyFilesThatExist) {
  int files = 0;
  for (const auto& [command, value] : chart.commands) {
    const bool slot = command.size() == 5 && (command.starts_with("WAV") || command.starts_with("BMP"));
    if (!slot && command != "STAGEFILE") continue;
    EXPECT_TRUE(std::filesystem::is_regular_file(March() / value)) << value;
    ++files;
  }
  EXPECT_GT(files, 100);
}

TEST_P(EachChart, DefinesEverySlotThatItsObjectsUse) {
  for (const Cell& cell : chart.cells) {
    if (cell.channel == 3) continue;
    std::string kind = "WAV";
    if (cell.channel == 8) kind = "BPM";
    if (cell.channel == 4 || cell.channel == 6 || cell.channel == 7) kind = "BMP";
    EXPECT_TRUE(chart.commands.contains(kind + Slot(cell.value))) << kind << Slot(cell.value);
  }
}

TEST_P(EachChart, BeginsWithABarOfLeadIn) {
  for (const Cell& cell : chart.cells) {
    if (IsKey(cell.channel)) {
      EXPECT_GE(cell.measure, 1);
    }
  }
}

TEST_P(EachChart, HasNoTwoNotesInOnePlace) {
  std::set<std::tuple<int, int, double>> places;
  for (const Cell& cell : chart.cells) {
    if (!IsKey(cell.channel)) continue;
    EXPECT_TRUE(places.insert({cell.channel, cell.measure, cell.place}).second)
        << "channel " << cell.channel << ", measure " << cell.measure << ", " << cell.place;
  }
}

TEST_P(EachChart, LastsEightyToAHundredSeconds) {
  const double seconds = Times(chart).At(chart.lastMeasure + 1, 0);
  EXPECT_GE(seconds, 80);
  EXPECT_LE(seconds, 100);
}

TEST_P(EachChart, ShowsWhatAChartCanHold) {
  const std::set<int> channels = ChannelsOf(GetParam());
  for (const int channel : {1, 3, 4, 6, 7, 8}) EXPECT_TRUE(channels.contains(channel)) << channel;
  ASSERT_EQ(chart.measureLengths.size(), 1u);
  EXPECT_EQ(chart.measureLengths.begin()->second, 0.75);
}

TEST_P(EachChart, SoundsTheSameMusic) {
  // Whether a sound lies under the hands or in the background, it is heard at the same time in every chart.
  const auto music = [](const ChartText& each) {
    std::multiset<std::tuple<int, double, std::string>> sounds;
    for (const Cell& cell : each.cells) {
      if (cell.channel != 1 && !IsKey(cell.channel)) continue;
      sounds.insert({cell.measure, cell.place, each.commands.at("WAV" + Slot(cell.value))});
    }
    return sounds;
  };
  EXPECT_EQ(music(chart), music(Chart(names.front())));
}

TEST(Song, FiveKeyChartKeepsToFiveKeysAndTheTurntable) {
  for (const int channel : ChannelsOf("march5.bms")) {
    if (IsKey(channel)) {
      EXPECT_LE(channel, 16) << channel;
    }
  }
}

TEST(Song, SevenKeyChartUsesAllOfItsLanesEvenly) {
  std::map<int, int> notes;
  for (const Cell& cell : Chart("march7.bme").cells) {
    if (IsKey(cell.channel)) ++notes[cell.channel];
  }
  ASSERT_EQ(notes.size(), 8u);
  const double mean = NotesOf("march7.bme") / 8.0;
  for (const int channel : {11, 12, 13, 14, 15, 16, 18, 19}) {
    EXPECT_GT(notes[channel], 0.8 * mean) << channel;
    EXPECT_LT(notes[channel], 1.25 * mean) << channel;
  }
}

TEST(Song, DoubleChartIsOneForTwoHands) {
  EXPECT_EQ(Chart("marchdp.bme").commands.at("PLAYER"), "3");
  const std::set<int> channels = ChannelsOf("marchdp.bme");
  for (const int lane : {1, 2, 3, 4, 5, 6, 8, 9}) {
    EXPECT_TRUE(channels.contains(10 + lane)) << lane;
    EXPECT_TRUE(channels.contains(20 + lane)) << lane;
  }
}

// Notes a second in the fullest eight measures.
double Density(const ChartText& chart) {
  std::map<int, int> notes;
  for (const Cell& cell : chart.cells) {
    if (IsKey(cell.channel)) ++notes[cell.measure];
  }
  const Times times(chart);
  double fullest = 0;
  for (int first = 0; first + 7 <= chart.lastMeasure; ++first) {
    int sum = 0;
    for (int measure = first; measure < first + 8; ++measure) sum += notes[measure];
    fullest = std::max(fullest, sum / (times.At(first + 8, 0) - times.At(first, 0)));
  }
  return fullest;
}

// Its finale is fuller than the inkwell's hard chart, which has level 8 too.
TEST(Song, DoubleChartSaysHowHardItsFinaleIs) {
  const ChartText level8 = ReadChart(StockSong("inkwell") / "inkwell7h.bme");
  ASSERT_EQ(level8.commands.at("PLAYLEVEL"), "8");
  EXPECT_GE(std::stoi(Chart("marchdp.bme").commands.at("PLAYLEVEL")), 8);
  EXPECT_GT(Density(Chart("marchdp.bme")), Density(level8));
}

TEST(Song, ChartsGrowHarder) {
  EXPECT_GT(NotesOf("march5.bms"), 100);
  EXPECT_LT(NotesOf("march5.bms"), 200);
  EXPECT_GT(NotesOf("march7.bme"), 2 * NotesOf("march5.bms"));
  EXPECT_GT(NotesOf("marchdp.bme"), NotesOf("march7.bme"));
}

TEST(Song, InvisibleObjectsChangeTheSoundOfIdleLanes) {
  for (const std::string name : {"march5.bms", "march7.bme"}) {
    for (const int channel : {31, 32, 33, 34, 35}) EXPECT_TRUE(ChannelsOf(name).contains(channel)) << name;
  }
}

std::map<int, Wav> SamplesOf(const ChartText& chart) {
  std::map<int, Wav> samples;
  for (const auto& [command, value] : chart.commands) {
    if (!command.starts_with("WAV")) continue;
    samples[static_cast<int>(std::stol(command.substr(3), nullptr, 16))] = ReadWav(March() / value);
  }
  return samples;
}

TEST(Song, SamplesArePlainStereoAt44100BelowMinusThreeDecibels) {
  for (const auto& [slot, wav] : SamplesOf(Chart("march7.bme"))) {
    SCOPED_TRACE(slot);
    EXPECT_TRUE(wav.valid);
    EXPECT_EQ(wav.format, 1u);
    EXPECT_EQ(wav.channels, 2u);
    EXPECT_EQ(wav.rate, 44100u);
    EXPECT_EQ(wav.bits, 16u);
    EXPECT_LT(PeakDb(wav), -3);
  }
}

TEST(Song, SamplesBeginAtOnceAndEndInSilence) {
  for (const auto& [slot, wav] : SamplesOf(Chart("march7.bme"))) {
    SCOPED_TRACE(slot);
    EXPECT_LT(StartMs(wav, 0.01), 8);
    EXPECT_LE(End(wav, 8), 2 / 32768.0);
  }
}

// The frequency that the name of a sample promises: "horn-cs5-45.wav" is a C sharp of 554.4 Hz.
double PromisedFrequency(const std::string& name) {
  const std::size_t at = name.find('-') + 1;
  const std::string note = name.substr(at, name.find('-', at) - at);
  const std::map<char, int> steps = {{'c', -9}, {'d', -7}, {'e', -5}, {'f', -4},
                                     {'g', -2}, {'a', 0},  {'b', 2}};
  const int sharp = note[1] == 's' ? 1 : 0;
  const int octave = note[static_cast<std::size_t>(1 + sharp)] - '0';
  return 440 * std::pow(2, octave - 4 + (steps.at(note[0]) + sharp) / 12.0);
}

// How strongly a frequency sounds between a twentieth and seven twentieths of a second.
double Strength(const Wav& wav, double frequency) {
  std::complex<double> sum = 0;
  const std::size_t begin = 44100 / 20, end = 7 * 44100 / 20;
  for (std::size_t i = begin; i < end; ++i) {
    const double window =
        std::pow(std::sin(std::numbers::pi * static_cast<double>(i - begin) / (end - begin)), 2);
    sum += window * (wav.left[i] + wav.right[i]) *
           std::polar(1.0, 2 * std::numbers::pi * frequency * static_cast<double>(i) / 44100);
  }
  return std::abs(sum);
}

TEST(Song, SamplesAreInTune) {
  int tested = 0;
  for (const auto& [command, name] : Chart("march7.bme").commands) {
    const std::string voice = name.substr(0, name.find('-'));
    if (voice != "piano" && voice != "horn" && voice != "bass" && voice != "softpiano") continue;
    const Wav wav = ReadWav(March() / name);
    if (wav.left.size() < 44100 * 7 / 10) continue;  // too short to be measured
    int offset = 0;
    double strongest = 0;
    for (int cents = -50; cents <= 50; cents += 10) {
      const double strength = Strength(wav, PromisedFrequency(name) * std::pow(2, cents / 1200.0));
      if (strength <= strongest) continue;
      strongest = strength;
      offset = cents;
    }
    EXPECT_LE(std::abs(offset), 10) << name;
    ++tested;
  }
  EXPECT_GT(tested, 30);
}

TEST(Song, FullPlayLeavesHeadroom) {
  const ChartText& chart = Chart("march7.bme");
  const std::map<int, Wav> samples = SamplesOf(chart);
  const Times times(chart);
  // A slot has one voice: a start cuts off what the slot still plays.
  std::map<int, std::set<std::size_t>> starts;
  for (const Cell& cell : chart.cells) {
    if (cell.channel != 1 && !IsKey(cell.channel)) continue;
    starts[cell.value].insert(
        static_cast<std::size_t>(std::lround(times.At(cell.measure, cell.place) * 44100)));
  }
  const double volume = std::pow(10, -500 / 2000.0);
  std::vector<double> left(110 * 44100), right(110 * 44100);
  for (const auto& [slot, frames] : starts) {
    const Wav& wav = samples.at(slot);
    for (auto frame = frames.begin(); frame != frames.end(); ++frame) {
      const auto next = std::next(frame);
      const std::size_t alone = next == frames.end() ? wav.left.size() : *next - *frame;
      for (std::size_t i = 0; i < std::min(alone, wav.left.size()); ++i) {
        left.at(*frame + i) += volume * wav.left[i];
        right.at(*frame + i) += volume * wav.right[i];
      }
    }
  }
  double peak = 0;
  for (std::size_t i = 0; i < left.size(); ++i)
    peak = std::max({peak, std::fabs(left[i]), std::fabs(right[i])});
  EXPECT_LT(20 * std::log10(peak), -3);
  EXPECT_GT(20 * std::log10(peak), -12);
}

}  // namespace
}  // namespace stock
