// The stock songs beside the march: what a player finds in each of their charts, and how loud all of them
// are.
#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>
#include <set>
#include <tuple>

#include "assets/maker/loudness.h"
#include "assets/maker/mixdown.h"
#include "assets/maker/mp3_lead.h"
#include "chart_text.h"
#include "platform/mp3.h"
#include "sound/mp3_header.h"
#include "tests/support/whole_file.h"
#include "wav.h"

namespace stock {
namespace {

namespace fs = std::filesystem;

struct Named {
  std::string song, chart;
  int keys;
};

const std::vector<Named> all = {
    {"inkwell", "inkwell5.bms", 5},     {"inkwell", "inkwell7.bme", 7},
    {"inkwell", "inkwell7h.bme", 7},    {"blueprint", "blueprint5.bms", 5},
    {"blueprint", "blueprint7.bme", 7}, {"blueprint", "blueprint7h.bme", 7},
};

bool IsKey(int channel) { return channel >= 11 && channel <= 29; }
bool IsIdle(int channel) { return channel >= 31 && channel <= 49; }
bool IsPicture(int channel) { return channel == 4 || channel == 6 || channel == 7; }

std::size_t NotesOf(const ChartText& chart) {
  return static_cast<std::size_t>(std::count_if(chart.cells.begin(), chart.cells.end(),
                                                [](const Cell& cell) { return IsKey(cell.channel); }));
}

class StockChart : public testing::TestWithParam<Named> {
 protected:
  const fs::path folder = StockSong(GetParam().song);
  const ChartText chart = ReadChart(folder / GetParam().chart);
};

INSTANTIATE_TEST_SUITE_P(Songs, StockChart, testing::ValuesIn(all), [](const auto& each) {
  return each.param.chart.substr(0, each.param.chart.find('.'));
});

TEST_P(StockChart, HasItsJapaneseTitle) {
  // インク瓶の底 and 青写真 in code page 932.
  const std::string inkwell = "\x83\x43\x83\x93\x83\x4E\x95\x72\x82\xCC\x92\xEA ";
  const std::string blueprint = "\x90\xC2\x8E\xCA\x90\x5E ";
  EXPECT_TRUE(chart.commands.at("TITLE").starts_with(GetParam().song == "inkwell" ? inkwell : blueprint));
}

TEST_P(StockChart, LastsFortyFiveToSeventySeconds) {
  const double seconds = Times(chart).At(chart.lastMeasure + 1, 0);
  EXPECT_GE(seconds, 45);
  EXPECT_LE(seconds, 70);
}

TEST_P(StockChart, BeginsWithABarOfLeadIn) {
  for (const Cell& cell : chart.cells) {
    if (IsKey(cell.channel)) {
      EXPECT_GE(cell.measure, 1);
    }
  }
}

TEST_P(StockChart, HasNoTwoNotesInOnePlace) {
  std::set<std::tuple<int, int, double>> places;
  for (const Cell& cell : chart.cells) {
    if (!IsKey(cell.channel)) continue;
    EXPECT_TRUE(places.insert({cell.channel, cell.measure, cell.place}).second)
        << "channel " << cell.channel << ", measure " << cell.measure << ", " << cell.place;
  }
}

TEST_P(StockChart, AsksNoHandForMoreThanThreeNotesAtOnce) {
  std::map<std::pair<int, double>, int> held;
  for (const Cell& cell : chart.cells) {
    if (IsKey(cell.channel)) ++held[{cell.measure, cell.place}];
  }
  for (const auto& [place, notes] : held) EXPECT_LE(notes, 3) << "measure " << place.first;
}

TEST_P(StockChart, DefinesEverySlotThatItsObjectsUseAndUsesAllThatItDefines) {
  std::set<std::string> used, defined;
  for (const Cell& cell : chart.cells) {
    if (cell.channel == 1 || IsKey(cell.channel) || IsIdle(cell.channel))
      used.insert("WAV" + Slot(cell.value));
    if (IsPicture(cell.channel)) used.insert("BMP" + Slot(cell.value));
    if (cell.channel == 8) used.insert("BPM" + Slot(cell.value));
  }
  for (const auto& [command, value] : chart.commands) {
    const std::string kind = command.substr(0, 3);
    if (command.size() == 5 && (kind == "WAV" || kind == "BMP" || kind == "BPM")) defined.insert(command);
  }
  EXPECT_EQ(used, defined);
}

TEST_P(StockChart, NamesOnlyFilesThatExist) {
  int files = 0;
  for (const auto& [command, value] : chart.commands) {
    const bool slot = command.size() == 5 && (command.starts_with("WAV") || command.starts_with("BMP"));
    if (!slot && command != "STAGEFILE") continue;
    EXPECT_TRUE(fs::is_regular_file(folder / value)) << value;
    ++files;
  }
  EXPECT_GT(files, 80);
}

TEST_P(StockChart, UsesItsKeysEvenlyEnough) {
  std::map<int, int> notes;
  for (const int key : {11, 12, 13, 14, 15}) notes[key] = 0;
  if (GetParam().keys == 7) notes[18] = notes[19] = 0;
  int turns = 0, pressed = 0;
  for (const Cell& cell : chart.cells) {
    if (!IsKey(cell.channel)) continue;
    if (cell.channel == 16) {
      ++turns;
      continue;
    }
    ASSERT_TRUE(notes.contains(cell.channel)) << cell.channel;
    ++notes[cell.channel];
    ++pressed;
  }
  const double mean = static_cast<double>(pressed) / GetParam().keys;
  for (const auto& [key, count] : notes) {
    EXPECT_GT(count, 0.4 * mean) << key;
    EXPECT_LT(count, 1.8 * mean) << key;
  }
  EXPECT_GE(turns, 5);
}

TEST_P(StockChart, SoundsTheSameMusicAsTheOthersOfItsSong) {
  const auto music = [](const ChartText& each) {
    std::multiset<std::tuple<int, double, int>> sounds;
    for (const Cell& cell : each.cells) {
      if (cell.channel == 1 || IsKey(cell.channel)) sounds.insert({cell.measure, cell.place, cell.value});
    }
    return sounds;
  };
  EXPECT_EQ(music(chart), music(ReadChart(folder / (GetParam().song + "5.bms"))));
}

TEST_P(StockChart, ShowsPicturesOfTheFrame) {
  for (const auto& [command, value] : chart.commands) {
    if (!command.starts_with("BMP")) continue;
    const std::string bytes = qlm::WholeFile(folder / value);
    if (!bytes.starts_with("BM")) continue;
    EXPECT_EQ(NumberAt(bytes, 18, 4), 256u) << value;
    EXPECT_EQ(NumberAt(bytes, 22, 4), 256u) << value;
  }
}

// A sample as the game hears it: of an MP3 without its first frame.
Wav SoundOf(const fs::path& path) {
  if (path.extension() == ".wav") return ReadWav(path);
  const std::string bytes = qlm::WholeFile(path);
  qlm::MpegData data;
  qlm::MpegFormat format;
  const auto length = static_cast<std::int64_t>(bytes.size());
  if (qlm::FindMpegData(bytes, length, data) != qlm::kDecoded) return {};
  if (qlm::ReadMpegHeader(bytes, data, format) != qlm::kDecoded) return {};
  const platform::DecodedSound decoded =
      platform::DecodeMp3(std::string_view(bytes).substr(static_cast<std::size_t>(data.start)), 1 << 24);
  Wav wav;
  wav.valid = decoded.error == platform::DecodeError::kNone;
  wav.format = 1;
  wav.channels = static_cast<std::uint32_t>(decoded.channels);
  wav.rate = static_cast<std::uint32_t>(decoded.rate);
  wav.bits = 16;
  for (std::size_t at = 0; at < decoded.samples.size(); at += 4) {
    const auto sample = [&](std::size_t place) {
      return static_cast<std::int16_t>(NumberAt(decoded.samples, place, 2)) / 32768.0;
    };
    wav.left.push_back(sample(at));
    wav.right.push_back(sample(at + 2));
  }
  return wav;
}

class StockSounds : public testing::TestWithParam<std::string> {
 protected:
  const fs::path folder = StockSong(GetParam());
  const ChartText easy = ReadChart(folder / (GetParam() + "5.bms"));
};

INSTANTIATE_TEST_SUITE_P(Songs, StockSounds, testing::Values("inkwell", "blueprint"),
                         [](const auto& each) { return each.param; });

TEST_P(StockSounds, ChartsGrowHarder) {
  const std::size_t first = NotesOf(easy), second = NotesOf(ReadChart(folder / (GetParam() + "7.bme"))),
                    third = NotesOf(ReadChart(folder / (GetParam() + "7h.bme")));
  EXPECT_GT(first, 50u);
  EXPECT_GT(second, 2 * first);
  EXPECT_GT(2 * third, 3 * second);
}

TEST_P(StockSounds, BeginAtOnceEndInSilenceAndStayBelowMinusThreeDecibels) {
  for (const auto& [command, value] : easy.commands) {
    if (!command.starts_with("WAV")) continue;
    SCOPED_TRACE(value);
    const Wav wav = SoundOf(folder / value);
    ASSERT_TRUE(wav.valid);
    EXPECT_EQ(wav.format, 1u);
    EXPECT_EQ(wav.channels, 2u);
    EXPECT_EQ(wav.rate, 44100u);
    EXPECT_EQ(wav.bits, 16u);
    EXPECT_LT(PeakDb(wav), -3);
    EXPECT_GT(PeakDb(wav), -30);
    const double late = GetParam() == "blueprint" ? assetmaker::mp3Late / 44.1 : 0;
    EXPECT_LT(StartMs(wav, 0.01), late + 8);
    EXPECT_LE(End(wav, 8), 2 / 32768.0);
  }
}

// The encoder's delay and the lost frame leave a sound where it was written, but for the few samples that it
// is late; 192 kbit/s keep its wave within 20 dB.
TEST(StockSongs, BlueprintsSoundsComeOutOfTheDecoderAsTheyWentIn) {
  const Wav decoded = SoundOf(StockSong("blueprint") / "pluck-c5.mp3");
  ASSERT_TRUE(decoded.valid);
  const assetmaker::Sound made = assetmaker::Render({assetmaker::Voice::pluck, {72}, 0}, 0.5);
  double off = 0, loud = 0;
  for (std::size_t i = 0; i < 10000; ++i) {
    const double wanted = made.left[i], got = decoded.left.at(i + assetmaker::mp3Late);
    off += (got - wanted) * (got - wanted);
    loud += wanted * wanted;
  }
  EXPECT_LT(10 * std::log10(off / loud), -20);
}

// No voice of one song is heard in the other or in the march; drums are for all.
TEST(StockSongs, SharesNoVoiceButDrums) {
  std::map<std::string, std::set<std::string>> voices;
  for (const std::string song : {"march", "inkwell", "blueprint"}) {
    for (const auto& [command, value] : ReadChart(StockSong(song) / (song + "5.bms")).commands) {
      if (!command.starts_with("WAV")) continue;
      const std::string voice = value.substr(0, value.find_first_of("-."));
      if (voice != "bassdrum" && voice != "brush") voices[song].insert(voice);
    }
  }
  std::set<std::string> met;
  for (const auto& [song, names] : voices) {
    EXPECT_GT(names.size(), 5u) << song;
    for (const std::string& name : names) EXPECT_TRUE(met.insert(name).second) << name << " in " << song;
  }
}

assetmaker::Sound MixOf(const std::string& song) {
  const std::string text = qlm::WholeFile(QLM_SOURCE_DIR "/assets/songs/" + song + ".score");
  assetmaker::ScoreError error;
  const auto score = assetmaker::ReadScore(text, error);
  EXPECT_TRUE(score) << error.line << ": " << error.message;
  if (!score) return {};
  assetmaker::SampleBank bank;
  EXPECT_TRUE(bank.Fill(*score));
  return assetmaker::Mixdown(*score, bank, bank.RenderAll());
}

TEST(StockSongs, AreAsLoudAsTheMarchWithoutClipping) {
  const double march = assetmaker::ProgrammeLoudness(MixOf("march"));
  for (const std::string song : {"inkwell", "blueprint"}) {
    const assetmaker::Sound mix = MixOf(song);
    EXPECT_NEAR(assetmaker::ProgrammeLoudness(mix), march, 1) << song;
    EXPECT_LT(assetmaker::TruePeakDb(mix), -3) << song;
  }
}

struct CourseRow {
  std::string title, path;
  std::uint32_t level = 0, lengthMs = 0;
};

// The rows behind the head of a course file: texts with their length in front, and numbers of 4 bytes.
std::vector<CourseRow> RowsOf(const std::string& bytes) {
  std::vector<CourseRow> rows;
  std::size_t at = 32;
  const auto text = [&] {
    const std::size_t size = NumberAt(bytes, at, 2);
    at += 2 + size;
    return bytes.substr(at - size, size);
  };
  const auto number = [&] { return NumberAt(bytes, (at += 4) - 4, 4); };
  while (at < bytes.size()) {
    CourseRow row;
    row.title = text(), text(), text();
    number(), number();
    row.level = number();
    text();
    number(), number(), number();
    row.lengthMs = number();
    text();
    number(), number();
    row.path = text();
    rows.push_back(row);
  }
  return rows;
}

TEST(StockCourses, HoldThreeSongsEachThatAreThere) {
  for (const std::string name : {"First Week", "Evening at the Desk"}) {
    SCOPED_TRACE(name);
    const std::string bytes = qlm::WholeFile(SystemSounds().parent_path() / "courselist" / (name + ".qcl"));
    ASSERT_TRUE(bytes.starts_with("qlmcourse2              "));
    EXPECT_GT(NumberAt(bytes, 24, 1), 0u);
    EXPECT_EQ(NumberAt(bytes, 25, 1), 3u);
    EXPECT_EQ(NumberAt(bytes, 26, 2), 0u);
    const std::vector<CourseRow> rows = RowsOf(bytes);
    ASSERT_EQ(rows.size(), 3u);
    std::uint32_t length = 0, level = 0;
    for (CourseRow row : rows) {
      EXPECT_FALSE(row.title.empty());
      EXPECT_GE(row.level, level);  // from the easiest to the hardest
      level = row.level;
      length += row.lengthMs;
      constexpr std::string_view kHere = "<CURRENTDIR>";
      ASSERT_TRUE(row.path.starts_with(kHere)) << row.path;
      row.path.replace(0, kHere.size(), QLM_BINARY_DIR);
      std::replace(row.path.begin(), row.path.end(), '\\', '/');
      EXPECT_TRUE(fs::is_regular_file(row.path)) << row.path;
    }
    EXPECT_EQ(NumberAt(bytes, 28, 4), length);
    EXPECT_GT(length, 3 * 45000u);
  }
}

}  // namespace
}  // namespace stock
