// The real clock over the steady clock of the system, and the virtual one over a number.
#include "platform/clock.h"

#include <chrono>
#include <ctime>
#include <thread>

namespace platform {
namespace {

constexpr uint32_t kStart = 1'000'000;

bool isVirtual = false;
uint32_t virtualNow = kStart;
int64_t virtualRest = 0;
uint32_t (*frameClock)(uint32_t) = nullptr;

}  // namespace

uint32_t Now() {
  if (isVirtual) return virtualNow;
  using Clock = std::chrono::steady_clock;
  static const Clock::time_point begin = Clock::now();
  const auto passed = std::chrono::duration_cast<std::chrono::milliseconds>(Clock::now() - begin).count();
  return kStart + static_cast<uint32_t>(passed);
}

int64_t Microseconds() {
  const auto since = std::chrono::steady_clock::now().time_since_epoch();
  return std::chrono::duration_cast<std::chrono::microseconds>(since).count();
}

bool ClockIsVirtual() { return isVirtual; }

void SleepFor(uint32_t milliseconds) {
  if (isVirtual) {
    virtualRest += milliseconds;
  } else {
    std::this_thread::sleep_for(std::chrono::milliseconds(milliseconds));
  }
}

int64_t VirtualRest() { return virtualRest; }

void WaitForBeat(int32_t perSecond) {
  if (isVirtual || perSecond < 1) return;
  using Clock = std::chrono::steady_clock;
  const Clock::duration beat = Clock::duration(std::chrono::seconds(1)) / perSecond;
  const Clock::time_point now = Clock::now();
  std::this_thread::sleep_until(now + beat - now.time_since_epoch() % beat);
}

void UseVirtualClock(uint32_t now) {
  isVirtual = true;
  virtualNow = now;
  virtualRest = 0;
}

void UseRealClock() {
  isVirtual = false;
  frameClock = nullptr;
}

void SetFrameClock(uint32_t (*next)(uint32_t now)) { frameClock = next; }

void FrameShown() {
  if (isVirtual && frameClock != nullptr) virtualNow = frameClock(virtualNow);
}

WallTime WallClock() {
  const std::time_t now = SystemSeconds();
  std::tm local{};
  localtime_r(&now, &local);
  return {local.tm_year + 1900, local.tm_mon + 1, local.tm_mday, local.tm_hour, local.tm_min, local.tm_sec};
}

int64_t SystemSeconds() { return std::time(nullptr); }

}  // namespace platform
