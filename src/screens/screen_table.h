// Which routines each screen has for its frame, for keys, for characters and for the mouse.
#pragma once

#include <cstdint>

namespace qlm {

// A routine that a screen has no use for is null, and what it would take is passed over.
struct Screen {
  // One frame, drawn and presented, in the loop of the lists.
  void (*frame)() = nullptr;
  // A key goes down, by its number.
  void (*key)(int32_t key) = nullptr;
  // A character is typed.
  void (*character)(int32_t character) = nullptr;
  // The mouse has been dragged by so many pixels in all to the right and down, in full screen.
  void (*mouse)(int32_t right, int32_t down) = nullptr;
  // The mouse's wheel was turned by so many steps, away from the person or towards if negative.
  void (*wheel)(int32_t steps) = nullptr;
  // The keys of the settings, of speeds, volume, skins and the like, work here too.
  bool settingKeys = true;
};

// The screen of a GameState. One without routines of its own has the keys of the settings. While the search
// within a list takes words, the lists have no keys.
const Screen& ScreenOf(int32_t gameState);

}  // namespace qlm
