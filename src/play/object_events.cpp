// The cursors that walk the object table and the key sound changes.
#include "play/object_events.h"

#include <cstdint>
#include <span>

#include "base/numbers.h"
#include "base/rnd.h"
#include "play/judgement.h"
#include "play/position.h"
#include "play/song_change.h"
#include "sound/play.h"
#include "sound/slots.h"
#include "state/chart.h"
#include "state/options.h"
#include "state/settings.h"
#include "state/sounds.h"
#include "state/surfaces.h"
#include "state/timeline.h"

namespace qlm {
namespace {

// Past it a sound no longer starts late.
constexpr double kLateUnits = 48;
constexpr double kAheadUnits = 120;
// The tick of an object that starts its picture anew.
constexpr int32_t kRestartTick = -127;

void SetLaneSound(int32_t lane, int32_t slot) {
  if (lane >= 0 && lane < kLanes) LaneSound[static_cast<size_t>(lane)] = slot;
}

bool InTime(const ChartObj& obj) { return playPos - obj.pos < kLateUnits; }

void StartSound(const ChartObj& obj) {
  if (InTime(obj)) PlayWav(obj.value, obj.pos, 0);
}

void PassSeparator(const ChartObj& obj) {
  curMeasure = obj.measure;
  curMeasurePos = obj.pos;
  // Two measures in nine run at a wider range of speeds.
  if (!RandomHiSpeed) return;
  const double range = Rnd() * 9 >= 7 ? 5 : 2;
  Assign(HiSpeedTarget, Narrow(Rnd() * range + 1));
}

void ShowPicture(const ChartObj& obj, int32_t& picture, bool& restart) {
  picture = obj.value;
  if (obj.tick == kRestartTick) restart = true;
  BGADirty = true;
}

// A player's note is not touched as it passes the line: a press judges it, or the check of what has scrolled
// past. The machine's own notes are played and judged here, unless a record decides.
void PassNote(int32_t index, const ChartObj& obj) {
  const auto lane = static_cast<size_t>(obj.channel - 11);
  if (PlayKeySound) StartSound(obj);
  if ((!AutoLane[lane] && !DEMOMode) || ShowRec) return;
  StartSound(obj);
  LaneNote[lane] = -1;
  float used = 0;
  JudgeNote(index, 0, false, used);
}

void PassObject(int32_t index, const ChartObj& obj) {
  if (IsNoteChannel(obj.channel)) return PassNote(index, obj);
  if (obj.channel >= 31 && obj.channel <= 49) return SetLaneSound(obj.channel - 31, obj.value);
  switch (obj.channel) {
    case ObjSongChange: ChangeSong(obj.value); break;
    case ObjSeparator: PassSeparator(obj); break;
    case 1:
      if (PlaySound) StartSound(obj);
      break;
    case 3:
      SetBPMOf(obj, static_cast<float>(obj.value));
      shownBPM = curBPM;
      break;
    case 4: ShowPicture(obj, curBaseBGA, BGARestart[0]); break;
    case 6: poorBGA = obj.value; break;
    case 7: ShowPicture(obj, curLayerBGA, BGARestart[1]); break;
    case 8:
      if (const float* tempo = BpmTable.Find(obj.value); tempo != nullptr && *tempo > 0)
        SetBPMOf(obj, *tempo);
      shownBPM = curBPM;
      break;
    default: break;
  }
}

}  // namespace

bool Sounds(const ChartObj& obj) { return obj.channel == 1 || IsNoteChannel(obj.channel); }

void FollowKeySounds() {
  for (; keySoundCursor < keySoundCount; ++keySoundCursor) {
    const KeySoundChange* change = KeySoundChanges.Find(keySoundCursor);
    if (change == nullptr || !(change->pos < playPos)) return;
    SetLaneSound(change->channel - 11, change->value);
  }
}

void PassObjects() {
  for (; objCursor < objCount; ++objCursor) {
    const ChartObj* obj = FindObj(objCursor);
    if (obj == nullptr || !(obj->pos <= playPos)) return;
    PassObject(objCursor, *obj);
  }
}

void LoadSoundsAhead() {
  // Held for the loop, which passes hundreds of objects in each turn of a dense chart.
  const std::span<const uint8_t> loaded(WavLoaded.begin(), WavLoaded.end());
  for (loopCounter = objCursor + 1; loopCounter <= objCount; ++loopCounter) {
    const ChartObj* obj = FindObj(loopCounter);
    if (obj == nullptr || !(obj->pos <= playPos + kAheadUnits)) return;
    if (!Sounds(*obj)) continue;
    // Below 0 becomes a number beyond all slots.
    const auto slot = static_cast<uint32_t>(obj->value);
    if (slot < loaded.size() && loaded[slot] <= 254) loadwav(obj->value);
  }
}

}  // namespace qlm
