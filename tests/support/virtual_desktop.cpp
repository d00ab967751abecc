// The virtual desktop is SDL's dummy driver.
#include "tests/support/virtual_desktop.h"

#include <SDL.h>
#include <gtest/gtest.h>

#include "platform/window.h"

namespace qlm {

std::string WindowTitle() {
  SDL_Window* const window = SDL_GetWindowFromID(platform::GameWindowNumber());
  return window != nullptr ? SDL_GetWindowTitle(window) : "";
}

void MoveVirtualMouse(int x, int y) {
  SDL_Event event{};
  event.type = SDL_MOUSEMOTION;
  event.motion.x = x;
  event.motion.y = y;
  EXPECT_EQ(SDL_PushEvent(&event), 1) << SDL_GetError();
}

bool PointerShows() { return SDL_ShowCursor(SDL_QUERY) == SDL_ENABLE; }

PointerPlace WhereThePointerIs() {
  PointerPlace place{};
  SDL_GetMouseState(&place.x, &place.y);
  return place;
}

}  // namespace qlm
