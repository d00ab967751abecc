// The game window: opening, showing a frame, events, message boxes.
#pragma once

#include <cstdint>
#include <string>
#include <string_view>

#include "platform/surface.h"

namespace platform {

struct WindowOptions {
  std::u16string title;
  bool windowed = false;  // otherwise the whole desktop, in its own mode
  int32_t width = 640;    // of the window's inside
  int32_t height = 480;
  bool waitForBlank = true;
};

// What a pump reports, in the order in which it happened. Empty entries are not called.
struct WindowEvents {
  void (*closeRequested)() = nullptr;             // the close button
  void (*activated)(bool active) = nullptr;       // the window gained or lost the focus
  void (*key)(int32_t key, bool down) = nullptr;  // set-1 scan code, plus 128 for extended keys; no repeats
  void (*fileDropped)(const std::string& path) = nullptr;  // the system's own form
};

// True when a display can be opened at all; the dummy driver counts as none.
bool HasDisplay();

// Opens the one window. False when it could not be opened; the game then goes on unseen. `why` tells the
// reason.
bool OpenGameWindow(const WindowOptions& options, std::string& why);
void CloseGameWindow();
bool WindowOpen();
void SetWindowTitle(std::u16string_view title);

// Shows the whole of `frame`, scaled by whole numbers where it fits, otherwise evenly, with black borders.
// In a window it fills the inside. Does nothing without one.
void ShowFrame(const Surface& frame, bool waitForBlank);
bool DisplayAvailable();  // false while another program has the screen (minimised full screen)

// Lets the window system's events run. Also works without a window.
void PumpWindowEvents(const WindowEvents& events);

void MoveMouse(int32_t x, int32_t y);

enum class BoxIcon { kInformation, kWarning, kCritical };
// A modal box; to standard error where there is no display.
void MessageBox(BoxIcon icon, std::u16string_view title, std::u16string_view text);

}  // namespace platform
