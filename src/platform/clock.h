// The only clock: milliseconds for the game, the wall clock for the log. Tests and tools put a virtual one in
// its place.
#pragma once

#include <cstdint>

namespace platform {

// Milliseconds. Starts at a million, so that a few seconds can be taken from it without wrapping.
uint32_t Now();

// How long ago `then` was at `now`; negative when `then` is still to come. Right across the wrap of the
// clock.
constexpr int32_t Elapsed(uint32_t now, uint32_t then) { return static_cast<int32_t>(now - then); }

// Microseconds of the machine's steady clock, never virtual; any thread may ask.
int64_t Microseconds();
// Whether Now() is a number that was set, so that waiting for a moment would never end.
bool ClockIsVirtual();

// Rests. On the virtual clock it returns at once and no time passes.
void SleepFor(uint32_t milliseconds);

// Milliseconds that such rests would have taken since the virtual clock was set.
int64_t VirtualRest();

// Rests until the next of `perSecond` evenly spaced moments of each second. No time passes on the virtual
// clock.
void WaitForBeat(int32_t perSecond);

// From here on Now() gives `now` until it is set again.
void UseVirtualClock(uint32_t now);
void UseRealClock();

// The one moment at which virtual time moves: the present step calls it behind its pump. Runs `next`, which
// gets the time that stands and gives the one that follows; without it, and on the real clock, nothing
// happens.
void SetFrameClock(uint32_t (*next)(uint32_t now));
void FrameShown();

struct WallTime {
  int year, month, day, hour, minute, second;
};
// Local time.
WallTime WallClock();
// Seconds since 1970, as the times of files; never virtual.
int64_t SystemSeconds();

}  // namespace platform
