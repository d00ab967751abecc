// Serving keys while a finished frame waits for its flip.
#include "graphics/flip_wait.h"

#include <algorithm>

#include "input/input.h"
#include "platform/clock.h"
#include "state/keys.h"
#include "state/surfaces.h"

namespace qlm {
namespace {

constexpr int64_t kSecond = 1'000'000;
constexpr int64_t kMillisecond = 1000;

int64_t Period() { return kSecond / platform::RefreshRate(); }

}  // namespace

// The wait inside of the flip belongs to the driver, where no key can be served. So most of it is spent here,
// and the margin is left for the pixels' way to the screen, which no system tells.
void ServeKeysUntilFlip(const platform::WindowEvents& events, uint32_t restMs, bool waits) {
  int64_t until = platform::Microseconds() + int64_t{restMs} * kMillisecond;
  if (waits) until = std::max(until, FlipTime + Period() - FlipMargin);
  while (platform::WaitForWindowEvents(until, JoyCount > 0)) {
    platform::PumpWindowEvents(events);
    ReadJoysticks();
  }
}

void NoteFlip() {
  const int64_t now = platform::Microseconds();
  FlipMargin = NextFlipMargin(FlipMargin, now - FlipTime, Period());
  FlipTime = now;
}

// A frame that came one of the screen's too late grows the margin; what was a hiccup of the machine is
// forgotten within a quarter of a minute. At the most the margin leaves no wait.
int64_t NextFlipMargin(int64_t margin, int64_t took, int64_t period) {
  constexpr int64_t kLeast = 2 * kMillisecond;
  constexpr int64_t kGrowth = kMillisecond;
  constexpr int64_t kEase = 1;
  const bool late = took * 2 > period * 3;
  return std::clamp(late ? margin + kGrowth : margin - kEase, std::min(kLeast, period), period);
}

}  // namespace qlm
