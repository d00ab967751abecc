// The legend of the keys.
#include "play_screen/key_legend.h"

#include <array>
#include <cstddef>
#include <cstdint>
#include <utility>

#include "base/text.h"
#include "graphics/clips.h"
#include "graphics/draw.h"
#include "play_screen/key_names.h"
#include "play_screen/sides.h"
#include "state/chart.h"
#include "state/key_numbers.h"
#include "state/keys.h"
#include "state/skin.h"
#include "state/surfaces.h"

namespace qlm {
namespace {

constexpr int32_t kAir = 4;    // between the keys and their names
constexpr int32_t kNames = 3;  // that a lane has at most

// A side's picture of the keys, and where its copy stands: in 64 bits, which no numbers of a skin leave.
struct Keys {
  const SkinPos* original;
  const SkinClip* clip;
  int64_t left;
  int64_t top;
};

// One side's in the middle; of two, the second below the first, and both above the words of a double play.
Keys PlaceOfKeys(size_t side) {
  const SkinPos& original = KeyPos[side * 2 + Placement(side)];
  const SkinClip& clip = Clip[original.id];
  const int64_t part = DrawnSides() < 2 ? 32 : side == 0 ? 15 : 34;
  const int64_t middle = BgaY + BgaH * part / 64;
  return {&original, &clip, BgaX + (int64_t{BgaW} - clip.width) / 2, middle - clip.height / 2};
}

// The lane that a key plays: both directions of a turntable count as one. 0 for other keys.
int32_t ChannelOf(int32_t key) {
  const int32_t code = KeyMap[key];
  if (code < 11 || code > 29) return 0;
  return code == 17 || code == 27 ? code - 1 : code;
}

// Whether the chart can have notes there: one for five keys leaves two lanes of the first side empty.
bool InPlay(int32_t channel) {
  if (!IsNoteChannel(channel) || SideOf(channel) >= DrawnSides()) return false;
  return uses89 || DrawnSides() > 1 || channel < 18;
}

// Above the keys, so that long names have room: those of the turntable and of the narrow lanes.
bool StandsAbove(int32_t channel) { return channel % 2 == 0; }

void DrawName(const Keys& keys, int32_t key, int32_t channel, int32_t row) {
  const LaneSkin& lane = NoteSkin[channel - 10];
  const int32_t inPicture = lane.x - keys.original->x + Clip[lane.clip].width / 2;
  const KeyName name(key);
  const int64_t x = keys.left + inPicture - Len(name.Words()) * SysFontW / 2;
  const int64_t y = StandsAbove(channel) ? keys.top - kAir - (int64_t{row} + 1) * SysFontH
                                         : keys.top + keys.clip->height + kAir + int64_t{row} * SysFontH;
  if (!std::in_range<int32_t>(x) || !std::in_range<int32_t>(y)) return;
  DrawFaintText(static_cast<int32_t>(x), static_cast<int32_t>(y), name.Words());
}

}  // namespace

void DrawKeyLegend() {
  if (!DDBack) return;
  std::array<int32_t, kLanes> rows{};
  std::array<bool, 2> begun{};
  const int32_t last = JoyCount > 0 ? static_cast<int32_t>(KeyMap.kLast) : kKeyJoy - 1;
  for (int32_t key = 1; key <= last; ++key) {
    const int32_t channel = ChannelOf(key);
    if (channel == 0 || !InPlay(channel)) continue;
    const Keys keys = PlaceOfKeys(SideOf(channel));
    if (keys.original->id == 0) continue;
    if (!std::exchange(begun[SideOf(channel)], true)) {
      CopyFaintFromSheet(keys.clip->file, keys.clip->rect, keys.left, keys.top);
    }
    int32_t& row = rows[LaneOf(channel)];
    if (row < kNames) DrawName(keys, key, channel, row++);
  }
}

}  // namespace qlm
