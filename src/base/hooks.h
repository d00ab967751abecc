// The few calls that go up the floors: the upper floor registers a routine at start. Empty ones are passed
// over.
#pragma once

#include <cstdint>

#include "base/text.h"

namespace qlm {

struct Hooks {
  // Ends the program in the game; a tool or a test records it. The load that raised it stops there.
  void (*fatalError)(TextView title, TextView message) = nullptr;
  // The window caption.
  void (*setCaption)(TextView text) = nullptr;
  // One frame of the loading screen.
  void (*loadingFrame)() = nullptr;
  // Lets events run during a long load; called between the files of a chart, and during a search for charts.
  void (*loadPump)() = nullptr;
  // A search for files has been through a folder; called for each, with the line that tells of it.
  void (*folderSearched)(TextView line) = nullptr;
  // A file or folder that a search or a read for a list could not read, with the system's reason.
  void (*unreadable)(TextView path, TextView why) = nullptr;
  // A file of the game's own could not be written.
  void (*unwritten)(TextView path) = nullptr;
  // A key by its number: scan codes below 256, joystick inputs from 256.
  void (*keyDown)(int32_t key) = nullptr;
  void (*keyUp)(int32_t key) = nullptr;
  // A typed character, while a screen takes them.
  void (*character)(char16_t unit) = nullptr;
  // What an input method still works on; empty when it is done.
  void (*composing)(TextView text) = nullptr;
  // The mouse: 0 the left button, 1 the right one; a pixel of the frame; steps of its wheel, away from the
  // person or towards if negative.
  void (*mouseDown)(int32_t button) = nullptr;
  void (*mouseMoved)(int32_t x, int32_t y) = nullptr;
  void (*wheelTurned)(int32_t steps) = nullptr;
  // A file or a folder was dropped on the window.
  void (*fileDropped)(TextView path) = nullptr;
  // The window's close button.
  void (*closeRequested)() = nullptr;
  // The display was taken away from a running play.
  void (*displayLost)() = nullptr;
  // The display has come back, and its surfaces were made anew.
  void (*displayRegained)() = nullptr;
  // Runs in each pump behind the window's events: scripted hands of tests and tools.
  void (*pumped)() = nullptr;
  // A finished frame is on the back surface, just before it is shown.
  void (*framePresented)() = nullptr;
};
inline Hooks hooks;

// Title and message of a failure that the program cannot go on from.
inline void FatalError(TextView title, TextView message) {
  if (hooks.fatalError != nullptr) hooks.fatalError(title, message);
}

}  // namespace qlm
