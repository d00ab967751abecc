// Sounds that are decoded on other cores while a chart is read: nothing but the time shows it.
#include "chart/sounds_ahead.h"

#include <algorithm>

#include "base/hooks.h"
#include "base/paths.h"
#include "chart/loading.h"
#include "sound/decoder.h"
#include "sound/slots.h"
#include "state/chart.h"
#include "state/courses.h"
#include "state/options.h"
#include "state/session.h"
#include "state/settings.h"
#include "tests/chart/chart_test.h"
#include "tests/sound/silent_frames.h"
#include "tools/media_files/wav.h"

namespace qlm {
namespace {

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
};

// What the slots hold: length and rate, 0 for none.
std::vector<std::pair<float, int32_t>> Slots() {
  std::vector<std::pair<float, int32_t>> slots;
  for (int32_t slot = 0; slot <= 255; ++slot) {
    slots.emplace_back(WavLengthMs[slot], WavBuffer[slot] != nullptr ? WavBuffer[slot]->Frequency() : 0);
  }
  return slots;
}

using Names = std::vector<std::pair<int32_t, Text>>;

// Sounds of all kinds, each many times.
Names ManySounds() {
  const Text files[] = {u"layer1.mp3", u"hit.wav",  u"layer3.wav", u"none.wav",
                        u"short.mp3",  u"half.mp3", u"empty.mp3",  u"HIT.WAV"};
  Names names;
  for (int32_t slot = 16; slot < 136; ++slot) names.emplace_back(slot, files[slot * 5 % 8]);
  return names;
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

  ReleaseAllSounds();
  WavLengthMs.Clear();
  log.clear();
  for (const auto& [slot, file] : names) {
    WavFile[slot] = Join(AppPath, u"\\song\\", file);
    loadwav(slot);
  }
  const std::vector<Text> oneByOne = SoundLines();
  ASSERT_EQ(ahead.size(), oneByOne.size());
  for (size_t i = 0; i < ahead.size(); ++i) EXPECT_EQ(Utf8(ahead[i]), Utf8(oneByOne[i])) << i;
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
}

}  // namespace
}  // namespace qlm
