// The choice of the lanes that the machine plays.
#include "screens/lane_choice.h"

#include <cstddef>

#include "base/text.h"
#include "graphics/present.h"
#include "platform/clock.h"
#include "play/input.h"
#include "screens/list_text.h"
#include "sound/play.h"
#include "state/chart.h"
#include "state/key_numbers.h"
#include "state/options.h"
#include "state/session.h"
#include "state/settings.h"
#include "state/surfaces.h"

namespace qlm {
namespace {

constexpr platform::FontLook kFont{.height = 10};
constexpr platform::Colour kPaper = platform::Rgb(0xF3, 0xEA, 0xD3);
constexpr platform::Colour kQuiet = platform::Rgb(0x8B, 0x93, 0xAE);
constexpr platform::Colour kTeal = platform::Rgb(0x4C, 0xC9, 0xBF);
constexpr platform::Colour kGold = platform::Rgb(0xD9, 0xA4, 0x41);

void Write(int32_t x, int32_t y, TextView text, platform::Colour colour) {
  DrawLine({x, y - 2, kScreen.right, y + 12}, text, kFont, colour);
}

void WriteSetting(int32_t y, TextView label, TextView value) {
  Write(80, y, label, kQuiet);
  Write(180, y, value, kPaper);
}

TextView OnOrOff(bool on) { return on ? u"ON" : u"OFF"; }

void WriteLanes() {
  for (int32_t channel = 11; channel < 11 + kLanes; ++channel) {
    if (!IsNoteChannel(channel)) continue;
    const bool byMachine = AutoLane[static_cast<size_t>(channel - 11)];
    Write(420, channel * 10, Join(u"[", channel, u"] : ", byMachine), byMachine ? kTeal : kQuiet);
  }
}

}  // namespace

void DrawLaneChoice() {
  WriteSetting(20, u"Hi-Speed:", Join(Fixed(double{HiSpeed}, 2), u"x"));
  WriteSetting(30, u"PlaySpeed:", Join(Fixed(double{RealHiSpeed}, 2), u"x"));
  WriteSetting(40, u"BGA:", OnOrOff(ShowBGA));
  WriteSetting(50, u"DEMO:", OnOrOff(DEMOMode));
  if (platform::Now() % 500 > 100) Write(400, 80, u"AUTOPLAY:", kGold);
  WriteLanes();
  PresentFrame();
}

void ProcessKey_AutoLanes(int32_t key) {
  if (key == kKeyEsc) GameState = LanesState;
  if (const int32_t channel = LaneChannel(key); channel != 0) {
    bool& byMachine = AutoLane[static_cast<size_t>(channel - 11)];
    byMachine = !byMachine;
    PlaySE(SE::kTick);
  }
}

}  // namespace qlm
