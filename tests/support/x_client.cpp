// A small client of Xlib.
#include "tests/support/x_client.h"

#include <X11/Xlib.h>

#include <algorithm>
#include <memory>
#include <span>

namespace qlm {
namespace {

struct Disconnect {
  void operator()(Display* display) const { XCloseDisplay(display); }
};
struct Free {
  void operator()(void* memory) const { XFree(memory); }
};

// Whether a window wants to be asked rather than be destroyed.
bool CanBeClosed(Display* display, Window window, Atom request) {
  Atom* protocols = nullptr;
  int count = 0;
  if (XGetWMProtocols(display, window, &protocols, &count) == 0) return false;
  const std::unique_ptr<Atom, Free> owned(protocols);
  const std::span<const Atom> known(protocols, static_cast<size_t>(count));
  return std::find(known.begin(), known.end(), request) != known.end();
}

// 0 when there is none.
Window ClosableWindow(Display* display, Atom request) {
  Window root = 0;
  Window parent = 0;
  Window* windows = nullptr;
  unsigned count = 0;
  if (XQueryTree(display, DefaultRootWindow(display), &root, &parent, &windows, &count) == 0) return 0;
  const std::unique_ptr<Window, Free> owned(windows);
  const std::span<const Window> children(windows, count);
  const auto found = std::find_if(children.begin(), children.end(),
                                  [&](Window window) { return CanBeClosed(display, window, request); });
  return found == children.end() ? 0 : *found;
}

}  // namespace

bool PressCloseButton(const std::string& display) {
  const std::unique_ptr<Display, Disconnect> server(XOpenDisplay(display.c_str()));
  if (server == nullptr) return false;
  const Atom request = XInternAtom(server.get(), "WM_DELETE_WINDOW", False);
  const Window window = ClosableWindow(server.get(), request);
  if (window == 0) return false;
  XEvent event{};
  event.xclient.type = ClientMessage;
  event.xclient.window = window;
  event.xclient.message_type = XInternAtom(server.get(), "WM_PROTOCOLS", False);
  event.xclient.format = 32;
  event.xclient.data.l[0] = static_cast<long>(request);
  event.xclient.data.l[1] = CurrentTime;
  return XSendEvent(server.get(), window, False, NoEventMask, &event) != 0 && XSync(server.get(), False) != 0;
}

}  // namespace qlm
