// The keys of the play, and the keys of the settings.
#include "play/input.h"

#include <algorithm>
#include <cmath>
#include <optional>

#include "base/numbers.h"
#include "base/rnd.h"
#include "chart/loading.h"
#include "graphics/skin.h"
#include "net/messages.h"
#include "platform/clock.h"
#include "play/judgement.h"
#include "play/pause.h"
#include "play/position.h"
#include "play/records.h"
#include "play/skin_choice.h"
#include "play_screen/option_marks.h"
#include "sound/play.h"
#include "sound/volume.h"
#include "state/judgement.h"
#include "state/keys.h"
#include "state/message.h"
#include "state/network.h"
#include "state/options.h"
#include "state/session.h"
#include "state/settings.h"
#include "state/sounds.h"
#include "state/timeline.h"

namespace qlm {
namespace {

constexpr platform::Colour kEmptyPress = platform::Rgb(128, 128, 128);
constexpr TextView kHowToChange = u" (1:Down/2:Up)";

TextView OnOff(bool on) { return on ? u"On" : u"Off"; }

bool StandsStill() { return Paused || BreakActive || ShowRec; }

void HoldEsc() {
  // Held long enough, it ends the play in one of the next turns.
  EscHeld = true;
  EscStart = platform::Now();
  AbortLoad();
}

void TurnScratch(bool& onTheRight, TextView side) {
  onTheRight = !onTheRight;
  PlaceNotes();
  ShowMessage(Join(side, u" SCRATCH: ", onTheRight ? u"Right" : u"Left"));
}

// For keys that do something on other screens too: behind the play its record is closed, and on the lists
// there is none.
void Record(int32_t kind, float delta, int32_t colour) {
  if (GameState == kStatePlay) AddRecEvent(kind, delta, colour);
}

void RecordSpeed(int32_t kind, float speed) {
  if (const auto hundredths = Round(double{speed} * 100)) {
    Record(kind, static_cast<float>(*hundredths), 0);
  }
}

// A colour as records have it: red in the low byte.
int32_t RedLow(platform::Colour colour) {
  return static_cast<int32_t>((colour & 255) << 16 | (colour & 0xFF00) | (colour >> 16 & 255));
}

void PressLane(int32_t channel) {
  const auto lane = static_cast<size_t>(channel - 11);
  LaneDown[lane] = true;
  LaneBeam[lane] = 1;
  PlayWav(LaneSound[lane], 0, 0);
  HitColour = kEmptyPress;
  float delta = 0;
  if (LaneNote[lane] != -1 && !PlayFailed && JudgeNote(LaneNote[lane], 0, false, delta)) LaneNote[lane] = -1;
  AddRecEvent(channel, delta, RedLow(HitColour));
}

// The keys 1 (down) and 2 (up) change what the keys held with them name.

enum class Way { kDown, kUp };

void LowerHiSpeed() {
  if (HiSpeed > 2.0F) {
    HiSpeed -= 0.5F;
    RandomHiSpeed = false;
  } else if (HiSpeed > 0.5F) {
    HiSpeed -= 0.25F;
    RandomHiSpeed = false;
  } else if (HiSpeed > 0) {
    HiSpeed = 0;
    RandomHiSpeed = true;
  }
}

void RaiseHiSpeed() {
  HiSpeed += HiSpeed < 2.0F ? 0.25F : 0.5F;
  RandomHiSpeed = false;
}

void ChangeHiSpeed(Way way) {
  if (KeyHeld[way == Way::kDown ? kKey2 : kKey1]) {
    ShowMessage(u"COMBO-LINKED HISPEED MODE!");
    ComboHiSpeed = true;
    return;
  }
  ComboHiSpeed = false;
  if (way == Way::kDown) {
    LowerHiSpeed();
  } else {
    RaiseHiSpeed();
  }
  RecordSpeed(kRecHiSpeed, HiSpeed);
  ShowMessage(Join(u"[4+1,2] HiSpeed: ", HiSpeed, kHowToChange));
}

// To two decimals, halves to even.
std::optional<float> Hundredths(double value) { return Narrow(RoundHalfEven(value * 100) / 100); }

void ChangeRealHiSpeed(Way way) {
  if (way == Way::kDown) {
    if (RealHiSpeed > 0.25F) Assign(RealHiSpeed, Hundredths(RealHiSpeed - 0.05));
  } else {
    if (RealHiSpeed < 3.0F) Assign(RealHiSpeed, Hundredths(RealHiSpeed + 0.05));
  }
  // Quirk: behind a tempo object this falls back to the tempo of the chart's start, until the next one.
  SetBPM(rawBPM);
  RankLocked = true;
  RecordSpeed(kRecRealHiSpeed, RealHiSpeed);
  ShowMessage(Join(u"[3+1,2] Real HiSpeed: ", RealHiSpeed, kHowToChange));
}

void ChangeSleep(Way way) {
  constexpr int32_t kMostMs = 15;
  // A settings file may hold anything.
  Sleep = way == Way::kDown ? std::max(Sleep, 1) - 1 : std::min(Sleep, kMostMs - 1) + 1;
  ShowMessage(Join(u"[1,2] Sleep: ", Sleep, kHowToChange));
}

void ChangeWhatIsHeld(Way way) {
  PlaySE(SE::kTick);
  if (KeyHeld[kKey4]) {
    ChangeHiSpeed(way);
  } else if (KeyHeld[kKey3]) {
    ChangeRealHiSpeed(way);
  } else {
    ChangeSleep(way);
  }
}

void ChangeVolume(Way way) {
  constexpr int32_t kStep = MixerMax / 20;
  int32_t value = 0;
  if (GetVolume(value)) {
    value = way == Way::kDown ? std::max(value - kStep, 0) : std::min(value + kStep, MixerMax);
    SetVolume(value);
    MixerValue = value;
  }
  ShowMessage(Join(u"Volume: ", MixerValue, u"/", MixerMax));
}

void ChangeDrawLimit() {
  PlaySE(SE::kTick);
  DRAWLIMIT = DRAWLIMIT >= 3 ? 1 : static_cast<uint8_t>(DRAWLIMIT + 1);
  ShowMessage(Join(u"Draw Limit : ", int32_t{DRAWLIMIT}));
}

void ToggleBGA() {
  ShowBGA = !ShowBGA;
  NoBGA = !ShowBGA;
  ShowMessage(Join(u"[5] BGA: ", OnOff(ShowBGA)));
  PlaySE(SE::kTick);
}

void TogglePreview() {
  BMSPreview = BMSPreview == 0 ? 1 : 0;
  ShowMessage(Join(u"[F7] BMS Preview: ", OnOff(BMSPreview != 0)));
  // A preview that runs ends with it.
  // Quirk: so does a play.
  PlayEnd = true;
  PlaySE(SE::kTick);
}

// The machine plays the rest, or the hands do.
void ToggleDemo() {
  DEMOMode = !DEMOMode;
  RankLocked = true;
  ShowMessage(Join(u"[F8] DEMO: ", OnOff(DEMOMode)));
  PlaySE(SE::kTick);
  PickOptionMarks();
}

void ToggleEcho() {
  EchoEnabled = !EchoEnabled;
  ShowMessage(Join(u"EFFECT: ", EchoEnabled ? u"ECHO" : u"NONE"));
  DropEchoes();
  PlaySE(SE::kTick);
}

void AttackYourself() {
  constexpr float kKinds = 5;
  AttackStart = platform::Now();
  AttackKind = static_cast<int32_t>(std::floor(Rnd() * kKinds)) + 1;
}

void AttackPlayer(int32_t position) {
  if (network.NetActive) SendAttack(position);
}

}  // namespace

int32_t LaneChannel(int32_t key) {
  const int16_t* const code = KeyMap.Find(key);
  if (code == nullptr || *code < 11 || *code > 29) return 0;
  return *code == 17 || *code == 27 ? *code - 1 : *code;
}

void ProcessKey_Play(int32_t key) {
  switch (key) {
    case kKeyEsc: HoldEsc(); break;
    case kKeyF12: Paused ? BMSResume() : BMSPause(); break;
    case kKeyF1: TurnScratch(SCRATCH1P, u"1P"); break;
    case kKeyF2: TurnScratch(SCRATCH2P, u"2P"); break;
    default: break;
  }
  if (StandsStill()) return;
  if (const int32_t channel = LaneChannel(key); channel != 0) PressLane(channel);
}

void ReleaseLane(int32_t channel) {
  const auto lane = static_cast<size_t>(channel - 11);
  LaneDown[lane] = false;
  LaneBeam[lane] = 0;
  Record(-channel, 0, 0);
}

void ProcessKey_Settings(int32_t key) {
  switch (key) {
    case kKeyPad0: AttackPlayer(0); break;
    case kKeyPad1: AttackPlayer(1); break;
    case kKeyPad2: AttackPlayer(2); break;
    case kKeyPad3: AttackPlayer(3); break;
    case kKeyPad4: AttackPlayer(4); break;
    case kKeyPad9: AttackYourself(); break;
    case kKey7: ChangeVolume(Way::kDown); break;
    case kKey8: ChangeVolume(Way::kUp); break;
    case kKeyF11: ChangeDrawLimit(); break;
    case kKey1: ChangeWhatIsHeld(Way::kDown); break;
    case kKey2: ChangeWhatIsHeld(Way::kUp); break;
    case kKey3: ShowMessage(Join(u"[3] Real HiSpeed: ", RealHiSpeed, kHowToChange)); break;
    case kKey4: ShowMessage(Join(u"[4] HiSpeed: ", HiSpeed, kHowToChange)); break;
    case kKey5: ToggleBGA(); break;
    case kKeyF7: TogglePreview(); break;
    case kKeyF8: ToggleDemo(); break;
    case kKeyF9:
      NextSkin();
      PlaySE(SE::kTick);
      break;
    case kKeyF10: ToggleEcho(); break;
    default: break;
  }
}

}  // namespace qlm
