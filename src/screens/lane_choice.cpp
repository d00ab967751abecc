// The choice of the lanes that the machine plays.
#include "screens/lane_choice.h"

#include <cstddef>

#include "base/text.h"
#include "graphics/inks.h"
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

void Write(int32_t x, int32_t y, TextView text, platform::Colour colour) {
  DrawLine({x, y - 2, kScreen.right, y + 12}, text, kFont, colour);
}

void WriteSetting(int32_t y, TextView label, TextView value) {
  Write(80, y, label, inks::kQuiet);
  Write(180, y, value, inks::kPaper);
}

TextView OnOrOff(bool on) { return on ? u"ON" : u"OFF"; }

void WriteLanes() {
  for (int32_t channel = 11; channel < 11 + kLanes; ++channel) {
    if (!IsNoteChannel(channel)) continue;
    const bool byMachine = AutoLane[static_cast<size_t>(channel - 11)];
    Write(420, channel * 10, Join(u"[", channel, u"] : ", byMachine),
          byMachine ? inks::kFreshTeal : inks::kQuiet);
  }
}

}  // namespace

void DrawLaneChoice() {
  WriteSetting(20, u"Hi-Speed:", Join(Fixed(double{HiSpeed}, 2), u"x"));
  WriteSetting(30, u"PlaySpeed:", Join(Fixed(double{RealHiSpeed}, 2), u"x"));
  WriteSetting(40, u"BGA:", OnOrOff(ShowBGA));
  WriteSetting(50, u"DEMO:", OnOrOff(DEMOMode));
  if (platform::Now() % 500 > 100) Write(400, 80, u"AUTOPLAY:", inks::kGold);
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
