// Starts of sounds: volumes in the fades, echoes, the list of voices, system sounds, and what a press costs.
#include "sound/play.h"

#include <cstdlib>

#include "platform/clock.h"
#include "sound/slots.h"
#include "state/chart.h"
#include "state/options.h"
#include "state/session.h"
#include "state/settings.h"
#include "state/timeline.h"
#include "state/transcript.h"
#include "state/wide_chart.h"
#include "tests/sound/sound_test.h"
#include "tests/support/allocations.h"

namespace qlm {
namespace {

constexpr uint32_t kNow = 1'000'000;

class SoundStarts : public SoundTest {
 protected:
  void LoadSound(int32_t slot, TextView name, const Samples& samples) {
    NameSound(slot, name, samples);
    loadwav(slot);
    log.clear();
  }
  // 10000 comes out as 5623 at -500.
  static Samples Level(size_t frames) { return Samples(frames, 10000); }
};

TEST_F(SoundStarts, AChartSoundStandsFiveDecibelsUnderFullScale) {
  LoadSound(1, u"a.wav", {10000, -10000});
  PlayWav(1, 0, 0);
  EXPECT_EQ(Render(3), Samples({5623, -5623, 0}));
  EXPECT_TRUE(log.empty());
}

TEST_F(SoundStarts, TheDeviceIsAskedForTheBlockOfTheSetting) {
  EXPECT_EQ(SoundBlockToAsk(), 256) << "of a new installation";
  for (const int32_t block : {64, 128, 512, 1024, 2048}) {
    SoundBlock = block;
    EXPECT_EQ(SoundBlockToAsk(), block);
  }
  for (const int32_t none : {0, -64, 32, 65, 100, 2047, 4096, INT32_MIN, INT32_MAX}) {
    SoundBlock = none;
    EXPECT_EQ(SoundBlockToAsk(), 256) << none;
  }
}

TEST_F(SoundStarts, ARetriggerCutsOffAndGivesOneVoice) {
  LoadSound(1, u"a.wav", {1000, 2000, 3000, 4000});
  PlayWav(1, 0, 0);
  EXPECT_EQ(Render(3), Samples({562, 1125, 1687}));
  PlayWav(1, 0, 0);
  EXPECT_EQ(VoiceCount, 1);
  EXPECT_EQ(Render(5), Samples({562, 1125, 1687, 2249, 0}));
}

TEST_F(SoundStarts, WhatIsNotThereIsLoadedFirst) {
  NameSound(1, u"a.wav", {10000});
  PlayWav(1, 0, 0);
  EXPECT_TRUE(Logged(u"loadwav: 1"));
  EXPECT_EQ(Render(1), Samples({5623}));
}

TEST_F(SoundStarts, ASlotThatWasReleasedIsLoadedAgain) {
  LoadSound(1, u"a.wav", {10000});
  WavBuffer[1].reset();
  WavHeldName[1].clear();
  PlayWav(1, 0, 0);
  EXPECT_EQ(Render(1), Samples({5623}));
}

TEST_F(SoundStarts, AStateOfZeroLoadsEvenWithABuffer) {
  LoadSound(1, u"a.wav", {10000});
  WavLoaded[1] = 0;
  PlayWav(1, 0, 0);
  EXPECT_EQ(log, std::vector<Text>({u"loadwav: 1 > cancelled"}));
  EXPECT_EQ(Render(1), Samples({5623}));
}

TEST_F(SoundStarts, EachStartOfASilentSlotLogsItsCancelledLoad) {
  WavFile[1] = u"\\nowhere\\a.wav";
  loadwav(1);
  log.clear();
  PlayWav(1, 0, 0);
  PlayWav(1, 0, 0);
  EXPECT_EQ(log, std::vector<Text>({u"loadwav: 1 > cancelled", u"loadwav: 1 > cancelled"}));
}

TEST_F(SoundStarts, SlotZeroIsSilentAndLogsNothing) {
  PlayWav(0, 0, 0);
  EXPECT_EQ(Render(1), Samples({0}));
  EXPECT_TRUE(log.empty());
  EXPECT_EQ(VoiceCount, 1);
}

// A lane without a sound has the slot -1.
TEST_F(SoundStarts, SlotsOutsideTheTablesSoundNothing) {
  LoadSound(1, u"a.wav", Level(100));
  Transcript starts;
  transcript = &starts;
  PlayWav(-1, 0, 0);
  PlayWav(256, 0, 0);
  EXPECT_EQ(VoiceCount, 0);
  EXPECT_EQ(Render(1), Samples({0}));
  EXPECT_TRUE(starts.starts.empty());
  EXPECT_EQ(log, std::vector<Text>({u"loadwav: -1 > cancelled", u"loadwav: 256 > cancelled"}));
  CourseMode = true;
  PlayWav(256, 0, 0);
  EXPECT_EQ(Render(1), Samples({0}));
}

TEST_F(SoundStarts, SlotsOutsideTheTablesQueueEchoesThatSoundNothing) {
  LoadSound(1, u"a.wav", Level(100));
  EchoEnabled = true;
  PlayWav(256, 0, 0);
  PlayWav(65537, 0, 0);  // 1, if cut to 16 bits
  EXPECT_EQ(EchoCount, 8);
  EXPECT_EQ(loopCounter, 5);
  playClock = 801;
  EXPECT_EQ(ServeEchoes(), 8);
  EXPECT_EQ(EchoCount, 0);
  EXPECT_EQ(Render(1), Samples({0}));
}

// 62 presses fill 248 of the 256 places, one outside the table 4 more, so that the last press finds room for
// 4 and the one behind it for none.
TEST_F(SoundStarts, EchoesOfSlotsOutsideTheTablesTakeTheirPlaces) {
  LoadSound(1, u"a.wav", Level(100));
  EchoEnabled = true;
  for (int press = 0; press < 62; ++press) PlayWav(1, 0, 0);
  PlayWav(300, 0, 0);
  EXPECT_EQ(EchoCount, 252);
  PlayWav(1, 0, 0);
  PlayWav(1, 0, 0);
  EXPECT_EQ(EchoCount, 256);
}

TEST_F(SoundStarts, AStartOutsideTheTablesInTheFailFadeChangesTheSlotOfTheSharedCounter) {
  LoadSound(1, u"a.wav", Level(100));
  FadeState = kFadeFail;
  FadeStart = kNow - 1400;
  loopCounter = 1;
  PlayWav(256, 0, 0);
  WavBuffer[1]->Play(false);
  EXPECT_EQ(Render(1), Samples({1000}));  // at (1000 - 1400) * 5 hundredths of a decibel
}

TEST_F(SoundStarts, AnAttachedTranscriptGetsEachStart) {
  Transcript starts;
  transcript = &starts;
  LoadSound(1, u"a.wav", {1});
  LoadSound(2, u"b.wav", {1});
  playClock = 17;
  PlayWav(1, 0, 0);
  playClock = 40;
  PlayWav(2, 0, 0);
  ASSERT_EQ(starts.starts.size(), 2U);
  EXPECT_EQ(starts.starts[0].clock, 17);
  EXPECT_EQ(starts.starts[0].slot, 1);
  EXPECT_EQ(starts.starts[1].clock, 40);
  EXPECT_EQ(starts.starts[1].slot, 2);
}

// 40 ms into the fade: -2000, a tenth.
TEST_F(SoundStarts, AStartInTheEndFadeIsQuieterTheLaterItComes) {
  LoadSound(1, u"a.wav", Level(1));
  FadeState = kFadeEnd;
  FadeStart = kNow - 40;
  PlayWav(1, 0, 0);
  EXPECT_EQ(Render(1), Samples({1000}));
  FadeStart = kNow;
  PlayWav(1, 0, 0);
  EXPECT_EQ(Render(1), Samples({10000}));
  FadeStart = kNow - 200;
  PlayWav(1, 0, 0);
  EXPECT_EQ(Render(1), Samples({0}));
}

// Past -10000 the volume is refused, and the one before stays.
TEST_F(SoundStarts, AStartPastTheEndFadeKeepsItsVolume) {
  LoadSound(1, u"a.wav", Level(1));
  WavBuffer[1]->SetVolume(-2000);
  FadeState = kFadeEnd;
  FadeStart = kNow - 201;
  PlayWav(1, 0, 0);
  EXPECT_EQ(Render(1), Samples({1000}));
}

// 1400 ms into the fail fade: (-1400 + 1000) * 5 = -2000.
TEST_F(SoundStarts, AStartInTheFailFadeChangesTheSlotOfTheSharedCounter) {
  LoadSound(1, u"a.wav", Level(1));
  LoadSound(5, u"b.wav", Level(1));
  FadeState = kFadeFail;
  FadeStart = kNow - 1400;
  loopCounter = 5;
  PlayWav(1, 0, 0);
  EXPECT_EQ(Render(1), Samples({10000}));  // as loaded
  WavBuffer[5]->Play(false);
  EXPECT_EQ(Render(1), Samples({1000}));
}

TEST_F(SoundStarts, InTheFirstSecondOfTheFailFadeNothingChanges) {
  LoadSound(5, u"b.wav", Level(1));
  FadeState = kFadeFail;
  FadeStart = kNow - 999;
  loopCounter = 5;
  PlayWav(5, 0, 0);
  EXPECT_EQ(Render(1), Samples({10000}));
}

TEST_F(SoundStarts, ACounterPastTheSlotsIsHarmless) {
  LoadSound(1, u"a.wav", Level(1));
  FadeState = kFadeFail;
  FadeStart = kNow - 1400;
  loopCounter = 256;
  PlayWav(1, 0, 0);
  EXPECT_EQ(Render(1), Samples({10000}));
}

TEST_F(SoundStarts, AnyOtherFadeLeavesTheUsualVolume) {
  LoadSound(1, u"a.wav", Level(1));
  for (const uint8_t fade : {kFadeIn, kFadeTiles, kFadeTitle}) {
    FadeState = fade;
    PlayWav(1, 0, 0);
    EXPECT_EQ(Render(1), Samples({5623}));
  }
}

TEST_F(SoundStarts, TheEndFadeTurnsDownWhatIsLoaded) {
  LoadSound(1, u"a.wav", Level(2));
  LoadSound(2, u"b.wav", Level(2));
  PlayWav(1, 0, 0);
  WavLoaded[2] = 0;
  FadeEndVolumes(40);
  EXPECT_EQ(Render(2), Samples({1000, 1000}));
  WavBuffer[2]->Play(false);
  EXPECT_EQ(Render(1), Samples({10000}));
}

TEST_F(SoundStarts, TheFailFadeTurnsDownWhatExists) {
  LoadSound(1, u"a.wav", Level(3));
  WavLoaded[1] = 0;
  WavBuffer[1]->Play(false);
  FadeFailVolumes(999);
  EXPECT_EQ(Render(1), Samples({10000}));
  FadeFailVolumes(1400);
  EXPECT_EQ(Render(1), Samples({1000}));
}

TEST_F(SoundStarts, ACourseLoadsBySongAndSlot) {
  CourseMode = true;
  GameState = kStatePlay;
  CourseSong = 1;
  CourseWavFile[1][4] = WriteData(u"song.wav", MonoWav(Level(1)));
  PlayWav(4, 0, 0);
  EXPECT_TRUE(CourseWavLoaded[1][4]);
  EXPECT_EQ(Render(1), Samples({5623}));
  log.clear();
  WavBuffer[4].reset();
  PlayWav(4, 0, 0);  // marked loaded, so that nothing is loaded
  EXPECT_TRUE(log.empty());
  EXPECT_EQ(Render(1), Samples({0}));
}

TEST_F(SoundStarts, ACourseWithAllSoundsInMemoryPlaysTheSongsOwnBuffers) {
  CourseMode = true;
  GameState = kStatePlay;
  CourseLoadMode = 2;
  LoadSound(4, u"plain.wav", {100});
  CourseWavFile[1][4] = WriteData(u"song.wav", MonoWav(Level(1)));
  LoadCourseSound(1, 4);
  log.clear();
  CourseSong = 1;
  PlayWav(4, 0, 0);
  EXPECT_TRUE(log.empty());
  EXPECT_EQ(Render(1), Samples({5623}));
}

TEST_F(SoundStarts, APreviewPlaysThePlainBuffers) {
  CourseMode = true;
  CourseLoadMode = 2;
  PreviewActive = true;
  LoadSound(4, u"plain.wav", Level(1));
  CourseWavLoaded[0][4] = true;
  PlayWav(4, 0, 0);
  EXPECT_EQ(Render(1), Samples({5623}));
}

class Echoes : public SoundStarts {
 protected:
  void SetUp() override { EchoEnabled = true; }
};

TEST_F(Echoes, OnePressGivesFiveStarts) {
  Transcript starts;
  transcript = &starts;
  LoadSound(1, u"a.wav", Level(1));
  playClock = 1000;
  PlayWav(1, 0, 0);
  EXPECT_EQ(loopCounter, 5);
  EXPECT_EQ(EchoCount, 4);
  EXPECT_EQ(Render(1), Samples({5623}));

  // -500, -2000, -4500 and -8000 under the sample, each once its time has passed.
  const Samples levels = {5623, 1000, 56, 1};
  int32_t played = 0;
  for (int32_t n = 1; n <= 4; ++n) {
    playClock = 1000 + n * 200;
    EXPECT_EQ(ServeEchoes(), 0);
    EXPECT_EQ(Render(1), Samples({0}));
    playClock += 1;
    played += ServeEchoes();
    EXPECT_EQ(Render(1), Samples({levels[n - 1]})) << n;
  }
  EXPECT_EQ(played, 4);
  EXPECT_EQ(EchoCount, 0);
  EXPECT_EQ(starts.starts.size(), 5U);
  for (int32_t step = 1; step <= 4; ++step) EXPECT_NE(EchoBuffer[step][1], nullptr);
}

TEST_F(Echoes, EchoesHaveVoicesOfTheirOwn) {
  LoadSound(1, u"a.wav", Level(10));
  PlayWav(1, 0, 0);
  playClock = 1000;  // all four are due
  EXPECT_EQ(ServeEchoes(), 4);
  // 5623.41 + 5623.41 + 1000 + 56.23 + 1
  EXPECT_EQ(Render(1), Samples({12304}));
}

TEST_F(Echoes, TheSameStepOfTheSameSlotIsCutOff) {
  LoadSound(1, u"a.wav", Level(10));
  PlayWav(1, 0, 2);
  EXPECT_EQ(Render(1), Samples({1000}));
  PlayWav(1, 0, 2);
  EXPECT_EQ(Render(1), Samples({1000}));
  EXPECT_EQ(EchoCount, 0);
}

TEST_F(Echoes, AnEchoOfASilentSlotIsSilent) {
  WavFile[1] = u"\\nowhere\\a.wav";
  PlayWav(1, 0, 1);
  EXPECT_EQ(EchoBuffer[1][1], nullptr);
  EXPECT_EQ(Render(1), Samples({0}));
}

TEST_F(Echoes, AnEchoStillQueuedWhenEchoesAreOffStartsTheSlotItself) {
  LoadSound(1, u"a.wav", Level(5));
  PlayWav(1, 0, 0);
  EchoEnabled = false;
  Render(3);
  playClock = 201;
  EXPECT_EQ(ServeEchoes(), 1);
  EXPECT_EQ(EchoBuffer[1][1], nullptr);
  EXPECT_EQ(Render(6), Samples({5623, 5623, 5623, 5623, 5623, 0}));
}

TEST_F(Echoes, WithoutTheEffectNothingIsQueued) {
  EchoEnabled = false;
  LoadSound(1, u"a.wav", Level(1));
  loopCounter = 77;
  PlayWav(1, 0, 0);
  EXPECT_EQ(EchoCount, 0);
  EXPECT_EQ(loopCounter, 77);
}

TEST_F(Echoes, EntriesPast256AreLost) {
  LoadSound(1, u"a.wav", Level(1));
  for (int i = 0; i < 63; ++i) PlayWav(1, 0, 0);
  EchoPush(5, 2, 3);
  EchoPush(6, 2, 3);
  EchoPush(7, 2, 3);
  EXPECT_EQ(EchoCount, 255);
  PlayWav(1, 0, 0);  // the first of its four still fits
  EXPECT_EQ(EchoCount, 256);
  EXPECT_EQ(EchoQueue[252].time, 5);
  EXPECT_EQ(EchoQueue[255].time, 200);
  EXPECT_EQ(EchoQueue[255].step, 1);
  playClock = 1000;
  EXPECT_EQ(ServeEchoes(), 256);
  EXPECT_EQ(EchoCount, 0);
}

TEST_F(Echoes, EntriesThatAreNotDueArePassedOver) {
  LoadSound(1, u"a.wav", Level(1));
  LoadSound(2, u"b.wav", Level(1));
  EchoPush(500, 1, 1);
  EchoPush(100, 2, 1);
  EchoPush(600, 1, 2);
  EchoPush(99, 2, 2);
  playClock = 300;
  EXPECT_EQ(ServeEchoes(), 2);
  ASSERT_EQ(EchoCount, 2);
  EXPECT_EQ(EchoQueue[0].time, 500);
  EXPECT_EQ(EchoQueue[1].time, 600);
}

TEST_F(Echoes, APopMovesLaterEntriesDown) {
  EchoPush(1, 1, 1);
  EchoPush(2, 2, 2);
  EchoPush(3, 3, 3);
  EchoPop(1);
  ASSERT_EQ(EchoCount, 2);
  EXPECT_EQ(EchoQueue[0].time, 1);
  EXPECT_EQ(EchoQueue[1].time, 3);
  EXPECT_EQ(EchoQueue[1].slot, 3);
  EXPECT_EQ(EchoQueue[1].step, 3);
  EchoPop(2);
  EchoPop(-1);
  EXPECT_EQ(EchoCount, 2);
}

class Voices : public SoundTest {};

TEST_F(Voices, AreListedOldestFirst) {
  VoiceAdd(3);
  VoiceAdd(1);
  VoiceAdd(2);
  VoiceAdd(3);
  ASSERT_EQ(VoiceCount, 3);
  EXPECT_EQ(VoiceList[0], 1);
  EXPECT_EQ(VoiceList[1], 2);
  EXPECT_EQ(VoiceList[2], 3);
  EXPECT_TRUE(VoiceActive[3]);
  EXPECT_EQ(VoiceStart[3], kNow);
}

TEST_F(Voices, ARemovalClosesTheGap) {
  for (const int32_t slot : {1, 2, 3}) VoiceAdd(slot);
  VoiceRemove(2);
  ASSERT_EQ(VoiceCount, 2);
  EXPECT_EQ(VoiceList[1], 3);
  EXPECT_FALSE(VoiceActive[2]);
  EXPECT_EQ(VoiceStart[2], 0U);
  VoiceRemove(2);
  EXPECT_EQ(VoiceCount, 2);
}

TEST_F(Voices, AllSlotsFit) {
  for (int32_t slot = 0; slot <= 255; ++slot) VoiceAdd(slot);
  for (int32_t slot = 0; slot <= 255; ++slot) VoiceAdd(slot);
  EXPECT_EQ(VoiceCount, 256);
}

TEST_F(Voices, ArePurgedOnceTheirLengthHasPassed) {
  WavLengthMs[1] = 100.0F;
  WavLengthMs[2] = 100.5F;
  for (const int32_t slot : {1, 2, 3}) VoiceAdd(slot);
  VoicePurge();
  EXPECT_EQ(VoiceCount, 3);
  platform::UseVirtualClock(kNow + 1);
  VoicePurge();  // the third has no length
  EXPECT_EQ(VoiceCount, 2);
  platform::UseVirtualClock(kNow + 100);
  VoicePurge();
  EXPECT_EQ(VoiceCount, 2);
  platform::UseVirtualClock(kNow + 101);
  VoicePurge();
  EXPECT_EQ(VoiceCount, 0);
}

TEST_F(Voices, NeighboursThatEndTogetherAreBothPurged) {
  for (const int32_t slot : {1, 2, 3, 4}) VoiceAdd(slot);
  platform::UseVirtualClock(kNow + 1);
  VoicePurge();
  EXPECT_EQ(VoiceCount, 0);
}

class SystemSounds : public SoundTest {
 protected:
  void WriteSound(TextView name, const Samples& samples) {
    WriteData(Join(u"_qlmfiles\\wav\\", name, u".wav"), MonoWav(samples));
  }
};

TEST_F(SystemSounds, AreLoadedAtStartInTheirOrder) {
  const std::vector<Text> names = {
      u"sngchg",  u"select",  u"sngdecide", u"ready",   u"fade",     u"class_ss",  u"class_s",  u"class_a",
      u"class_b", u"class_c", u"class_d",   u"class_e", u"selstart", u"res_clear", u"res_fail", u"ptscount"};
  std::vector<Text> expected = {u"[InitDS]", u"    SetCooperativeLevel: DSSCL_PRIORITY",
                                u"    loading SEs..."};
  for (size_t i = 0; i < names.size(); ++i) {
    WriteSound(names[i], {static_cast<int16_t>(i + 1)});
    expected.push_back(Join(u"    CreateSndBuf:", names[i], u".wav"));
    expected.push_back(u"    ファイルサイズが小さすぎます");
  }
  expected.push_back(u"    complete");
  InitDS(platform::SoundOutput::kOffline);
  EXPECT_EQ(log, expected);
  for (int32_t i = 0; i <= 15; ++i) {
    PlaySE(SE{i});
    EXPECT_EQ(Render(2), Samples({static_cast<int16_t>(i + 1), 0}));
  }
}

TEST_F(SystemSounds, MissingOnesAreSilent) {
  WriteSound(u"ready", {9});
  InitDS(platform::SoundOutput::kOffline);
  EXPECT_TRUE(Logged(u"    LoadWav:sngchg.wav - ERROR"));
  PlaySE(SE{0});
  StopSE(SE{0});
  SetSEVolume(SE{0}, -100);
  EXPECT_EQ(Render(1), Samples({0}));
  PlaySE(SE{3});
  EXPECT_EQ(Render(1), Samples({9}));
}

TEST_F(SystemSounds, OtherNumbersDoNothing) {
  InitDS(platform::SoundOutput::kOffline);
  PlaySE(SE{16}, true);
  PlaySE(SE{-1});
  StopSE(SE{16});
  SetSEVolume(SE{99}, 0);
  EXPECT_EQ(Render(1), Samples({0}));
}

TEST_F(SystemSounds, AStartBeginsAnewAndLoopsWhenAsked) {
  WriteSound(u"select", {1, 2, 3});
  InitDS(platform::SoundOutput::kOffline);
  PlaySE(SE{1}, true);
  EXPECT_EQ(Render(5), Samples({1, 2, 3, 1, 2}));
  PlaySE(SE{1}, false);
  EXPECT_EQ(Render(4), Samples({1, 2, 3, 0}));
  PlaySE(SE{1}, true);
  StopSE(SE{1});
  EXPECT_EQ(Render(1), Samples({0}));
}

TEST_F(SystemSounds, APositiveVolumeIsRefused) {
  WriteSound(u"select", {10000, 10000});
  InitDS(platform::SoundOutput::kOffline);
  SetSEVolume(SE{1}, -2000);
  SetSEVolume(SE{1}, 50);
  PlaySE(SE{1});
  EXPECT_EQ(Render(1), Samples({1000}));
}

TEST_F(SystemSounds, WithoutASoundCardTheLogSaysSoOnceAndSoundsExist) {
  setenv("SDL_AUDIODRIVER", "nosuchdriver", 1);
  WriteSound(u"ready", Samples(441, 1));
  InitDS();
  unsetenv("SDL_AUDIODRIVER");
  int told = 0;
  for (const Text& line : log) told += line.starts_with(u"    # No sound will be heard: ") ? 1 : 0;
  EXPECT_EQ(told, 1);
  ASSERT_NE(SystemSound[3], nullptr);
  PlaySE(SE{3});
  EXPECT_TRUE(SystemSound[3]->Playing());
  platform::UseVirtualClock(kNow + 10);
  EXPECT_FALSE(SystemSound[3]->Playing());
}

TEST_F(SystemSounds, TheLogTellsTheDevicesBlocks) {
  setenv("SDL_AUDIODRIVER", "dummy", 1);
  InitDS();
  unsetenv("SDL_AUDIODRIVER");
  EXPECT_TRUE(Logged(u"    * Sound device: dummy, 44100Hz, blocks of 256 frames"));
}

TEST_F(SystemSounds, TheDeviceTakesTheBlocksOfTheSetting) {
  setenv("SDL_AUDIODRIVER", "dummy", 1);
  SoundBlock = 1024;
  InitDS();
  unsetenv("SDL_AUDIODRIVER");
  EXPECT_TRUE(Logged(u"    * Sound device: dummy, 44100Hz, blocks of 1024 frames"));
}

TEST_F(SystemSounds, AreGivenBackWithTheDevice) {
  WriteSound(u"ready", {9});
  InitDS(platform::SoundOutput::kOffline);
  NameSound(1, u"a.wav", {1});
  loadwav(1);
  PlaySE(SE{3}, true);
  ReleaseDS();
  EXPECT_EQ(SystemSound[3], nullptr);
  EXPECT_EQ(WavBuffer[1], nullptr);
  PlaySE(SE{3});
  PlayWav(0, 0, 0);
}

TEST_F(SoundStarts, APressTakesNoMemoryAndLogsNothing) {
  for (int32_t slot = 1; slot <= 255; ++slot) LoadSound(slot, Join(slot, u".wav"), Level(50));
  Samples block(256);
  const size_t before = Allocations();
  for (int turn = 0; turn < 10; ++turn) {
    for (int32_t slot = 1; slot <= 255; ++slot) {
      PlayWav(slot, 0, 0);
      PlaySE(SE{slot % 16});
    }
    platform::RenderSound(block);
    StopPlayingSounds();
    ResumeStoppedSounds();
    ApplySoundSpeed();
    FadeEndVolumes(turn);
    VoicePurge();
    ServeEchoes();
  }
  EXPECT_EQ(Allocations(), before);
  EXPECT_TRUE(log.empty());
}

TEST_F(SoundStarts, TheVolumeOfTheChartIsAdded) {
  LoadSound(1, u"a.wav", {10000});
  ChartVolume = -602;
  PlayWav(1, 0, 0);
  EXPECT_EQ(Render(1), Samples({2812}));  // -11.02 dB
  ChartVolume = 600;                      // no louder than the sample
  PlayWav(1, 0, 0);
  EXPECT_EQ(Render(1), Samples({10000}));
}

}  // namespace
}  // namespace qlm
