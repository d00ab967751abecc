// Sounds that are decoded on other cores while a chart is read: nothing but the time shows it.
#include "chart/sounds_ahead.h"

#include <algorithm>

#include "base/hooks.h"
#include "base/paths.h"
#include "chart/loading.h"
#include "platform/clock.h"
#include "sound/decoder.h"
#include "sound/slots.h"
#include "state/chart.h"
#include "state/courses.h"
#include "state/options.h"
#include "state/session.h"
#include "state/settings.h"
#include "state/sounds.h"
#include "tests/chart/chart_test.h"
#include "tests/sound/silent_frames.h"
#include "tools/media_files/encoded.h"
#include "tools/media_files/wav.h"

namespace qlm {
namespace {

// Slots and the files that they name.
using Names = std::vector<std::pair<int32_t, Text>>;

class SoundsAheadTest : public ChartTest {
 protected:
  SoundsAheadTest() {
    WAVLoadmode = 0;
    platform::OpenSoundDevice(platform::SoundOutput::kOffline);
    WriteData(u"song\\layer1.mp3", kLayer1.Times(40));
    WriteData(u"song\\layer3.mp3", kLayer3.Times(20));
    WriteData(u"song\\half.mp3", kMpeg2.Times(10) + kLayer3.Times(3));
    WriteData(u"song\\short.mp3", "too short");
    WriteData(u"song\\empty.mp3", kLayer3.header + std::string(500, '\0'));
    WriteData(u"song\\hit.wav", media::WavBytes(std::vector<int16_t>(500, 7), 1, 44100));
  }
  ~SoundsAheadTest() override {
    hooks.loadPump = nullptr;
    ReleaseAllSounds();
    platform::CloseSoundDevice();
  }

  // The lines about sounds.
  std::vector<Text> SoundLines() const {
    std::vector<Text> lines;
    for (const Text& line : log) {
      const TextView words = Trim(line);
      if (words == u"all lines compiled") break;
      if (words.starts_with(u"RANDOM")) continue;
      if (!lines.empty() || words.starts_with(u"loadwav")) lines.emplace_back(words);
    }
    return lines;
  }
  // All sounds anew, none of them ahead of its turn.
  void LoadOneByOne(const Names& names) {
    ReleaseAllSounds();
    WavLengthMs.Clear();
    log.clear();
    for (const auto& [slot, file] : names) {
      WavFile[slot] = Join(AppPath, u"\\song\\", file);
      loadwav(slot);
    }
  }
  void ExpectLines(const std::vector<Text>& expected) const {
    const std::vector<Text> lines = SoundLines();
    ASSERT_EQ(expected.size(), lines.size());
    for (size_t i = 0; i < lines.size(); ++i) EXPECT_EQ(Utf8(expected[i]), Utf8(lines[i])) << i;
  }
};

// What the slots hold: length and rate, 0 for none.
std::vector<std::pair<float, int32_t>> Slots() {
  std::vector<std::pair<float, int32_t>> slots;
  for (int32_t slot = 0; slot <= 255; ++slot) {
    slots.emplace_back(WavLengthMs[slot], WavBuffer[slot] != nullptr ? WavBuffer[slot]->Frequency() : 0);
  }
  return slots;
}

// Sounds of all kinds, each many times.
Names ManySounds() {
  const Text files[] = {u"layer1.mp3", u"hit.wav",  u"layer3.wav", u"none.wav",
                        u"short.mp3",  u"half.mp3", u"empty.mp3",  u"HIT.WAV"};
  Names names;
  for (int32_t slot = 16; slot < 136; ++slot) names.emplace_back(slot, files[slot * 5 % 8]);
  return names;
}

// In the base of the wide reading.
Text SlotNameOf(int32_t slot) {
  constexpr TextView kDigits = u"0123456789ABCDEFGHIJKLMNOPQRSTUVWXYZ";
  return {kDigits[static_cast<size_t>(slot / 36)], kDigits[static_cast<size_t>(slot % 36)]};
}

Text WavLine(int32_t slot, TextView file) {
  return Join(u"#WAV", slot < 16 ? u"0" : u"", Hex(static_cast<uint32_t>(slot)), u" ", file);
}

// Behind many sounds: a block that is passed over, a slot that is named again, the slot that never sounds,
// and a sound behind the first data.
TEST_F(SoundsAheadTest, GivesTheSameAsOneByOne) {
  Names names = ManySounds();
  std::vector<Text> lines;
  for (const auto& [slot, file] : names) lines.push_back(WavLine(slot, file));
  lines.insert(lines.end(), {u"#RANDOM 1", u"#IF 2", u"#WAVA0 layer1.mp3", u"#WAVA1 layer3.mp3", u"#ENDIF"});
  const Names others = {{17, u"layer3.mp3"}, {17, u"layer3.mp3"}, {17, u"layer1.mp3"},
                        {0, u"layer1.mp3"},  {162, u"half.mp3"},  {163, u"layer3.mp3"}};
  for (const auto& [slot, file] : others) {
    if (slot == 163) lines.push_back(u"#00111:11");
    lines.push_back(WavLine(slot, file));
    names.emplace_back(slot, file);
  }
  BMSLoad(WriteChart(lines));
  const std::vector<Text> ahead = SoundLines();
  const auto slots = Slots();
  EXPECT_GT(std::ranges::count(ahead, u"acmStreamCloseに失敗\n続ける？"), 60);
  EXPECT_FLOAT_EQ(WavLengthMs[24], 39 * 384 / 32.0F);  // 24 * 5 % 8 is 0: all frames but the first

  LoadOneByOne(names);
  ExpectLines(ahead);
  EXPECT_EQ(slots, Slots());
}

TEST_F(SoundsAheadTest, ASoundThatIsHeldIsNotDecodedAgain) {
  const Text chart = WriteChart({WavLine(1, u"layer1.mp3"), WavLine(2, u"layer3.mp3"), u"#00111:01"});
  BMSLoad(chart);
  const platform::SoundBuffer* const first = WavBuffer[1].get();
  log.clear();
  BMSLoad(chart);
  EXPECT_EQ(WavBuffer[1].get(), first);
  EXPECT_EQ(SoundLines(), (std::vector<Text>{u"loadwav: 1 > cancelled", u"loadwav: 2 > cancelled"}));
}

TEST_F(SoundsAheadTest, ACourseThatLoadsAllAtOnceGetsThemToo) {
  CourseLoadMode = 2;
  for (const TextView file : {u"layer1.mp3", u"layer3.mp3"}) {
    SongEntry song;
    song.path =
        WriteChart({WavLine(1, file), WavLine(2, u"half.mp3"), u"#00111:01"}, Join(u"song\\", file, u".bms"));
    CourseSongs.push_back(song);
  }
  numsongs = 2;
  BMSLoadCourse();
  ASSERT_NE(CourseWavBuffer[0][1], nullptr);
  ASSERT_NE(CourseWavBuffer[1][1], nullptr);
  EXPECT_EQ(CourseWavBuffer[0][1]->Frequency(), 32000);
  EXPECT_EQ(CourseWavBuffer[1][1]->Frequency(), 48000);
  EXPECT_EQ(CourseWavBuffer[1][2]->Frequency(), 24000);
}

// As GivesTheSameAsOneByOne, with the sounds of today.
TEST_F(SoundsAheadTest, TheWideReadingGivesTheSameAsOneByOneToo) {
  WideCharts = true;
  const auto tone = [](size_t frames) { return std::vector<float>(frames, 0.25F); };
  WriteData(u"song\\bell.ogg", media::EncodedSound(media::Coding::kVorbis, tone(9000), 2, 44100));
  WriteData(u"song\\drum.flac", media::EncodedSound(media::Coding::kFlac, tone(3000), 1, 22050));
  WriteData(u"song\\bad.ogg", "OggS" + std::string(500, 'x'));
  const Text files[] = {u"bell.wav", u"layer1.wav", u"DRUM.WAV", u"none.wav", u"bad.wav",
                        u"hit.wav",  u"half.mp3",   u"bell.ogg", u"short.mp3"};
  std::vector<Text> lines;
  Names names;
  for (int32_t slot = 16; slot < 136; ++slot) {
    names.emplace_back(slot, files[slot % 9]);
    lines.push_back(Join(u"#WAV", SlotNameOf(slot), u" ", files[slot % 9]));
  }
  BMSLoad(WriteChart(lines));
  const std::vector<Text> ahead = SoundLines();
  const auto slots = Slots();
  EXPECT_EQ(std::ranges::count(ahead, u"44100Hz 16bits 2ch 16bps 176400byte/sec 0bytes"), 28);
  EXPECT_EQ(std::ranges::count(ahead, u"# bad.ogg: it is damaged, or of a coding that is not known"), 13);
  EXPECT_EQ(slots[18], (std::pair(WavLengthMs[18], 44100)));  // 18 is 0 of 9: bell.ogg
  EXPECT_EQ(slots[20], (std::pair(3000 / 22.05F, 22050)));

  LoadOneByOne(names);
  ExpectLines(ahead);
  EXPECT_EQ(slots, Slots());
}

// 18 sounds of 24 MiB, far more than the threads have room for ahead of their turns.
TEST_F(SoundsAheadTest, LongSoundsWaitForTheirTurnAndAreWhole) {
  WideCharts = true;
  const std::string flac =
      media::EncodedSound(media::Coding::kFlac, std::vector<float>(size_t{12} << 20), 1, 44100);
  std::vector<Text> lines;
  for (int32_t slot = 16; slot < 34; ++slot) {
    WriteData(Join(u"song\\long", slot, u".flac"), flac);
    lines.push_back(Join(u"#WAV", SlotNameOf(slot), u" long", slot, u".wav"));
  }
  LoadBudget = 100;
  BMSLoad(WriteChart(lines));
  for (int32_t slot = 16; slot < 20; ++slot) {
    ASSERT_NE(WavBuffer[slot], nullptr);
    EXPECT_FLOAT_EQ(WavLengthMs[slot], (12 << 20) / 44.1F);
  }
  for (int32_t slot = 20; slot < 34; ++slot) EXPECT_EQ(WavBuffer[slot], nullptr);
  EXPECT_EQ(platform::SoundBytesHeld(), int64_t{96} << 20);
}

TEST_F(SoundsAheadTest, TheWideLoadTellsHowFarItIs) {
  WideCharts = true;
  static std::vector<std::pair<int32_t, int32_t>> told;
  told.clear();
  hooks.loadPump = [] {
    told.emplace_back(loadProgress.done, loadProgress.all);
    platform::UseVirtualClock(platform::Now() + 20);
  };
  BMSLoad(WriteChart({WavLine(1, u"hit.wav"), u"#TITLE a", WavLine(2, u"none.wav"), u"#BMP01 none.bmp",
                      u"#00111:01", WavLine(3, u"hit.wav")}));
  EXPECT_EQ(told, (std::vector<std::pair<int32_t, int32_t>>{{0, 3}, {1, 3}, {2, 3}, {3, 3}}));
  EXPECT_EQ(loadProgress.all, 0);
  told.clear();
  WideCharts = false;
  BMSLoad(WriteChart({WavLine(1, u"hit.wav"), u"#00111:01"}));
  EXPECT_EQ(told, (std::vector<std::pair<int32_t, int32_t>>{{0, 0}}));
}

int pumps;

// Four hours of a sound, so that it is surely still in work when it is waited for.
TEST_F(SoundsAheadTest, EventsRunWhileALongSoundIsDecodedAndOneMayEndTheLoad) {
  WriteData(u"song\\long.mp3", kMpeg25.Times(200000));
  pumps = 0;
  hooks.loadPump = [] {
    if (++pumps == 3) LoadAbort = true;
  };
  BMSLoad(WriteChart({WavLine(1, u"long.mp3"), WavLine(2, u"layer1.mp3"), u"#00111:01"}));
  EXPECT_GE(pumps, 3);
  EXPECT_TRUE(LoadAbort);
  EXPECT_TRUE(Logged(u"        acmStreamConvertに失敗")) << log.size();
  EXPECT_EQ(WavBuffer[2], nullptr);

  hooks.loadPump = nullptr;
  WriteData(u"song\\long.mp3", kMpeg25.Times(20));
  BMSLoad(WriteChart({WavLine(1, u"long.mp3"), u"#00111:01"}));
  EXPECT_NE(WavBuffer[1], nullptr) << "the next load loads what was given up";
}

// A quarter of an hour.
TEST_F(SoundsAheadTest, OneMayEndAWideLoadToo) {
  WideCharts = true;
  WriteData(u"song\\long.flac",
            media::EncodedSound(media::Coding::kFlac, std::vector<float>(size_t{40} << 20), 1, 44100));
  pumps = 0;
  hooks.loadPump = [] {
    if (++pumps == 2) LoadAbort = true;
  };
  BMSLoad(WriteChart({WavLine(1, u"long.wav"), WavLine(2, u"layer1.mp3"), u"#00111:01"}));
  EXPECT_GE(pumps, 2);
  EXPECT_EQ(WavBuffer[1], nullptr);
  EXPECT_EQ(WavBuffer[2], nullptr);
  EXPECT_TRUE(ObjsOf(11).empty()) << "the data is not read";
}

}  // namespace
}  // namespace qlm
