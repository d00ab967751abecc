// A display of the X window system that only memory sees, and what a person does and sees at it.
#pragma once

#include <memory>
#include <string>
#include <vector>

#include "platform/surface.h"
#include "tests/support/process.h"

namespace qlm {

// Runs as long as it lives; there is no window manager.
class XDisplay {
 public:
  // `size` as in "640x480". Fails the test when it does not start.
  explicit XDisplay(const std::string& size);

  // The value of DISPLAY for its programs; empty when it did not start.
  const std::string& Name() const { return name_; }
  // The display goes away, as if its server had been killed.
  void Kill() { server_.Kill(); }

  // Null when there is no picture to be had.
  platform::SurfacePtr Screenshot() const;
  // Waits until a window is seen whose title, as a whole, fits this regular expression.
  void WaitForWindow(const std::string& title) const;
  // The same, until it is seen and gets what is typed.
  void WaitForFocus(const std::string& title) const;
  // Runs xdotool with these words.
  void Do(const std::vector<std::string>& words) const;
  // Where the mouse pointer stands.
  struct Place {
    int x = -1;
    int y = -1;
    friend bool operator==(const Place&, const Place&) = default;
  };
  Place Pointer() const;
  // Whether any pixel of it is drawn.
  bool PointerShows() const;
  // Does to the first window what its close button does. False when there is none to close.
  bool PressCloseButton() const;

 private:
  void WaitFor(const std::vector<std::string>& question, const std::string& what) const;

  Process server_;
  std::string name_;
};

}  // namespace qlm
