// A keyboard that no one touches: what the system would tell the window of it.
#pragma once

#include <cstdint>

namespace qlm {

// What is told arrives with the next pump, in its order.
class VirtualKeyboard {
 public:
  VirtualKeyboard();
  ~VirtualKeyboard();
  VirtualKeyboard(const VirtualKeyboard&) = delete;
  VirtualKeyboard& operator=(const VirtualKeyboard&) = delete;

  // `usage` is the key's number on the keyboard page of USB.
  static void Key(int32_t usage, bool down);
  // A held key that the system tells of again.
  static void Repeat(int32_t usage);
  // The keyboard comes to the window, or goes to another one.
  static void Focus(bool gained);
};

}  // namespace qlm
