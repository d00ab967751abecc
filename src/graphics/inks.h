// The colours of the desk, in which all screens are ruled and written.
#pragma once

#include "platform/surface.h"

namespace qlm::inks {

constexpr platform::Colour kPaper = platform::Rgb(0xF3, 0xEA, 0xD3);      // what is read
constexpr platform::Colour kQuiet = platform::Rgb(0x8B, 0x93, 0xAE);      // labels and hints
constexpr platform::Colour kGold = platform::Rgb(0xD9, 0xA4, 0x41);       // heads, and what is in hand
constexpr platform::Colour kTeal = platform::Rgb(0x3F, 0xB8, 0xAF);       // ink
constexpr platform::Colour kFreshTeal = platform::Rgb(0x4C, 0xC9, 0xBF);  // small letters in ink
constexpr platform::Colour kDesk = platform::Rgb(0x0B, 0x10, 0x20);
constexpr platform::Colour kSheet = platform::Rgb(0x13, 0x1A, 0x2E);
constexpr platform::Colour kRule = platform::Rgb(0x2A, 0x33, 0x50);  // between rows
constexpr platform::Colour kFaintRule = platform::Rgb(0x26, 0x30, 0x4C);
constexpr platform::Colour kEdge = platform::Rgb(0x3A, 0x45, 0x66);  // of a sheet

}  // namespace qlm::inks
