// The sound slots: what a load does and logs, what the cache keeps, and the walks over all slots.
#include "sound/slots.h"

#include "platform/clock.h"
#include "sound/play.h"
#include "state/chart.h"
#include "state/message.h"
#include "state/options.h"
#include "state/session.h"
#include "state/settings.h"
#include "state/timeline.h"
#include "tests/sound/sound_test.h"

namespace qlm {
namespace {

class SoundSlots : public SoundTest {
 protected:
  void LoadSound(int32_t slot, TextView name, const Samples& samples, uint32_t rate = 44100) {
    NameSound(slot, name, samples, rate);
    loadwav(slot);
    ASSERT_NE(WavBuffer[slot], nullptr);
  }
  void NameCourseSound(int32_t song, int32_t slot, TextView name, const Samples& samples) {
    CourseWavFile[song][slot] = WriteData(name, MonoWav(samples));
  }
  Samples Play(int32_t slot, size_t frames) {
    WavBuffer[slot]->Play(false);
    return Render(frames);
  }
};

TEST_F(SoundSlots, ALoadFillsTheSlotAndTellsOfIt) {
  const Text path = NameSound(31, u"kick.wav", Samples(11025, 1), 22050);
  loadwav(31);
  EXPECT_EQ(log, std::vector<Text>({u"loadwav: 31", u"CreateSndBuf:kick.wav", u"> RIFF WAVE Header detected.",
                                    u"> Format ID = 1 : LinerPCM file", u"> complete in 0 ms"}));
  EXPECT_EQ(message.text, u"WAV LOAD: 1F (in 0ms)");
  EXPECT_EQ(WavHeldName[31], path);
  EXPECT_EQ(WavLoaded[31], 255);
  EXPECT_EQ(WavFrequency[31], 22050);
  EXPECT_EQ(WavLengthMs[31], 500.0F);
}

TEST_F(SoundSlots, SlotZeroIsNeverLoaded) {
  NameSound(0, u"kick.wav", {1});
  loadwav(0);
  EXPECT_EQ(WavBuffer[0], nullptr);
  EXPECT_EQ(WavLoaded[0], 0);
  EXPECT_TRUE(log.empty());
}

TEST_F(SoundSlots, SlotsOutsideTheTablesLoadNothing) {
  loadwav(-1);
  loadwav(256);
  EXPECT_EQ(log, std::vector<Text>({u"loadwav: -1 > cancelled", u"loadwav: 256 > cancelled"}));
  log.clear();
  LoadCourseSound(0, 256);
  LoadCourseSound(128, 1);
  ReleaseUnnamedSound(-1);
  EXPECT_TRUE(log.empty());
}

TEST_F(SoundSlots, AHeldFileIsNotLoadedAgain) {
  LoadSound(1, u"kick.wav", {1, 2, 3});
  const SoundBufferPtr buffer = WavBuffer[1];
  log.clear();
  WavLoaded[1] = 0;
  loadwav(1);
  EXPECT_EQ(log, std::vector<Text>({u"loadwav: 1 > cancelled"}));
  EXPECT_EQ(WavBuffer[1], buffer);
  EXPECT_EQ(WavLoaded[1], 255);
}

TEST_F(SoundSlots, ACancelledLoadStillMakesTheSlotReady) {
  LoadSound(1, u"kick.wav", {10, 20, 30, 40});
  WavBuffer[1]->Play(false);
  EXPECT_EQ(Render(1), Samples({10}));
  WavBuffer[1]->SetVolume(-2000);
  RealHiSpeed = 2;
  loadwav(1);
  EXPECT_EQ(WavBuffer[1]->Frequency(), 88200);
  EXPECT_EQ(Render(3), Samples({10, 30, 0}));  // rewound, at full volume, at twice the speed, still playing
}

// The reader clears the load state of each slot that a chart names.
TEST_F(SoundSlots, AChartReplayedAtOnceLoadsNothing) {
  for (int32_t slot = 1; slot <= 3; ++slot)
    LoadSound(slot, Join(slot, u".wav"), {static_cast<int16_t>(slot)});
  log.clear();
  for (int32_t slot = 1; slot <= 3; ++slot) {
    WavLoaded[slot] = 0;
    loadwav(slot);
  }
  for (int32_t slot = 1; slot <= 3; ++slot) ReleaseUnnamedSound(slot);
  EXPECT_EQ(log, std::vector<Text>(
                     {u"loadwav: 1 > cancelled", u"loadwav: 2 > cancelled", u"loadwav: 3 > cancelled"}));
  for (int32_t slot = 1; slot <= 3; ++slot) EXPECT_NE(WavBuffer[slot], nullptr);
}

TEST_F(SoundSlots, TheHeldNameIsComparedExactly) {
  LoadSound(1, u"kick.wav", {1});
  WavFile[1] = Join(WavFile[1].substr(0, WavFile[1].size() - 8), u"KICK.wav");
  log.clear();
  loadwav(1);
  EXPECT_TRUE(Logged(u"CreateSndBuf:KICK.wav"));
  EXPECT_EQ(WavHeldName[1], WavFile[1]);
}

TEST_F(SoundSlots, AnotherFileReplacesTheBuffer) {
  LoadSound(1, u"a.wav", {1});
  LoadSound(1, u"b.wav", {2});
  EXPECT_EQ(Play(1, 1), Samples({2}));
}

TEST_F(SoundSlots, ASlotThatTheChartNoLongerNamesIsReleased) {
  LoadSound(1, u"a.wav", {1});
  LoadSound(2, u"b.wav", {2});
  WavFile[1].clear();
  ReleaseUnnamedSound(1);
  ReleaseUnnamedSound(2);
  EXPECT_EQ(WavBuffer[1], nullptr);
  EXPECT_TRUE(WavHeldName[1].empty());
  EXPECT_NE(WavBuffer[2], nullptr);
}

TEST_F(SoundSlots, ACorrectedNameHoldsUntilTheChartIsReadAnew) {
  const Text mp3 = WriteData(u"kick.mp3", MonoWav({5}));
  const Text given = Join(mp3.substr(0, mp3.size() - 3), u"wav");
  WavFile[1] = given;
  loadwav(1);
  EXPECT_EQ(WavHeldName[1], mp3);
  EXPECT_EQ(WavFile[1], mp3);
  ReleaseUnnamedSound(1);
  EXPECT_EQ(Play(1, 1), Samples({5}));
  log.clear();
  loadwav(1);
  EXPECT_EQ(log, std::vector<Text>({u"loadwav: 1 > cancelled"}));
  log.clear();
  WavFile[1] = given;
  loadwav(1);
  EXPECT_EQ(log, std::vector<Text>({u"loadwav: 1", u"CreateSndBuf:kick.mp3", u"ファイルサイズが小さすぎます",
                                    u"> complete in 0 ms"}));
}

TEST_F(SoundSlots, ACorrectedNameHoldsInACoursesTableToo) {
  const Text mp3 = WriteData(u"kick.mp3", MonoWav({5}));
  const Text given = Join(mp3.substr(0, mp3.size() - 3), u"wav");
  CourseMode = true;
  CourseSong = 2;
  CourseWavFile[2][1] = given;
  LoadCourseSound(2, 1);
  EXPECT_EQ(CourseWavFile[2][1], mp3);
  CourseWavFile[2][1] = given;
  GameState = kStatePlay;
  loadwav(1);
  EXPECT_EQ(CourseWavFile[2][1], mp3);
  EXPECT_EQ(WavHeldName[1], mp3);
  log.clear();
  loadwav(1);
  EXPECT_EQ(log, std::vector<Text>({u"loadwav2: 1 > cancelled"}));
}

TEST_F(SoundSlots, AMissingFileLeavesASilentSlotThatCountsAsLoaded) {
  WavFile[1] = u"\\nowhere\\kick.wav";
  loadwav(1);
  EXPECT_EQ(log, std::vector<Text>({u"loadwav: 1", u"LoadWav:kick.wav - ERROR", u"> complete in 0 ms"}));
  EXPECT_EQ(WavBuffer[1], nullptr);
  EXPECT_EQ(WavHeldName[1], WavFile[1]);
  EXPECT_EQ(WavLoaded[1], 255);
  log.clear();
  loadwav(1);
  EXPECT_EQ(log, std::vector<Text>({u"loadwav: 1 > cancelled"}));
}

TEST_F(SoundSlots, AMissingFileGivesBackTheSoundBefore) {
  LoadSound(1, u"a.wav", {1});
  WavFile[1] = u"\\nowhere\\kick.wav";
  loadwav(1);
  EXPECT_EQ(WavBuffer[1], nullptr);
}

TEST_F(SoundSlots, AFormatThatFailsIsLoggedWithItsNumber) {
  WavFileBytes file;
  file.bits = 24;
  file.data = "abcdef";
  WavFile[1] = WriteData(u"kick.wav", file.Bytes());
  loadwav(1);
  EXPECT_EQ(log, std::vector<Text>({u"loadwav: 1", u"CreateSndBuf:kick.wav", u"ファイルサイズが小さすぎます",
                                    u"> Err[-2005401500]: DSERR_BADFORMAT", u"> complete in 0 ms"}));
  EXPECT_EQ(WavLoaded[1], 0);
  EXPECT_EQ(WavHeldName[1], WavFile[1]);
  EXPECT_EQ(WavBuffer[1], nullptr);
  EXPECT_FALSE(message.up);
  log.clear();
  loadwav(1);
  EXPECT_EQ(log, std::vector<Text>({u"loadwav: 1 > cancelled"}));
  EXPECT_EQ(WavLoaded[1], 255);
}

TEST_F(SoundSlots, OutOfMemoryAtOneSlotDoesNotStopTheNext) {
  WavFileBytes file;
  file.dataSize = 0x7FFFFFFF;
  WavFile[1] = WriteData(u"large.wav", file.Bytes());
  loadwav(1);
  EXPECT_TRUE(Logged(u"> Err[7]: DSERR_OUTOFMEMORY"));
  LoadSound(2, u"small.wav", {3});
  EXPECT_EQ(Play(2, 1), Samples({3}));
}

TEST_F(SoundSlots, EmptyDataIsAnInvalidParameter) {
  NameSound(1, u"empty.wav", {});
  loadwav(1);
  EXPECT_TRUE(Logged(u"> Err[-2147024809]: DSERR_INVALIDPARAM"));
}

// The numbers are 0x88780064, 0x887800AA, 7, 0x80004001, 0x80070057, 0x8878000A and 0x88780032, with a sign.
TEST_F(SoundSlots, EachReasonOfAFailedLoadHasItsWord) {
  WavFile[1] = u"\\song\\kick.wav";
  EXPECT_EQ(LoadErrorLine(-2005401500, 1), u"> Err[-2005401500]: DSERR_BADFORMAT");
  EXPECT_EQ(LoadErrorLine(-2005401430, 1), u"> Err[-2005401430]: DSERR_UNINITIALIZED");
  EXPECT_EQ(LoadErrorLine(7, 1), u"> Err[7]: DSERR_OUTOFMEMORY");
  EXPECT_EQ(LoadErrorLine(-2147467263, 1), u"> Err[-2147467263]: DSERR_UNSUPPORTED");
  EXPECT_EQ(LoadErrorLine(-2147024809, 1), u"> Err[-2147024809]: DSERR_INVALIDPARAM");
  EXPECT_EQ(LoadErrorLine(-2005401590, 1), u"> Err[-2005401590]: DSERR_ALLOCATED");
  EXPECT_EQ(LoadErrorLine(-2005401550, 1), u"> Err[-2005401550]: other error : \\song\\kick.wav");
}

TEST_F(SoundSlots, WithoutADeviceEachLoadSaysSo) {
  platform::CloseSoundDevice();
  NameSound(1, u"kick.wav", {1});
  loadwav(1);
  EXPECT_TRUE(Logged(u"> Err[-2005401430]: DSERR_UNINITIALIZED"));
  PlayWav(1, 0, 0);
}

TEST_F(SoundSlots, TheSpeedOfThePlayChangesTheFrequency) {
  RealHiSpeed = 1.5F;
  LoadSound(1, u"a.wav", {1}, 22050);
  EXPECT_EQ(WavFrequency[1], 22050);
  EXPECT_EQ(WavBuffer[1]->Frequency(), 33075);
}

// 22051 * 1.5 = 33076.5, 22053 * 1.5 = 33079.5.
TEST_F(SoundSlots, AFrequencyAtExactlyOneHalfRoundsToEven) {
  RealHiSpeed = 1.5F;
  LoadSound(1, u"a.wav", {1}, 22051);
  LoadSound(2, u"b.wav", {1}, 22053);
  EXPECT_EQ(WavBuffer[1]->Frequency(), 33076);
  EXPECT_EQ(WavBuffer[2]->Frequency(), 33080);
}

TEST_F(SoundSlots, AChangeOfSpeedReachesEveryBuffer) {
  LoadSound(1, u"a.wav", {1}, 44100);
  LoadSound(255, u"b.wav", {1}, 11025);
  RealHiSpeed = 0.5F;
  ApplySoundSpeed();
  EXPECT_EQ(WavBuffer[1]->Frequency(), 22050);
  EXPECT_EQ(WavBuffer[255]->Frequency(), 5512);  // 5512.5
  EXPECT_EQ(loopCounter, 256);
}

TEST_F(SoundSlots, AFrequencyOutOfRangeIsLeftAsItWas) {
  LoadSound(1, u"a.wav", {1}, 44100);
  RealHiSpeed = 5;
  ApplySoundSpeed();
  EXPECT_EQ(WavBuffer[1]->Frequency(), 44100);
  RealHiSpeed = 1e30F;
  ApplySoundSpeed();
  EXPECT_EQ(WavBuffer[1]->Frequency(), 44100);
}

TEST_F(SoundSlots, ALengthWithoutARateIsZero) {
  WavFileBytes file;
  file.bytesPerSecond = 0;
  file.data = SampleBytes({1, 2});
  WavFile[1] = WriteData(u"a.wav", file.Bytes());
  loadwav(1);
  EXPECT_NE(WavBuffer[1], nullptr);
  EXPECT_EQ(WavLengthMs[1], 0.0F);
}

TEST_F(SoundSlots, APlayedCourseLoadsTheSongsOwnFile) {
  NameSound(5, u"plain.wav", {1});
  NameCourseSound(2, 5, u"song.wav", {2});
  CourseMode = true;
  CourseSong = 2;
  GameState = kStatePlay;
  loadwav(5);
  EXPECT_EQ(log, std::vector<Text>({u"loadwav: 5", u"CreateSndBuf:song.wav", u"ファイルサイズが小さすぎます",
                                    u"> complete in 0 ms"}));
  EXPECT_TRUE(CourseWavLoaded[2][5]);
  EXPECT_EQ(Play(5, 1), Samples({2}));
  log.clear();
  loadwav(5);
  EXPECT_EQ(log, std::vector<Text>({u"loadwav2: 5 > cancelled"}));
}

TEST_F(SoundSlots, ACourseOutsideThePlayLoadsThePlainFile) {
  NameSound(5, u"plain.wav", {1});
  NameCourseSound(0, 5, u"song.wav", {2});
  CourseMode = true;
  loadwav(5);
  EXPECT_FALSE(CourseWavLoaded[0][5]);
  EXPECT_EQ(Play(5, 1), Samples({1}));
}

TEST_F(SoundSlots, ASongOutsideTheTablesKeepsTheSlotAsItIs) {
  LoadSound(5, u"plain.wav", {1});
  CourseMode = true;
  CourseSong = 128;
  GameState = kStatePlay;
  loadwav(5);
  EXPECT_TRUE(Logged(u"loadwav2: 5 > cancelled"));
  EXPECT_NE(WavBuffer[5], nullptr);
}

TEST_F(SoundSlots, ASongThatDoesNotNameTheSlotSilencesIt) {
  CourseMode = true;
  GameState = kStatePlay;
  NameCourseSound(0, 5, u"song.wav", {2});
  loadwav(5);
  CourseSong = 1;
  log.clear();
  loadwav(5);
  EXPECT_EQ(log, std::vector<Text>({u"loadwav: 5", u"LoadWav: - ERROR", u"> complete in 0 ms"}));
  EXPECT_EQ(WavBuffer[5], nullptr);
}

TEST_F(SoundSlots, ACourseSoundIsCreatedAtOnce) {
  NameCourseSound(3, 7, u"song.wav", {2});
  LoadCourseSound(3, 7);
  EXPECT_EQ(log, std::vector<Text>({u"CreateSndBuf:song.wav", u"ファイルサイズが小さすぎます"}));
  EXPECT_TRUE(CourseWavLoaded[3][7]);
  ASSERT_NE(CourseWavBuffer[3][7], nullptr);
  CourseWavBuffer[3][7]->Play(false);
  EXPECT_EQ(Render(1), Samples({2}));
  CourseWavFile[3][7] = u"\\nowhere\\none.wav";
  LoadCourseSound(3, 7);
  EXPECT_EQ(CourseWavBuffer[3][7], nullptr);
}

TEST_F(SoundSlots, APauseStopsWhatPlaysAndAResumeGoesOn) {
  LoadSound(1, u"a.wav", {1, 2, 3, 4});
  LoadSound(2, u"b.wav", {100, 200, 300, 400});
  WavWasPlaying[3] = true;
  WavBuffer[1]->Play(false);
  EXPECT_EQ(Render(2), Samples({1, 2}));
  StopPlayingSounds();
  EXPECT_EQ(loopCounter, 256);
  EXPECT_TRUE(WavWasPlaying[1]);
  EXPECT_FALSE(WavWasPlaying[2]);
  EXPECT_FALSE(WavWasPlaying[3]);
  EXPECT_EQ(Render(2), Samples({0, 0}));
  loopCounter = 0;
  ResumeStoppedSounds();
  EXPECT_EQ(loopCounter, 256);
  EXPECT_EQ(Render(3), Samples({3, 4, 0}));
}

TEST_F(SoundSlots, AnEndedSoundIsNotResumed) {
  LoadSound(1, u"a.wav", {1, 2});
  WavBuffer[1]->Play(false);
  Render(3);
  StopPlayingSounds();
  ResumeStoppedSounds();
  EXPECT_EQ(Render(1), Samples({0}));
}

TEST_F(SoundSlots, ARewindStopsEverySound) {
  LoadSound(1, u"a.wav", {1, 2, 3, 4});
  WavBuffer[1]->Play(true);
  Render(2);
  RewindSounds();
  EXPECT_EQ(loopCounter, 256);
  EXPECT_EQ(Render(1), Samples({0}));
  EXPECT_EQ(Play(1, 2), Samples({1, 2}));
}

TEST_F(SoundSlots, AnUnloadStopsAndRewindsButKeepsTheBuffers) {
  LoadSound(1, u"a.wav", {1, 2, 3, 4});
  WavBuffer[1]->Play(true);
  Render(2);
  loopCounter = 5;
  StopAndRewindSounds();
  EXPECT_EQ(loopCounter, 5);
  EXPECT_EQ(Render(1), Samples({0}));
  EXPECT_EQ(Play(1, 2), Samples({1, 2}));
}

TEST_F(SoundSlots, ReleasingEverythingForgetsTheFiles) {
  LoadSound(1, u"a.wav", {1, 2});
  NameCourseSound(0, 1, u"b.wav", {3});
  LoadCourseSound(0, 1);
  WavBuffer[1]->Play(true);
  ReleaseAllSounds();
  EXPECT_EQ(WavBuffer[1], nullptr);
  EXPECT_EQ(CourseWavBuffer[0][1], nullptr);
  EXPECT_TRUE(WavHeldName[1].empty());
  EXPECT_EQ(Render(1), Samples({0}));
}

}  // namespace
}  // namespace qlm
