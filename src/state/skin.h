// The skin in memory: what the play screen is made of and where each part stands. Written by the reading of a
// skin file; the lanes' x and the clips' rectangles in use change while a chart is played.
#pragma once

#include <array>
#include <cstdint>
#include <tuple>
#include <vector>

#include "base/table.h"
#include "base/text.h"
#include "platform/surface.h"

namespace qlm {

using platform::Rect;

// A place on the screen. What `id` names, and what p3 and p4 mean, depends on the directive.
struct SkinPos {
  uint8_t id = 0;
  int16_t x = 0;
  int16_t y = 0;
  int16_t p3 = 0;
  int16_t p4 = 0;

  friend bool operator==(const SkinPos&, const SkinPos&) = default;
};

// animMode values of a clip.
constexpr uint8_t kClipStill = 0;
constexpr uint8_t kClipByClock = 1;     // speed is ms a frame of the play clock
constexpr uint8_t kClipByPosition = 2;  // speed is position units a frame, counted from the last bar line

// An animated sprite. Its frames lie in a row on the sheet; where each one is follows from the first, so that
// a clip of 65,535 frames takes no more room than a still one.
struct SkinClip {
  uint8_t file = 0;     // of SkinFile
  uint16_t frames = 1;  // at least 1
  int32_t x = 0;        // of the first frame on the sheet
  int32_t y = 0;
  int64_t stepX = 0;  // from one frame to the next
  int64_t stepY = 0;
  float speed = 0;
  uint8_t animMode = kClipStill;
  Rect rect;  // of the frame in use
  int32_t width = 0;
  int32_t height = 0;
  uint8_t flag = 0;  // read and not used
};

// A digit strip. Glyph 0 is blank, 1 to 10 are the digits 0 to 9, 11 is "-", 12 ".", 13 ":".
constexpr int32_t kGlyphs = 14;
struct SkinNumber {
  uint8_t file = 0;
  std::array<Rect, 16> rects{};  // the first 14 are filled
  int32_t width = 0;
  int32_t height = 0;
  uint8_t gap = 0;  // pixels between digits when drawn
};

// What a lane's notes look like and where they fall.
struct LaneSkin {
  uint8_t clip = 0;
  int16_t x = 0;        // in use: xLeft or xRight, as the side's turntable stands
  int16_t yOffset = 0;  // minus the clip's height: a note's bottom stands on its computed y
  int16_t xLeft = 0;
  int16_t xRight = 0;
  int16_t p5 = 0;  // read and not used, like p6 and spareClip
  int16_t p6 = 0;
  uint8_t beamClip = 0;
  uint8_t spareClip = 0;
};

// Numbers in the order of the file, at most 256; `last` is the index of the last one, -1 none.
struct SkinOrder {
  std::array<uint8_t, 256> entries{};
  int32_t last = -1;
};

template <typename T>
using BySide = std::array<T, 2>;

inline Table<SkinClip, 255> Clip;
inline SkinOrder ClipList;
inline Table<SkinNumber, 255> Number;
// By channel - 10: rows 0 and 10 are the bar lines of the two sides.
inline Table<LaneSkin, 50> NoteSkin;

inline Table<uint8_t, 255> LayerClip;
inline Table<int32_t, 255> LayerX;
inline Table<int32_t, 255> LayerY;
inline Table<bool, 255> LayerWide;  // left out with one play side
inline SkinOrder LayerList;

inline BySide<std::array<SkinPos, 5>> ScoreCountPos{};  // 0 POOR … 4 PERFECT
inline BySide<std::array<SkinPos, 5>> JudgePos{};       // 0 POOR … 4 PERFECT
inline BySide<BySide<SkinPos>> JudgeLinePos{};          // by side, then by the turntable: 0 left, 1 right
inline std::array<SkinPos, 3> BombPos{};                // GOOD, GREAT, PERFECT
inline BySide<BySide<std::array<SkinPos, 16>>> LinePos{};
inline BySide<SkinOrder> LineList;
inline std::array<SkinPos, 4> KeyPos{};             // 1P left, 1P right, 2P left, 2P right
inline BySide<std::array<SkinPos, 19>> BlinkPos{};  // by the turntable, then by channel - 11
inline BySide<std::array<SkinPos, 7>> ClassPos{};   // best class first
inline std::array<SkinPos, 4> LenPos{};
inline std::array<bool, 4> LenUsed{};
inline BySide<SkinPos> ScorePos{};
inline BySide<SkinPos> JPointPos{};
inline BySide<SkinPos> MaxPos{};
inline BySide<SkinPos> GaugeNumPos{};
inline BySide<SkinPos> GaugePos{};
inline BySide<SkinPos> GaugeBackPos{};
inline BySide<SkinPos> ExGaugePos{};
inline BySide<SkinPos> ExGaugeBackPos{};
inline BySide<std::array<SkinPos, 4>> FanPos{};
inline BySide<std::array<SkinPos, 18>> OptionPos{};

inline int16_t JudgeY = 480;  // where notes are judged
inline float GaugeStep = 0;   // pixels of the gauge bar for 1 of 100; 0 is the clip's width by 100
inline SkinPos BpmPos;
inline SkinPos PlayPos1;
inline SkinPos PlayFullPos;
inline SkinPos CountPos;
inline SkinPos StagePos;
inline SkinPos FpsPos;
inline uint8_t ComboNumber = 0;  // of Number
// Four numbers each, as the file gives them: x, y, width, height.
inline Rect TitleRect;
inline BySide<Rect> BgaRect{};
inline int32_t NoMissClip = 0;
inline int32_t MaxComboClip = 0;
inline int32_t PressureClip = 0;
inline int32_t ComboGraphClip = 0;
inline int32_t ComboGraphBackClip = 0;

// Rows of OptionPos that show, in the order in which they are drawn.
constexpr size_t kOptionGroups = 6;  // hidden, random, auto or replay, effect, key mode, pressure
inline std::array<uint8_t, kOptionGroups> OptionMark{};

// The skins that were found, by name.
struct SkinEntry {
  Text path;
  Text title;
  bool forAny = true;
  bool for1P = false;
  bool for2P = false;
  bool forDP = false;
};
inline std::vector<SkinEntry> skinList;

inline Text SkinPath;                    // of the skin in use
inline int16_t SkinIndex = 0;            // its place in skinList
inline std::array<Text, 3> SkinMapPath;  // 1P, 2P, DP; kept in the settings file
inline std::array<int16_t, 3> SkinMapIndex{};

// The tables above, all of which a load of a skin writes.
inline auto SkinTables() {
  return std::tie(Clip, ClipList, Number, NoteSkin, LayerClip, LayerX, LayerY, LayerWide, LayerList,
                  ScoreCountPos, JudgePos, JudgeLinePos, BombPos, LinePos, LineList, KeyPos, BlinkPos,
                  ClassPos, LenPos, LenUsed, ScorePos, JPointPos, MaxPos, GaugeNumPos, GaugePos, GaugeBackPos,
                  ExGaugePos, ExGaugeBackPos, FanPos, OptionPos, JudgeY, GaugeStep, BpmPos, PlayPos1,
                  PlayFullPos, CountPos, StagePos, FpsPos, ComboNumber, TitleRect, BgaRect, NoMissClip,
                  MaxComboClip, PressureClip, ComboGraphClip, ComboGraphBackClip);
}
// What a load of a skin clears.
void ClearSkinTables();
void ResetSkin();

}  // namespace qlm
