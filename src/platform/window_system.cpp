// The hook of Xlib for a lost connection, and the hangup signal.
#include "platform/window_system.h"

#include <X11/Xlib.h>
#include <unistd.h>

#include <csignal>
#include <cstdio>

#include "platform/window.h"

namespace platform {
namespace {

void (*saveAtTheEnd)() = nullptr;

// Xlib itself would call exit(), whose destructors ask the lost connection for ever.
int EndAtOnce(Display* /*display*/) {
  AbandonWindow();
  saveAtTheEnd();
  std::fflush(nullptr);
  _exit(1);
}

}  // namespace

bool XServerAnswers() {
  Display* const display = XOpenDisplay(nullptr);
  if (display != nullptr) XCloseDisplay(display);
  return display != nullptr;
}

void OnDisplayGone(void (*save)()) {
  saveAtTheEnd = save;
  XSetIOErrorHandler(EndAtOnce);
  // Another library may have put its own there, and be gone.
  XSetErrorHandler(nullptr);
}

void EndOnHangup() {
  if (std::signal(SIGHUP, [](int) { std::raise(SIGTERM); }) == SIG_IGN) std::signal(SIGHUP, SIG_IGN);
}

}  // namespace platform
