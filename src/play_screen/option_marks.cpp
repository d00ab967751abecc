// Which option marks show.
#include "play_screen/option_marks.h"

#include "state/options.h"
#include "state/settings.h"
#include "state/skin.h"

namespace qlm {
namespace {

// Rows of OptionPos.
constexpr uint8_t kNoMark = 0;
constexpr uint8_t kStealthMark = 4;
constexpr uint8_t kRandomMark = 5;
constexpr uint8_t kExRandomMark = 7;
constexpr uint8_t kAccelMark = 9;
constexpr uint8_t kQuilMark = 10;
constexpr uint8_t kAutoPlayMark = 15;
constexpr uint8_t kReplayMark = 16;
constexpr uint8_t kPressureMark = 17;

// HIDDEN, SUDDEN, HIDSUD and STEALTH are rows 1 to 4; what the keys cannot bring about has no mark.
uint8_t VisibilityMark() {
  const int mark = (Hidden ? 1 : 0) + (Sudden ? 2 : 0) + (Stealth ? 4 : 0);
  return mark <= kStealthMark ? static_cast<uint8_t>(mark) : kNoMark;
}

}  // namespace

void PickOptionMarks() {
  // Quirk: nothing fills the fifth group, the key mode, so that its marks and those of SHUFFLE and MIRROR are
  // read from skins and never shown.
  OptionMark = {VisibilityMark(),
                Random     ? kRandomMark
                : ExRandom ? kExRandomMark
                           : kNoMark,
                ShowRec    ? kReplayMark
                : DEMOMode ? kAutoPlayMark
                           : kNoMark,
                Quil    ? kQuilMark
                : Accel ? kAccelMark
                        : kNoMark,
                kNoMark,
                Pressure ? kPressureMark : kNoMark};
}

}  // namespace qlm
