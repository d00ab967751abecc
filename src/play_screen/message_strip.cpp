// The strip of the messages.
#include "play_screen/message_strip.h"

#include <cstdint>
#include <utility>

#include "base/text.h"
#include "graphics/clips.h"
#include "graphics/draw.h"
#include "graphics/present.h"
#include "play_screen/sides.h"
#include "state/message.h"
#include "state/session.h"
#include "state/surfaces.h"

namespace qlm {
namespace {

constexpr int32_t kCharacters = 36;
constexpr int32_t kAir = 8;    // beside the first and the last character
constexpr int32_t kAbove = 3;  // and over and under them
constexpr TextView kPause = u"PAUSE: F12 GOES ON";

// The sums are in 64 bits, which no numbers of a skin leave.
bool OnPicture(const MessagePlace& place) {
  return place.x >= BgaX && place.x < int64_t{BgaX} + BgaW && place.y >= BgaY &&
         place.y < int64_t{BgaY} + BgaH;
}

// Beside a second field it ends with the picture, unless all stands still.
int64_t RightEnd(const MessagePlace& place) {
  return DrawnSides() < 2 || Paused ? place.x + int64_t{kCharacters} * SysFontW + kAir : int64_t{BgaX} + BgaW;
}

void DrawGround(const MessagePlace& place) {
  const int64_t left = int64_t{place.x} - kAir;
  const int64_t top = int64_t{place.y} - kAbove;
  const int64_t bottom = int64_t{place.y} + SysFontH + kAbove;
  DrawStrip(RectOf(left, top, RightEnd(place), bottom));
}

void DrawPauseLine(const MessagePlace& place) {
  if (message.up && Len(message.text) + 1 + Len(kPause) > kCharacters) return;
  const int64_t x = place.x + int64_t{kCharacters - Len(kPause)} * SysFontW;
  if (std::in_range<int32_t>(x)) DrawFaintText(static_cast<int32_t>(x), place.y, kPause);
}

}  // namespace

void DrawTroubleStrip() {
  if (!DDBack || chartTrouble.empty()) return;
  const auto lines = static_cast<int64_t>(chartTrouble.size());
  const int64_t bottom = int64_t{BgaY} + BgaH;
  const int64_t top = bottom - kAbove - lines * SysFontH;
  DrawStrip(RectOf(BgaX, top - kAbove, int64_t{BgaX} + BgaW, bottom));
  int64_t y = top;
  for (const Text& line : chartTrouble) {
    if (std::in_range<int32_t>(y)) DrawText(BgaX + kAir, static_cast<int32_t>(y), line, 0);
    y += SysFontH;
  }
}

void DrawMessageStrip() {
  if (!DDBack || (!message.up && !Paused)) return;
  const MessagePlace place = PlaceOfMessage();
  if (OnPicture(place)) DrawGround(place);
  if (Paused) DrawPauseLine(place);
}

}  // namespace qlm
