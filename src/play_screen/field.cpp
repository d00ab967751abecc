// The field's furniture.
#include "play_screen/field.h"

#include <algorithm>
#include <cmath>
#include <optional>

#include "base/numbers.h"
#include "graphics/clips.h"
#include "graphics/draw.h"
#include "platform/clock.h"
#include "play_screen/sides.h"
#include "state/chart.h"
#include "state/judgement.h"
#include "state/keys.h"
#include "state/options.h"
#include "state/skin.h"
#include "state/surfaces.h"
#include "state/timeline.h"

namespace qlm {
namespace {

// LaneBeam of a beam that has come to rest.
constexpr uint8_t kSettled = 127;
// How much of the rest of its way a beam goes in a second.
constexpr double kSinkRate = 4.8;
constexpr double kRiseRate = 48.0;
constexpr double kNearRest = 0.01;

// Seconds of a frame; 0 until a frame rate is known.
double FrameTime() { return Fps > 1.0 ? 1 / Fps : 0; }

void DrawBlink(int32_t channel) {
  const ChartObj* const note = FindObj(LaneNote[LaneOf(channel)]);
  if (note == nullptr || !(std::abs(note->pos - playPos) < JudgeWindow[1])) return;
  DrawClip(BlinkPos[Placement(SideOf(channel))][LaneOf(channel)]);
}

void MoveBeam(float& beam, uint8_t goal) {
  const double rate = goal == 0 ? kSinkRate : kRiseRate;
  Assign(beam, Narrow(beam + (goal - double{beam}) * rate * FrameTime()));
}

// The upper part of the beam, put so that it ends where the whole one does.
void DrawMovingBeam(const LaneSkin& lane, float beam) {
  const SkinClip& clip = Clip[lane.beamClip];
  const std::optional<int32_t> shown = Round(clip.height * double{beam});
  const std::optional<int32_t> y = Round(clip.height * (1 - double{beam}));
  if (!shown || !y) return;
  const Rect& rect = clip.rect;
  DrawFromSheet(clip.file, RectOf(rect.left, rect.top, rect.right, int64_t{rect.top} + *shown), lane.x, *y);
}

void DrawBeam(int32_t channel) {
  const size_t index = LaneOf(channel);
  const LaneSkin& lane = NoteSkin[channel - 10];
  uint8_t& goal = LaneBeam[index];
  if (goal == kSettled) {
    if (LaneDown[index]) DrawClip(lane.beamClip, lane.x, 0);
    return;
  }
  // Quirk: below 48 frames a second the rise goes past its end and swings, and what is drawn then reaches
  // beyond the clip.
  MoveBeam(KeyBeam[index], goal);
  DrawMovingBeam(lane, KeyBeam[index]);
  if (std::abs(double{KeyBeam[index]} - goal) < kNearRest) goal = kSettled;
}

// The part of the bar that is still to come, and a head that jumps up at each measure and drops back.
void DrawProgressBar(const SkinPos& pos) {
  const SkinClip& clip = Clip[pos.id];
  const Rect& rect = clip.rect;
  const std::optional<int32_t> measure = Round(curMeasure);
  const float* const length = measure ? MeasureLen.Find(*measure) : nullptr;
  const double period = length != nullptr ? double{kBeatUnits} * *length : 0;
  const auto place = RoundTo<int64_t>(playPos - curMeasurePos);
  const auto whole = RoundTo<int64_t>(period);
  const int32_t phase = place && whole ? Modulo(*place, *whole).value_or(0) : 0;
  const int64_t gone = Divide(int64_t{clip.height} * playClock, BMSLengthMs).value_or(0);
  const int64_t top = rect.top + gone;
  if (phase > 4)
    CopyFromSheet(clip.file, RectOf(rect.left, top, rect.right, rect.bottom), pos.x, pos.y + gone);
  const double part = phase / period;
  const double k = 1 - part * part;
  const std::optional<int32_t> height = Round(k * 8);
  const auto way = RoundTo<int64_t>(static_cast<double>(playClock) * clip.height * RealHiSpeed * k);
  if (!height || !way) return;
  // Quirk: towards its end the head reaches below the clip, into whatever the sheet holds there.
  if (const std::optional<int32_t> jumped = Divide(*way, BMSLengthMs)) {
    CopyFromSheet(clip.file, RectOf(rect.left, top, rect.right, top + *height), pos.x,
                  int64_t{pos.y} + *jumped);
  }
}

// The burst of a lane, centred on it at the judge line, until its frames are over.
void DrawBomb(int32_t channel) {
  const size_t index = LaneOf(channel);
  if (LaneHit[index] == 0 || LaneHit[index] > BombPos.size()) return;
  const SkinClip& clip = Clip[BombPos[LaneHit[index] - 1].id];
  const int32_t ms = platform::Elapsed(platform::Now(), LaneHitTime[index]);
  // Quirk: the very millisecond of its end still belongs to it and shows its first frame once more.
  if (!(ms <= clip.frames * double{clip.speed})) {
    LaneHit[index] = 0;
    return;
  }
  Rect rect = clip.rect;
  if (const auto speed = Round(clip.speed)) {
    if (const auto gone = Divide(ms, *speed)) {
      Assign(rect, FrameOf(clip, Modulo(*gone, clip.frames).value_or(-1)));
    }
  }
  const LaneSkin& lane = NoteSkin[channel - 10];
  const int64_t x = int64_t{lane.x} + Clip[lane.clip].width / 2 - clip.width / 2;
  const int64_t y = int64_t{JudgeLineY(SideOf(channel))} - clip.height / 2;
  DrawFromSheet(clip.file, rect, x, y);
}

}  // namespace

void DrawLinesAndKeys() {
  for (size_t side = 0; side < DrawnSides(); ++side) {
    const size_t placement = Placement(side);
    const SkinOrder& lines = LineList[side];
    for (int32_t i = 0; i <= std::min(lines.last, 15); ++i) {
      const uint8_t line = lines.entries[static_cast<size_t>(i)];
      if (line < 16) CopyClip(LinePos[side][placement][line]);
    }
    CopyClip(KeyPos[side * 2 + placement]);
  }
}

void DrawLanes() {
  ForNoteChannels([](int32_t channel) {
    DrawBlink(channel);
    DrawBeam(channel);
  });
}

void DrawProgressBars() {
  if (!DDBack || playClock >= BMSLengthMs) return;
  for (size_t i = 0; i < LenPos.size(); ++i) {
    if (LenUsed[i] && (LenPos[i].p3 == 0 || DrawnSides() == 2)) DrawProgressBar(LenPos[i]);
  }
}

void DrawLayers() {
  for (int32_t i = 0; i <= std::min(LayerList.last, 255); ++i) {
    const int64_t n = LayerList.entries[static_cast<size_t>(i)];
    if (LayerX[n] < 0 || LayerY[n] < 0 || (LayerWide[n] && DrawnSides() < 2)) continue;
    DrawClip(LayerClip[n], LayerX[n], LayerY[n]);
  }
}

int32_t JudgeLineY(size_t side) {
  const int16_t y = JudgeLinePos[side][Placement(side)].y;
  return HalfField ? static_cast<int32_t>(RoundHalfEven(y / 2.0)) : y;
}

void DrawJudgeLines() {
  for (size_t side = 0; side < DrawnSides(); ++side) {
    const SkinPos& pos = JudgeLinePos[side][Placement(side)];
    CopyClip(pos.id, pos.x, JudgeLineY(side));
  }
}

void DrawBombs() { ForNoteChannels(DrawBomb); }

void DrawMarquee() {
  if (!DDBack) return;
  const std::optional<int32_t> start = Modulo(playClock / 200, Len(MarqueeText));
  if (!start || *start < 0) return;
  const TextView head = Left(Mid(MarqueeText, *start + 1), TitleChars);
  const int32_t cells = DrawText(TitleRect.left, TitleRect.top, head, 0);
  const TextView tail = Left(Left(MarqueeText, *start), TitleChars - Len(head));
  const int64_t behind = int64_t{TitleRect.left} + int64_t{cells} * SysFontW;
  if (behind < kScreen.right) DrawText(static_cast<int32_t>(behind), TitleRect.top, tail, 0);
}

}  // namespace qlm
