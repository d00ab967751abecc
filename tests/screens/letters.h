// A system font whose letters can be read back from a frame: each cell has a colour of its own.
#pragma once

#include <string>

#include "state/surfaces.h"

namespace qlm {

constexpr int32_t kLetterWidth = 8;
constexpr int32_t kLetterHeight = 16;

constexpr platform::Colour ColourOfLetter(int32_t letter) {
  return platform::Rgb(static_cast<uint32_t>(letter), 200, static_cast<uint32_t>(255 - letter));
}

inline void GiveReadableLetters() {
  SkinFile[1] = std::make_shared<Surface>(96 * kLetterWidth, kLetterHeight);
  SkinFile[1]->SetColourKey(0, 0);
  for (int32_t letter = 33; letter < 127; ++letter) {
    const int32_t left = (letter - 32) * kLetterWidth;
    SysFont[letter - 32] = {left, 0, left + kLetterWidth, kLetterHeight};
    SkinFile[1]->Fill(SysFont[letter - 32], ColourOfLetter(letter));
  }
  SysFontW = kLetterWidth;
  SysFontH = kLetterHeight;
}

// The text that begins at a place of the frame, up to `letters` of it; what is no letter is a blank. Blanks
// at its end are left out. Letters stand `step` pixels apart.
inline std::string TextAt(const Surface& frame, int32_t x, int32_t y, int32_t letters = 30,
                          int32_t step = kLetterWidth) {
  std::string text;
  for (int32_t i = 0; i < letters && x + i * step < frame.Width(); ++i) {
    const platform::Colour colour = frame.Pixel(x + i * step + 1, y + 1);
    const auto letter = static_cast<int32_t>(colour >> 16);
    text +=
        letter >= 33 && letter < 127 && colour == ColourOfLetter(letter) ? static_cast<char>(letter) : ' ';
  }
  return text.substr(0, text.find_last_not_of(' ') + 1);
}

}  // namespace qlm
