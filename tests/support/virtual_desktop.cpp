// The virtual desktop is SDL's dummy driver.
#include "tests/support/virtual_desktop.h"

#include <SDL.h>
#include <gtest/gtest.h>

#include "platform/window.h"

namespace qlm {
namespace {

void Push(SDL_Event event) { EXPECT_EQ(SDL_PushEvent(&event), 1) << SDL_GetError(); }

}  // namespace

std::string WindowTitle() {
  SDL_Window* const window = SDL_GetWindowFromID(platform::GameWindowNumber());
  return window != nullptr ? SDL_GetWindowTitle(window) : "";
}

void MoveVirtualMouse(int x, int y) {
  SDL_Event event{};
  event.type = SDL_MOUSEMOTION;
  event.motion.x = x;
  event.motion.y = y;
  Push(event);
}

void PressMouse(int button) {
  SDL_Event event{};
  event.type = SDL_MOUSEBUTTONDOWN;
  event.button.button = static_cast<Uint8>(button);
  Push(event);
}

void TurnMouseWheel(int steps) {
  SDL_Event event{};
  event.type = SDL_MOUSEWHEEL;
  event.wheel.y = steps;
  Push(event);
}

void DropOnWindow(const std::vector<std::string>& paths) {
  SDL_Event event{};
  event.type = SDL_DROPBEGIN;
  Push(event);
  for (const std::string& path : paths) {
    event.type = SDL_DROPFILE;
    event.drop.file = SDL_strdup(path.c_str());  // the receiver's
    Push(event);
  }
  event.type = SDL_DROPCOMPLETE;
  event.drop.file = nullptr;
  Push(event);
}

void TypeText(const std::string& utf8) {
  SDL_Event event{};
  event.type = SDL_TEXTINPUT;
  SDL_strlcpy(event.text.text, utf8.c_str(), sizeof event.text.text);
  Push(event);
}

void ComposeText(const std::string& utf8) {
  SDL_Event event{};
  event.type = SDL_TEXTEDITING;
  SDL_strlcpy(event.edit.text, utf8.c_str(), sizeof event.edit.text);
  Push(event);
}

void PressControlKey(int character, bool repeat) {
  SDL_Event event{};
  event.type = SDL_KEYDOWN;
  event.key.keysym.sym = character;
  event.key.repeat = repeat ? 1 : 0;
  Push(event);
}

bool PointerShows() { return SDL_ShowCursor(SDL_QUERY) == SDL_ENABLE; }

PointerPlace WhereThePointerIs() {
  PointerPlace place{};
  SDL_GetMouseState(&place.x, &place.y);
  return place;
}

}  // namespace qlm
