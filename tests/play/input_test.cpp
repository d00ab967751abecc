// Keys of the play and of the settings.
#include "play/input.h"

#include <array>
#include <limits>
#include <tuple>

#include "base/rnd.h"
#include "platform/clock.h"
#include "platform/sound_device.h"
#include "sound/play.h"
#include "sound/volume.h"
#include "state/gauge.h"
#include "state/judgement.h"
#include "state/keys.h"
#include "state/message.h"
#include "state/options.h"
#include "state/session.h"
#include "state/settings.h"
#include "state/skin.h"
#include "state/sounds.h"
#include "state/timeline.h"
#include "tests/play/play_test.h"

namespace qlm {
namespace {

// The keys that lower and raise.
constexpr int32_t kDown = kKey1;
constexpr int32_t kUp = kKey2;

class PlayInput : public PlayTest {
 protected:
  PlayInput() {
    LaneNote.fill(-1);
    LaneSound.fill(-1);
    KeyMap[44] = 11;
    KeyMap[42] = 16;
    KeyMap[57] = 17;
    HitColour = 0x123456;
  }
  // How often the tick of the settings was started since the last call.
  static bool Ticked() {
    const bool playing = SystemSound[15] != nullptr && SystemSound[15]->Playing();
    if (playing) SystemSound[15]->Stop();
    return playing;
  }
  static void GiveTick() {
    const platform::SoundFormat format{.tag = 1, .channels = 1, .samplesPerSec = 44100, .bitsPerSample = 16};
    SystemSound[15] = platform::CreateSoundBuffer({.flags = 0, .bytes = 88200}, format).buffer;
  }
  // Presses a key of the settings while another one is held.
  static void PressWith(int32_t held, int32_t key) {
    KeyHeld.Clear();
    KeyHeld[held] = true;
    KeyHeld[key] = true;
    ProcessKey_Settings(key);
  }
};

TEST_F(PlayInput, CodesFrom11To29AreLanesAndBothWaysOfATurntableAreOne) {
  for (int16_t code = -1; code <= 31; ++code) {
    KeyMap[1] = code;
    const int32_t lane = code < 11 || code > 29 ? 0 : code == 17 ? 16 : code == 27 ? 26 : code;
    EXPECT_EQ(LaneChannel(1), lane) << code;
  }
  EXPECT_EQ(LaneChannel(2), 0) << "not in the map";
  EXPECT_EQ(LaneChannel(-1), 0);
  EXPECT_EQ(LaneChannel(401), 0);
}

TEST_F(PlayInput, APressLightsItsLaneAndSoundsEvenWithoutANote) {
  FillSlot(7);
  LaneSound[0] = 7;
  SetClock(40);
  playClock = 40;
  ProcessKey_Play(44);
  EXPECT_TRUE(LaneDown[0]);
  EXPECT_EQ(LaneBeam[0], 1);
  EXPECT_EQ(Starts(), "7@40");
  EXPECT_EQ(HitColour, platform::Rgb(128, 128, 128));
  EXPECT_EQ(LaneNote[0], -1);
  EXPECT_TRUE(played.judgements.empty());
  EXPECT_FLOAT_EQ(Gauge[0], 0);
}

TEST_F(PlayInput, ReleaseClearsLaneAndBeamAndJudgesNothing) {
  ProcessKey_Play(44);
  LaneDown[1] = true;
  LaneBeam[1] = 1;
  LaneNote[0] = 3;
  ReleaseLane(11);
  EXPECT_FALSE(LaneDown[0]);
  EXPECT_EQ(LaneBeam[0], 0);
  EXPECT_TRUE(LaneDown[1]);
  EXPECT_EQ(LaneBeam[1], 1);
  EXPECT_EQ(LaneNote[0], 3);
  EXPECT_TRUE(played.judgements.empty());
}

TEST_F(PlayInput, BothWaysOfTheTurntableSoundTheOneLane) {
  FillSlot(9);
  LaneSound[5] = 9;
  ProcessKey_Play(42);
  ProcessKey_Play(57);
  EXPECT_EQ(Starts(), "9@0 9@0") << "the second is an empty press with a sound";
  EXPECT_TRUE(LaneDown[5]);
  EXPECT_FALSE(LaneDown[6]);
}

TEST_F(PlayInput, AKeyWithoutALaneDoesNothing) {
  KeyMap[30] = 4;  // a meaning of menus
  for (const int32_t key : {30, 31, 300, 400, 401, -1}) ProcessKey_Play(key);
  for (const bool down : LaneDown) EXPECT_FALSE(down);
  EXPECT_EQ(HitColour, 0x123456U);
  EXPECT_EQ(Starts(), "");
}

TEST_F(PlayInput, InTheFailFadeAPressSoundsAndLeavesTheNoteAlone) {
  FillSlot(7);
  LaneSound[0] = 7;
  Lay(11, 0, 7);
  LaneNote[0] = 0;
  PlayFailed = true;
  ProcessKey_Play(44);
  EXPECT_EQ(Starts(), "7@0");
  EXPECT_EQ(LaneNote[0], 0);
  EXPECT_TRUE(played.judgements.empty());
}

TEST_F(PlayInput, LanesAreDeadInAPauseAStallAndAReplay) {
  for (bool* const still : {&Paused, &BreakActive, &ShowRec}) {
    *still = true;
    ProcessKey_Play(44);
    EXPECT_FALSE(LaneDown[0]);
    EXPECT_EQ(HitColour, 0x123456U);
    *still = false;
  }
  ProcessKey_Play(44);
  EXPECT_TRUE(LaneDown[0]);
}

TEST_F(PlayInput, APressInTimeHitsAndTheSecondOfTwoKeysOnTheLaneFindsNoNote) {
  FillSlot(9);
  LaneSound[5] = 9;
  Lay(16, 0, 9);
  LaneNote[5] = 0;
  JudgeWindow = {3, 6, 18, 24};
  ProcessKey_Play(42);
  ASSERT_EQ(played.judgements.size(), 1U);
  EXPECT_EQ(played.judgements[0].grade, 4);
  EXPECT_EQ(LaneNote[5], -1);
  const auto colourOfHit = HitColour;
  EXPECT_NE(colourOfHit, platform::Rgb(128, 128, 128));
  ProcessKey_Play(57);
  EXPECT_EQ(played.judgements.size(), 1U);
  EXPECT_EQ(HitColour, platform::Rgb(128, 128, 128));
  EXPECT_EQ(Starts(), "9@0 9@0");
}

TEST_F(PlayInput, APressFarTooEarlyLeavesTheNoteToItsLane) {
  Lay(11, 100, 7);
  LaneNote[0] = 0;
  JudgeWindow = {3, 6, 18, 24};
  ProcessKey_Play(44);
  EXPECT_EQ(LaneNote[0], 0);
}

TEST_F(PlayInput, EscIsHeldFromItsPressOn) {
  SetClock(250);
  ProcessKey_Play(kKeyEsc);
  EXPECT_TRUE(EscHeld);
  EXPECT_EQ(EscStart, kStart + 250);
}

TEST_F(PlayInput, AKeyOfThePlayMayPlayALaneToo) {
  KeyMap[kKeyEsc] = 11;
  ProcessKey_Play(kKeyEsc);
  EXPECT_TRUE(EscHeld);
  EXPECT_TRUE(LaneDown[0]);
}

TEST_F(PlayInput, F12PausesAndResumes) {
  curBPM = 1250;
  ProcessKey_Play(kKeyF12);
  EXPECT_TRUE(Paused);
  EXPECT_FLOAT_EQ(curBPM, 0);
  ProcessKey_Play(kKeyF12);
  EXPECT_FALSE(Paused);
  EXPECT_FLOAT_EQ(curBPM, 1250);
}

TEST_F(PlayInput, F12InAStallPausesTooAndTheResumeRestoresWhatWasSavedLast) {
  curBPM = 0;  // as the stall left it
  savedBPM = 1250;
  BreakActive = true;
  ProcessKey_Play(kKeyF12);
  EXPECT_TRUE(Paused);
  EXPECT_TRUE(BreakActive);
  EXPECT_FLOAT_EQ(savedBPM, 0);
  ProcessKey_Play(kKeyF12);
  EXPECT_FALSE(Paused);
  EXPECT_FLOAT_EQ(curBPM, 0);
}

TEST_F(PlayInput, F1AndF2TurnTheTurntables) {
  ProcessKey_Play(59);
  EXPECT_TRUE(SCRATCH1P);
  EXPECT_FALSE(SCRATCH2P);
  EXPECT_EQ(message.text, u"1P SCRATCH: Right");
  ProcessKey_Play(59);
  EXPECT_FALSE(SCRATCH1P);
  EXPECT_EQ(message.text, u"1P SCRATCH: Left");
  ProcessKey_Play(60);
  EXPECT_TRUE(SCRATCH2P);
  EXPECT_EQ(message.text, u"2P SCRATCH: Right");
  ProcessKey_Play(60);
  EXPECT_FALSE(SCRATCH2P);
  EXPECT_EQ(message.text, u"2P SCRATCH: Left");
}

TEST_F(PlayInput, F1MovesTheLanesOfTheSkin) {
  NoteSkin[6].xLeft = 10;  // channel 16
  NoteSkin[6].xRight = 200;
  ProcessKey_Play(59);
  EXPECT_EQ(NoteSkin[6].x, 200);
  ProcessKey_Play(59);
  EXPECT_EQ(NoteSkin[6].x, 10);
}

using SettingKeys = PlayInput;

TEST_F(SettingKeys, SleepGoesFrom0To15) {
  Sleep = 14;
  ProcessKey_Settings(kUp);
  EXPECT_EQ(Sleep, 15);
  EXPECT_EQ(message.text, u"[1,2] Sleep: 15 (1:Down/2:Up)");
  ProcessKey_Settings(kUp);
  EXPECT_EQ(Sleep, 15);
  Sleep = 1;
  ProcessKey_Settings(kDown);
  EXPECT_EQ(Sleep, 0);
  ProcessKey_Settings(kDown);
  EXPECT_EQ(Sleep, 0);
  EXPECT_EQ(message.text, u"[1,2] Sleep: 0 (1:Down/2:Up)");
}

TEST_F(SettingKeys, ASleepFromOutsideItsRangeComesBackIntoIt) {
  Sleep = INT32_MAX;
  ProcessKey_Settings(kUp);
  EXPECT_EQ(Sleep, 15);
  Sleep = INT32_MIN;
  ProcessKey_Settings(kDown);
  EXPECT_EQ(Sleep, 0);
  Sleep = 100;
  ProcessKey_Settings(kDown);
  EXPECT_EQ(Sleep, 99);
}

TEST_F(SettingKeys, HiSpeedFallsByHalvesThenByQuartersToTheRandomOne) {
  HiSpeed = 3;
  for (const float expected : {2.5F, 2.0F, 1.75F, 1.5F, 1.25F, 1.0F, 0.75F, 0.5F}) {
    RandomHiSpeed = true;
    PressWith(kKey4, kDown);
    EXPECT_EQ(HiSpeed, expected);
    EXPECT_FALSE(RandomHiSpeed) << expected;
  }
  EXPECT_EQ(message.text, u"[4+1,2] HiSpeed: 0.5 (1:Down/2:Up)");
  PressWith(kKey4, kDown);
  EXPECT_EQ(HiSpeed, 0);
  EXPECT_TRUE(RandomHiSpeed);
  PressWith(kKey4, kDown);
  EXPECT_EQ(HiSpeed, 0);
  EXPECT_TRUE(RandomHiSpeed);
  EXPECT_EQ(message.text, u"[4+1,2] HiSpeed: 0 (1:Down/2:Up)");
}

TEST_F(SettingKeys, HiSpeedRisesByQuartersThenByHalvesWithoutALimit) {
  HiSpeed = 0;
  RandomHiSpeed = true;
  for (const float expected : {0.25F, 0.5F, 0.75F, 1.0F, 1.25F, 1.5F, 1.75F, 2.0F, 2.5F, 3.0F}) {
    PressWith(kKey4, kUp);
    EXPECT_EQ(HiSpeed, expected);
    EXPECT_FALSE(RandomHiSpeed);
  }
  HiSpeed = 100;
  PressWith(kKey4, kUp);
  EXPECT_EQ(HiSpeed, 100.5F);
}

TEST_F(SettingKeys, HiSpeedIsNotRoundedToItsStep) {
  HiSpeed = 1.1F;
  PressWith(kKey4, kDown);
  EXPECT_EQ(HiSpeed, 1.1F - 0.25F);
}

TEST_F(SettingKeys, BothKeysWith4HeldLinkTheSpeedToTheCombo) {
  HiSpeed = 1;
  PressWith(kKey4, kDown);
  EXPECT_EQ(HiSpeed, 0.75F);
  KeyHeld[kUp] = true;
  ProcessKey_Settings(kUp);
  EXPECT_TRUE(ComboHiSpeed);
  EXPECT_EQ(HiSpeed, 0.75F);
  EXPECT_EQ(message.text, u"COMBO-LINKED HISPEED MODE!");
  PressWith(kKey4, kUp);
  EXPECT_FALSE(ComboHiSpeed) << "until the next change by key";
  EXPECT_EQ(HiSpeed, 1);
}

TEST_F(SettingKeys, RealHiSpeedGoesInTwentiethsFromAQuarterTo3) {
  RealHiSpeed = 1;
  for (int step = 1; step <= 40; ++step) {
    PressWith(kKey3, kUp);
    EXPECT_EQ(RealHiSpeed, static_cast<float>((100 + 5 * step) / 100.0)) << step;
  }
  EXPECT_EQ(RealHiSpeed, 3);
  PressWith(kKey3, kUp);
  EXPECT_EQ(RealHiSpeed, 3);
  EXPECT_EQ(message.text, u"[3+1,2] Real HiSpeed: 3 (1:Down/2:Up)");
  RealHiSpeed = 0.35F;
  PressWith(kKey3, kDown);
  EXPECT_EQ(RealHiSpeed, 0.3F);
  PressWith(kKey3, kDown);
  EXPECT_EQ(RealHiSpeed, 0.25F);
}

TEST_F(SettingKeys, RealHiSpeedIsRoundedHalfToEven) {
  RealHiSpeed = 0.375F;
  PressWith(kKey3, kDown);
  EXPECT_EQ(RealHiSpeed, 0.32F);  // 0.325
  RealHiSpeed = 0.875F;
  PressWith(kKey3, kDown);
  EXPECT_EQ(RealHiSpeed, 0.82F);  // 0.825
}

TEST_F(SettingKeys, ARealHiSpeedFromOutsideItsRangeGoesOneWayOnly) {
  for (const auto& [speed, held, key] : {std::tuple{5.0F, kKey3, kUp}, std::tuple{-1.0F, kKey3, kDown}}) {
    RealHiSpeed = speed;
    PressWith(held, key);
    EXPECT_EQ(RealHiSpeed, speed);
  }
  constexpr float kGreatest = std::numeric_limits<float>::max();
  RealHiSpeed = kGreatest;
  PressWith(kKey3, kDown);
  EXPECT_EQ(RealHiSpeed, kGreatest);
  RealHiSpeed = -1;
  PressWith(kKey3, kUp);
  EXPECT_EQ(RealHiSpeed, -0.95F);
}

TEST_F(SettingKeys, RealHiSpeedAtItsLowestStillSetsTheTempoLocksTheRankAndTells) {
  RealHiSpeed = 0.25F;
  rawBPM = 1000;
  curBPM = 7;
  PressWith(kKey3, kDown);
  EXPECT_EQ(RealHiSpeed, 0.25F);
  EXPECT_FLOAT_EQ(curBPM, 250);
  EXPECT_TRUE(RankLocked);
  EXPECT_EQ(message.text, u"[3+1,2] Real HiSpeed: 0.25 (1:Down/2:Up)");
}

TEST_F(SettingKeys, RealHiSpeedFallsBackToTheTempoOfTheStart) {
  rawBPM = 120;
  curBPM = 240;  // of a tempo object
  PressWith(kKey3, kUp);
  EXPECT_FLOAT_EQ(curBPM, 126);
}

TEST_F(SettingKeys, Key4HeldGoesBeforeKey3) {
  KeyHeld[kKey3] = KeyHeld[kKey4] = true;
  ProcessKey_Settings(kUp);
  EXPECT_EQ(HiSpeed, 1.25F);
  EXPECT_EQ(RealHiSpeed, 1);
  EXPECT_FALSE(RankLocked);
}

TEST_F(SettingKeys, Keys3And4TellTheirSpeeds) {
  RealHiSpeed = 1.05F;
  HiSpeed = 2.5F;
  ProcessKey_Settings(kKey3);
  EXPECT_EQ(message.text, u"[3] Real HiSpeed: 1.05 (1:Down/2:Up)");
  ProcessKey_Settings(kKey4);
  EXPECT_EQ(message.text, u"[4] HiSpeed: 2.5 (1:Down/2:Up)");
}

TEST_F(SettingKeys, TheKeysThatTickAreToldFromThoseThatDoNot) {
  GiveTick();
  for (const int32_t key : {2, 3, 6, 65, 66, 67, 68, 87}) {
    ProcessKey_Settings(key);
    EXPECT_TRUE(Ticked()) << key;
  }
  for (const int32_t key : {4, 5, 8, 9, 73, 75, 79, 80, 81, 82, 1, 28, 44, 59, 88, 256, 400, 401, -1}) {
    ProcessKey_Settings(key);
    EXPECT_FALSE(Ticked()) << key;
  }
}

TEST_F(SettingKeys, Key5ShowsAndHidesThePictures) {
  ShowBGA = true;
  ProcessKey_Settings(6);
  EXPECT_FALSE(ShowBGA);
  EXPECT_TRUE(NoBGA);
  EXPECT_EQ(message.text, u"[5] BGA: Off");
  ProcessKey_Settings(6);
  EXPECT_TRUE(ShowBGA);
  EXPECT_FALSE(NoBGA);
  EXPECT_EQ(message.text, u"[5] BGA: On");
}

TEST_F(SettingKeys, F7TogglesThePreviewAndEndsAPlay) {
  BMSPreview = 1;
  ProcessKey_Settings(65);
  EXPECT_EQ(BMSPreview, 0);
  EXPECT_TRUE(PlayEnd);
  EXPECT_EQ(message.text, u"[F7] BMS Preview: Off");
  ProcessKey_Settings(65);
  EXPECT_EQ(BMSPreview, 1);
  EXPECT_EQ(message.text, u"[F7] BMS Preview: On");
}

TEST_F(SettingKeys, F8HandsThePlayToTheMachineAndLocksTheRank) {
  ProcessKey_Settings(66);
  EXPECT_TRUE(DEMOMode);
  EXPECT_TRUE(RankLocked);
  EXPECT_EQ(message.text, u"[F8] DEMO: On");
  ProcessKey_Settings(66);
  EXPECT_FALSE(DEMOMode);
  EXPECT_TRUE(RankLocked);
  EXPECT_EQ(message.text, u"[F8] DEMO: Off");
}

TEST_F(SettingKeys, F8ShowsAndTakesAwayTheMarkOfTheMachine) {
  OptionMark.fill(9);
  ProcessKey_Settings(66);
  EXPECT_EQ(OptionMark, (std::array<uint8_t, kOptionGroups>{0, 0, 15, 0, 0, 0}));
  ProcessKey_Settings(66);
  EXPECT_EQ(OptionMark, (std::array<uint8_t, kOptionGroups>{}));
}

TEST_F(SettingKeys, F9TakesTheNextSkinThatFitsTheMode) {
  skinList = {{.path = u"\\a.brd", .title = u"one", .forAny = false, .for1P = true},
              {.path = u"\\b.brd", .title = u"double", .forAny = false, .forDP = true},
              {.path = u"\\c.brd", .title = u"any"}};
  SkinIndex = 0;
  ProcessKey_Settings(67);
  EXPECT_EQ(SkinIndex, 2);
  EXPECT_EQ(message.text, u"Skin Change: any");
  EXPECT_TRUE(Logged(u"SKINCHANGE:any"));
  ProcessKey_Settings(67);
  EXPECT_EQ(SkinIndex, 0) << "behind the last comes the first";
  EXPECT_EQ(message.text, u"Skin Change: one");
  HdrPlayer = 3;
  ProcessKey_Settings(67);
  EXPECT_EQ(SkinIndex, 1);
  HdrPlayer = 2;
  ProcessKey_Settings(67);
  EXPECT_EQ(SkinIndex, 2);
}

TEST_F(SettingKeys, F9LooksAtEachSkinOnce) {
  ProcessKey_Settings(67);  // without any
  EXPECT_FALSE(message.up);
  skinList = {{.path = u"\\a.brd", .title = u"one", .forAny = false, .for1P = true},
              {.path = u"\\b.brd", .title = u"too", .forAny = false, .for1P = true}};
  SkinIndex = 1;
  HdrPlayer = 2;
  ProcessKey_Settings(67);
  EXPECT_EQ(SkinIndex, 1);
  EXPECT_FALSE(message.up);
  skinList[1].for2P = true;
  ProcessKey_Settings(67);
  EXPECT_EQ(message.text, u"Skin Change: too") << "the one in use comes last";
}

TEST_F(SettingKeys, F9BeginsAnewWhereTheIndexLiesOutside) {
  skinList = {{.path = u"\\a.brd", .title = u"one"}, {.path = u"\\b.brd", .title = u"two"}};
  for (const int16_t outside : {int16_t{-1}, int16_t{-5}, int16_t{2}, int16_t{300}}) {
    SkinIndex = outside;
    ProcessKey_Settings(67);
    EXPECT_EQ(SkinIndex, 0) << outside;
  }
}

TEST_F(SettingKeys, F10TogglesTheEchoAndEmptiesWhatItHad) {
  FillSlot(3);
  EchoPush(500, 3, 1);
  EchoBuffer[1][3] = WavBuffer[3];
  ProcessKey_Settings(68);
  EXPECT_TRUE(EchoEnabled);
  EXPECT_EQ(EchoCount, 0);
  EXPECT_EQ(EchoBuffer[1][3], nullptr);
  EXPECT_EQ(message.text, u"EFFECT: ECHO");
  ProcessKey_Settings(68);
  EXPECT_FALSE(EchoEnabled);
  EXPECT_EQ(message.text, u"EFFECT: NONE");
}

TEST_F(SettingKeys, F11GoesRoundTheDrawLimits) {
  DRAWLIMIT = 1;
  ProcessKey_Settings(87);
  EXPECT_EQ(DRAWLIMIT, 2);
  EXPECT_EQ(message.text, u"Draw Limit : 2");
  ProcessKey_Settings(87);
  EXPECT_EQ(DRAWLIMIT, 3);
  ProcessKey_Settings(87);
  EXPECT_EQ(DRAWLIMIT, 1);
  DRAWLIMIT = 255;
  ProcessKey_Settings(87);
  EXPECT_EQ(DRAWLIMIT, 1);
}

TEST_F(SettingKeys, Pad9AttacksOneself) {
  SetClock(77);
  SetRndList({0.0F, 0.1999F, 0.2F, 0.999F});
  for (const int32_t kind : {1, 1, 2, 5}) {
    ProcessKey_Settings(73);
    EXPECT_EQ(AttackKind, kind);
    EXPECT_EQ(AttackStart, kStart + 77);
  }
}

TEST_F(SettingKeys, TheOtherKeysOfThePadDoNothingOutsideABattle) {
  for (const int32_t key : {82, 79, 80, 81, 75}) ProcessKey_Settings(key);
  EXPECT_EQ(AttackKind, 255);
  EXPECT_FALSE(message.up);
}

TEST_F(SettingKeys, TwentyPressesCrossTheWholeVolume) {
  int32_t value = 0;
  ProcessKey_Settings(9);
  ASSERT_TRUE(GetVolume(value));
  EXPECT_EQ(value, 65535) << "at the top another press leaves it there";
  EXPECT_EQ(message.text, u"Volume: 65535/65535");
  ProcessKey_Settings(8);
  EXPECT_EQ(message.text, u"Volume: 62259/65535");  // 65535 - 3276
  for (int press = 2; press <= 20; ++press) ProcessKey_Settings(8);
  EXPECT_EQ(message.text, u"Volume: 15/65535");
  ProcessKey_Settings(8);
  ASSERT_TRUE(GetVolume(value));
  EXPECT_EQ(value, 0);
  ProcessKey_Settings(8);
  EXPECT_EQ(message.text, u"Volume: 0/65535");
  EXPECT_EQ(MixerValue, 0);
  ProcessKey_Settings(9);
  EXPECT_EQ(message.text, u"Volume: 3276/65535");
}

TEST_F(SettingKeys, WithoutASoundDeviceTheVolumeThatWasHeldLastIsShown) {
  ProcessKey_Settings(8);
  platform::CloseSoundDevice();
  ProcessKey_Settings(8);
  EXPECT_EQ(message.text, u"Volume: 62259/65535");
  int32_t value = 5;
  EXPECT_FALSE(GetVolume(value));
  EXPECT_FALSE(SetVolume(7));
  EXPECT_EQ(value, 5);
}

}  // namespace
}  // namespace qlm
