// Controllers on the list screens.
#include "screens/joystick_keys.h"

#include <algorithm>

#include "platform/clock.h"
#include "screens/song_select_keys.h"
#include "state/keys.h"
#include "state/options.h"
#include "state/session.h"
#include "state/song_select.h"

namespace qlm {
namespace {

// Of the first side; those of the second side stand 10 higher.
constexpr int16_t kFirstLane = 11;
constexpr int16_t kLastLane = 19;
constexpr int16_t kSides = 10;

// 0 for a code that is no lane's.
int16_t LaneCodeOf(int32_t key) {
  const int16_t* const code = KeyMap.Find(key);
  if (code == nullptr) return 0;
  const auto lane = static_cast<int16_t>(*code > kSides + kSides ? *code - kSides : *code);
  return lane >= kFirstLane && lane <= kLastLane ? lane : int16_t{0};
}

void ChooseLanes() {
  LanesState = GameState;
  GameState = kStateAutoLanes;
}

void LowerHiSpeed() {
  ComboHiSpeed = false;
  if (HiSpeed > 2.0F) {
    HiSpeed -= 0.5F;
  } else if (HiSpeed > 0.5F) {
    HiSpeed -= 0.25F;
  } else if (HiSpeed > 0) {
    HiSpeed = 0;
    RandomHiSpeed = true;
  }
}

// Quirk: a random speed stays random when a controller raises it from 0.
void RaiseHiSpeed() {
  ComboHiSpeed = false;
  HiSpeed += HiSpeed < 2.0F ? 0.25F : 0.5F;
}

int32_t Acted(void (*action)()) {
  action();
  return 0;
}

int32_t StartRepeat(int16_t key) {
  songSelect.repeatKey = key;
  songSelect.repeatStart = songSelect.repeatLast = platform::Now();
  return key;
}

int32_t KeyOf(int16_t lane) {
  switch (lane) {
    case 12: return kKeyLeftShift;
    case 14: return kKeyLeft;
    case 16: return StartRepeat(kKeyUp);
    case 17: return StartRepeat(kKeyDown);
    case 18: return kKeyTab;
    default: return kKeyEnter;
  }
}

int32_t KeyWithSelectHeld(int16_t lane) {
  switch (lane) {
    case 11: return kKeyF1;
    case 12: return Acted(ChooseLanes);
    case 13: return kKeyF2;
    case 14: return kKeyF8;
    case 15: return kKeyF3;
    case 16: return Acted(LowerHiSpeed);
    case 17: return Acted(RaiseHiSpeed);
    case 18: return kKeyF12;
    default: return kKeyF4;
  }
}

}  // namespace

int32_t ssKeyCvt_Joy(int32_t key) {
  const int16_t lane = LaneCodeOf(key);
  if (lane == 0) return key;
  return SelectHeld ? KeyWithSelectHeld(lane) : KeyOf(lane);
}

bool HoldsLaneCode(int16_t code) {
  for (int32_t key = kKeyJoy; key <= KeyMap.kLast; ++key) {
    if (KeyMap[key] == code && KeyHeld[key]) return true;
  }
  return false;
}

void RepeatJoystick() {
  constexpr int32_t kFirstWait = 200;
  constexpr int32_t kShortest = 50;
  constexpr int32_t kSlowing = 150'000;  // by the ms held: 750 ms between the first two steps
  if (songSelect.repeatKey == 0) return;
  const uint32_t now = platform::Now();
  const int32_t held = platform::Elapsed(now, songSelect.repeatStart);
  if (held <= kFirstWait) return;
  if (platform::Elapsed(now, songSelect.repeatLast) > std::max(kSlowing / held, kShortest)) {
    ProcessKey_SongSelect(songSelect.repeatKey);
  }
}

void EndJoystickRepeat() { songSelect.repeatKey = 0; }

}  // namespace qlm
