// The game window: opening, showing a frame, events.
#pragma once

#include <cstdint>
#include <string>
#include <string_view>

#include "platform/surface.h"

namespace platform {

// How a frame is enlarged on the whole desktop.
enum class Scaling {
  kBest,    // by a whole number if it then fills 85% of one side of the screen, else to the edges
  kWhole,   // by a whole number
  kSmooth,  // to the edges of the screen
};

struct WindowOptions {
  std::u16string title;
  bool windowed = false;  // otherwise the whole desktop, in its own mode
  int32_t width = 640;    // of the window's inside
  int32_t height = 480;
  bool waitForBlank = true;
  Scaling scaling = Scaling::kBest;
};

enum class MouseButton { kLeft, kMiddle, kRight, kOther };

// What a pump reports, in the order in which it happened. Empty entries are not called. A routine called here
// may close the window.
struct WindowEvents {
  void (*closeRequested)() = nullptr;             // the close button
  void (*activated)(bool active) = nullptr;       // the window gained or lost the focus
  void (*key)(int32_t key, bool down) = nullptr;  // numbered as in window_keys.h; no repeats
  // A typed character, while they are taken: 8 (backspace), 13 (Enter) and 27 (Esc) behind their keys,
  // repeated while these are held.
  void (*character)(char16_t unit) = nullptr;
  // What an input method works on, while characters are taken; empty once it is done, just before the
  // characters come, or given up.
  void (*composing)(std::u16string_view text) = nullptr;
  void (*mouseDown)(MouseButton button) = nullptr;
  void (*mouseMoved)(int32_t x, int32_t y) = nullptr;      // to a pixel of the frame, which may lie outside
  void (*wheelTurned)(int32_t steps) = nullptr;            // away from the person, or towards if negative
  void (*fileDropped)(const std::string& path) = nullptr;  // the system's own form; of several the first
};

// True when a display can be opened at all; the drivers that draw for nobody count as none.
bool HasDisplay();
// Whether a window with such an inside, and its title bar, fits on the desktop beside what always lies there.
// False without a display.
bool DesktopHasRoom(int32_t width, int32_t height);

// Opens the one window, in place of one that is open. False when it could not be opened; the game then goes
// on unseen. `why` tells the reason.
bool OpenGameWindow(const WindowOptions& options, std::string& why);
void CloseGameWindow();
// The window counts as closed, without a word to the window system, which may be gone.
void AbandonWindow();
bool WindowOpen();
// By which the window library knows the window; 0 without one.
uint32_t GameWindowNumber();
void SetWindowTitle(std::u16string_view title);

// Where a frame of frameWidth by frameHeight pixels stands in an area of width by height pixels: in the
// middle, enlarged as told; where not even the frame itself fits, scaled down evenly. All numbers are above
// 0.
Rect PlaceFrame(int32_t width, int32_t height, int32_t frameWidth, int32_t frameHeight,
                Scaling scaling = Scaling::kBest);

// Shows the whole of `frame`: on the desktop where PlaceFrame puts it, with black borders; in a window it
// fills the inside. Does nothing without a window.
void ShowFrame(const Surface& frame, bool waitForBlank);
// False while another program has the screen, that is, while a window that takes the whole desktop is
// minimised. True without a window.
bool DisplayAvailable();
// From here on, until it comes back, the display counts as taken by another program. For tests.
void TakeDisplayAway(bool away);
// Frames that the open window was given; 0 without one.
int64_t WindowFrames();

// Whether typed characters are reported. An input method may then keep keys to itself; at first they are not.
void TakeCharacters(bool take);
// Where in the last frame the text stands that an input method works on: it puts its choices beside it.
void PlaceInputMethod(const Rect& place);

// Lets the window system's events run. Also works without a window; the only event then is a request to
// close.
void PumpWindowEvents(const WindowEvents& events);

// Waits until there are events to pump, and says true, or until `until`, in Microseconds(), and says false.
// With `eachMs` also says true about every millisecond, for what sends no events. On the virtual clock it
// tells at once whether there are any. Also waits without a window, and where there are no events at all.
bool WaitForWindowEvents(int64_t until, bool eachMs);
// Frames that the window's screen shows in a second; 60 without a window or where it is not known.
int32_t RefreshRate();

struct WindowPlacement {
  int32_t left = 0;  // of the window's inside, in the system's units
  int32_t top = 0;
  int32_t width = 0;
  int32_t height = 0;
  int32_t state = 0;  // 0 normal, 1 minimised, 2 maximised
};
// The state that the window has, and its place once it is brought back to normal. Without a window
// those of the last one, all 0 when there was none.
WindowPlacement NormalizeWindow();

// The next frame is shown with the mouse pointer, which full screen otherwise hides, if the mouse moved
// within the last second. In a window the pointer always shows.
void LetMovingPointerShow();
// Puts the pointer on a pixel of the last frame shown.
void MoveMouse(int32_t x, int32_t y);

}  // namespace platform
