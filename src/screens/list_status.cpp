// The status of the list screens.
#include "screens/list_status.h"

#include <array>
#include <cstddef>
#include <cstdint>

#include "base/rnd.h"
#include "base/text.h"
#include "graphics/draw.h"
#include "platform/clock.h"
#include "screens/list_sprites.h"
#include "state/options.h"
#include "state/settings.h"
#include "state/song_select.h"

namespace qlm {
namespace {

int32_t Count(bool flag) { return flag ? 1 : 0; }

// The first of two that exclude each other is place 1 of the cycle, the second place 2.
int32_t OneOf(bool first, bool second) { return first ? 1 : 2 * Count(second); }

// none, Hidden, Sudden, both, Stealth.
int32_t ViewPlace() { return Stealth ? 4 : Count(Hidden) + 2 * Count(Sudden); }

void DrawSpeed() {
  constexpr int32_t kX = 460;
  constexpr int32_t kY = 426;
  DrawSprite(kX - 38, kY, kSpeedLabel);
  if (ComboHiSpeed) {
    // Quirk: it flickers, each frame by chance.
    if (DrawRnd() < 0.5F) DrawText(kX, kY, u"[COMBO!]", 0);
    return;
  }
  DrawText(kX, kY, Join(HiSpeed, u"x", FourDMode ? u" (4D)" : u""), 0);
}

}  // namespace

void DrawStatusLines() {
  constexpr int32_t kLeft = 515;
  DrawSpeed();
  if (ExRandom && platform::Now() % 400 < 300) {
    DrawSprite(kLeft - 4, 180, kWideTagSprite);
    DrawText(kLeft, 180, u"[spShuffle ON]", 0);
  }
  if (WideCharts) {
    DrawSprite(kLeft - 4, 212, kSmallTagSprite);
    DrawText(kLeft, 211, u"[WIDE ON]", 0);
  }
  if (DEMOMode) {
    DrawSprite(kLeft - 4, 196, kSmallTagSprite);
    DrawText(kLeft, 195, u"[DEMO ON]", 0);
  }
}

void DrawOptions() {
  constexpr int32_t kY = 423;
  const std::array<int32_t, kOptions> places = {ViewPlace(), OneOf(Random, ExRandom), Count(Accel),
                                                OneOf(Quil, HalfField), Count(Pressure)};
  for (int32_t option = 0; option < kOptions; ++option) {
    DrawSprite(40 + 60 * option, kY, OptionSprite(option, places[static_cast<size_t>(option)]));
  }
}

void DrawForcedPlayer() {
  static constexpr std::array<TextView, 4> kWords = {u"", u"PLAYER FORCED TO 1P", u"PLAYER FORCED TO 2P",
                                                     u"PLAYER FORCED TO DP"};
  if (PlayerForce <= 0 || PlayerForce >= static_cast<int32_t>(kWords.size())) return;
  DrawText(450, 335, kWords[static_cast<size_t>(PlayerForce)], 0);
}

void DrawRecordWords() {
  constexpr int32_t kY = 240;
  songSelect.recordWordsSeen = !songSelect.recordWordsSeen;
  if (!songSelect.recordWordsSeen) return;
  if (UserRec) DrawText(240 - 16 * SysFontW, kY, u"<RECORDING MODE>", 0);
  if (ShowRec) DrawText(240 - 17 * SysFontW, kY, u"<VIEW PLAYRECORD>", 0);
}

}  // namespace qlm
