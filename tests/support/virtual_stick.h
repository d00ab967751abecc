// A controller that no one holds in hand: plugged in, moved and unplugged by a test.
#pragma once

#include <cstdint>
#include <string>

namespace qlm {

// Plugged in as long as it lives. Controllers have to be open. What is set is seen with the next poll.
class VirtualStick {
 public:
  explicit VirtualStick(int32_t axes = 2, int32_t buttons = 40, int32_t hats = 1);
  ~VirtualStick();
  VirtualStick(const VirtualStick&) = delete;
  VirtualStick& operator=(const VirtualStick&) = delete;

  // The device's own value, -32768 to 32767.
  void Axis(int32_t axis, int32_t value);
  void Button(int32_t button, bool down);
  // Sides that are pressed.
  void Hat(bool left, bool right, bool up, bool down);

  // What the library has complained of since the last call.
  static std::string TakeComplaint();

 private:
  void* stick_;
  int32_t id_;
};

}  // namespace qlm
