// The window's timers: a few numbered callbacks that run inside the message pump and nowhere else.
#pragma once

#include <cstdint>

namespace platform {

// Timer numbers of the program; others are refused.
constexpr int kTimerPlay = 2;
constexpr int kTimerPreview = 5;
constexpr int kTimerNetwork99 = 99;
constexpr int kTimerNetwork = 100;
constexpr int kTimerPlayCurSong = 101;  // the wait before a preview
constexpr int kTimerRunFESub = 102;     // what a decision leads to

// Arms timer `id`, anew if it runs already. Its first call is due `milliseconds` from now.
void SetTimer(int id, uint32_t milliseconds, void (*callback)());
// Nothing happens when it does not run.
void KillTimer(int id);
bool TimerArmed(int id);

// Runs each timer whose interval has passed since it last ran, at most once each, in order of number.
void RunDueTimers();

}  // namespace platform
