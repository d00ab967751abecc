// Virtual controllers are SDL's.
#include "tests/support/virtual_stick.h"

#include <SDL.h>
#include <gtest/gtest.h>

namespace qlm {
namespace {

SDL_Joystick* Handle(void* stick) { return static_cast<SDL_Joystick*>(stick); }

}  // namespace

VirtualStick::VirtualStick(int32_t axes, int32_t buttons, int32_t hats) {
  const int device = SDL_JoystickAttachVirtual(SDL_JOYSTICK_TYPE_GAMECONTROLLER, axes, buttons, hats);
  EXPECT_GE(device, 0) << SDL_GetError();
  id_ = SDL_JoystickGetDeviceInstanceID(device);
  stick_ = SDL_JoystickOpen(device);
  EXPECT_NE(stick_, nullptr) << SDL_GetError();
}

VirtualStick::~VirtualStick() {
  for (int device = 0; device < SDL_NumJoysticks(); ++device) {
    if (SDL_JoystickGetDeviceInstanceID(device) != id_) continue;
    SDL_JoystickDetachVirtual(device);
    break;
  }
  SDL_JoystickClose(Handle(stick_));
}

void VirtualStick::Axis(int32_t axis, int32_t value) {
  SDL_JoystickSetVirtualAxis(Handle(stick_), axis, static_cast<Sint16>(value));
}

void VirtualStick::Button(int32_t button, bool down) {
  SDL_JoystickSetVirtualButton(Handle(stick_), button, down ? SDL_PRESSED : SDL_RELEASED);
}

void VirtualStick::Hat(bool left, bool right, bool up, bool down) {
  const unsigned sides = (left ? SDL_HAT_LEFT : 0U) | (right ? SDL_HAT_RIGHT : 0U) | (up ? SDL_HAT_UP : 0U) |
                         (down ? SDL_HAT_DOWN : 0U);
  SDL_JoystickSetVirtualHat(Handle(stick_), 0, static_cast<Uint8>(sides));
}

std::string VirtualStick::TakeComplaint() {
  std::string complaint = SDL_GetError();
  SDL_ClearError();
  return complaint;
}

}  // namespace qlm
