// Xvfb, xdotool, scrot, and a small client of Xlib.
#include "tests/support/x_display.h"

#include <gtest/gtest.h>
#include <unistd.h>

#include <algorithm>
#include <chrono>
#include <filesystem>
#include <span>
#include <thread>

#include "platform/picture.h"
#include "tests/support/whole_file.h"

// Behind the others, since its macros take names of theirs.
#include <X11/Xlib.h>
#include <X11/extensions/Xfixes.h>

namespace qlm {
namespace {

struct Disconnect {
  void operator()(Display* display) const { XCloseDisplay(display); }
};
using Connection = std::unique_ptr<Display, Disconnect>;

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

XDisplay::XDisplay(const std::string& size)
    : server_({"Xvfb", "-displayfd", "1", "-screen", "0", size + "x24", "-nolisten", "tcp", "-noreset"}) {
  for (int i = 0; i < 3000 && !server_.Output().ends_with("\n"); ++i) {
    std::this_thread::sleep_for(std::chrono::milliseconds(10));
  }
  const std::string number = server_.Output();
  if (!number.ends_with("\n")) {
    ADD_FAILURE() << "Xvfb does not start; is it installed?";
    return;
  }
  name_.assign(1, ':').append(number, 0, number.size() - 1);
}

platform::SurfacePtr XDisplay::Screenshot() const {
  const std::filesystem::path file =
      std::filesystem::temp_directory_path() / ("quillmarch-screen-" + std::to_string(getpid()) + ".png");
  const ProcessResult scrot = Run({"scrot", "-o", file.string()}, {{"DISPLAY", name_}}, 20);
  EXPECT_EQ(scrot.exitStatus, 0) << scrot.errors;
  const std::string bytes = WholeFile(file);
  std::filesystem::remove(file);
  return platform::DecodePicture({reinterpret_cast<const unsigned char*>(bytes.data()), bytes.size()});
}

// Asks again and again until the command succeeds.
void XDisplay::WaitFor(const std::vector<std::string>& question, const std::string& what) const {
  for (int i = 0; i < 1500; ++i) {
    if (Run(question, {{"DISPLAY", name_}}, 20).exitStatus == 0) return;
    std::this_thread::sleep_for(std::chrono::milliseconds(10));
  }
  ADD_FAILURE() << what;
}

void XDisplay::WaitForWindow(const std::string& title) const {
  WaitFor({"xdotool", "search", "--onlyvisible", "--name", "^" + title + "$"},
          "no window has the title " + title);
}

void XDisplay::WaitForFocus(const std::string& title) const {
  WaitForWindow(title);
  WaitFor({"sh", "-c", "xdotool getwindowfocus getwindowname | grep -qx \"$0\"", title},
          "what is typed does not go to the window " + title);
}

void XDisplay::Do(const std::vector<std::string>& words) const {
  std::vector<std::string> command = {"xdotool"};
  command.insert(command.end(), words.begin(), words.end());
  const ProcessResult result = Run(command, {{"DISPLAY", name_}}, 20);
  EXPECT_EQ(result.exitStatus, 0) << words[0] << ": " << result.errors;
}

XDisplay::Place XDisplay::Pointer() const {
  const Connection server(XOpenDisplay(name_.c_str()));
  if (server == nullptr) return {};
  Window root = 0;
  Window child = 0;
  Place onRoot;
  Place onWindow;
  unsigned held = 0;
  XQueryPointer(server.get(), DefaultRootWindow(server.get()), &root, &child, &onRoot.x, &onRoot.y,
                &onWindow.x, &onWindow.y, &held);
  return onRoot;
}

bool XDisplay::PointerShows() const {
  const Connection server(XOpenDisplay(name_.c_str()));
  if (server == nullptr) return false;
  const std::unique_ptr<XFixesCursorImage, Free> image(XFixesGetCursorImage(server.get()));
  if (image == nullptr) return false;
  const std::span<const unsigned long> pixels(image->pixels, size_t{image->width} * image->height);
  return std::any_of(pixels.begin(), pixels.end(),
                     [](unsigned long pixel) { return (pixel >> 24 & 255) != 0; });
}

bool XDisplay::PressCloseButton() const {
  const Connection server(XOpenDisplay(name_.c_str()));
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
