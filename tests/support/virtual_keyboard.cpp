// The virtual keyboard is SDL's event queue.
#include "tests/support/virtual_keyboard.h"

#include <SDL.h>
#include <gtest/gtest.h>

namespace qlm {
namespace {

void Push(SDL_Event event) { EXPECT_EQ(SDL_PushEvent(&event), 1) << SDL_GetError(); }

void PushKey(int32_t usage, bool down, bool repeat) {
  SDL_Event event{};
  event.type = down ? SDL_KEYDOWN : SDL_KEYUP;
  event.key.state = down ? SDL_PRESSED : SDL_RELEASED;
  event.key.repeat = repeat ? 1 : 0;
  event.key.keysym.scancode = static_cast<SDL_Scancode>(usage);
  Push(event);
}

}  // namespace

VirtualKeyboard::VirtualKeyboard() {
  EXPECT_EQ(SDL_InitSubSystem(SDL_INIT_EVENTS), 0) << SDL_GetError();
  SDL_FlushEvents(SDL_FIRSTEVENT, SDL_LASTEVENT);
}

VirtualKeyboard::~VirtualKeyboard() { SDL_QuitSubSystem(SDL_INIT_EVENTS); }

void VirtualKeyboard::Key(int32_t usage, bool down) { PushKey(usage, down, false); }

void VirtualKeyboard::Repeat(int32_t usage) { PushKey(usage, true, true); }

void VirtualKeyboard::Focus(bool gained) {
  SDL_Event event{};
  event.type = SDL_WINDOWEVENT;
  event.window.event = gained ? SDL_WINDOWEVENT_FOCUS_GAINED : SDL_WINDOWEVENT_FOCUS_LOST;
  Push(event);
}

}  // namespace qlm
