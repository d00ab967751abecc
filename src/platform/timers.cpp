// A fixed table of timers, served from the pump.
#include "platform/timers.h"

#include <array>

#include "platform/clock.h"

namespace platform {
namespace {

struct Timer {
  int id;
  uint32_t interval = 0;
  uint32_t last = 0;
  void (*callback)() = nullptr;
};

std::array<Timer, 6> timers = {Timer{kTimerPlay},    Timer{kTimerPreview},     Timer{kTimerNetwork99},
                               Timer{kTimerNetwork}, Timer{kTimerPlayCurSong}, Timer{kTimerRunFESub}};

Timer* FindTimer(int id) {
  for (Timer& timer : timers) {
    if (timer.id == id) return &timer;
  }
  return nullptr;
}

}  // namespace

void SetTimer(int id, uint32_t milliseconds, void (*callback)()) {
  if (Timer* timer = FindTimer(id)) *timer = {id, milliseconds, Now(), callback};
}

void KillTimer(int id) {
  if (Timer* timer = FindTimer(id)) timer->callback = nullptr;
}

bool TimerArmed(int id) {
  const Timer* timer = FindTimer(id);
  return timer != nullptr && timer->callback != nullptr;
}

void RunDueTimers() {
  for (Timer& timer : timers) {
    const uint32_t now = Now();
    if (timer.callback == nullptr || Elapsed(now, timer.last) < static_cast<int32_t>(timer.interval))
      continue;
    timer.last = now;
    timer.callback();
  }
}

}  // namespace platform
