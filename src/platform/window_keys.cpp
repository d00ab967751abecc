// Key places to key numbers: a table for each way in which a system counts keys.
#include "platform/window_keys.h"

#include <array>
#include <cstddef>
#include <initializer_list>

namespace platform {
namespace {

constexpr size_t kPlaces = 256;
using Numbers = std::array<uint8_t, kPlaces>;

constexpr Numbers NumbersOfUsages() {
  Numbers table{};
  const auto row = [&table](size_t usage, std::initializer_list<uint8_t> numbers) {
    for (const uint8_t number : numbers) {
      table[usage++] = number;
    }
  };
  row(4, {30, 48, 46, 32, 18, 33, 34, 35, 23, 36, 37, 38, 50});   // A to M
  row(17, {49, 24, 25, 16, 19, 31, 20, 22, 47, 17, 45, 21, 44});  // N to Z
  row(30, {2, 3, 4, 5, 6, 7, 8, 9, 10, 11});                      // 1 to 9, 0
  row(40, {28, 1, 14, 15, 57});                                   // Enter, Esc, Backspace, Tab, Space
  row(45, {12, 13, 26, 27, 43, 43});                              // - = [ ] \ and its place on other boards
  row(51, {39, 40, 41, 51, 52, 53, 58});                          // ; ' ` , . / Caps Lock
  row(58, {59, 60, 61, 62, 63, 64, 65, 66, 67, 68, 87, 88});      // F1 to F12
  row(70, {183, 70, 197});                                        // Print Screen, Scroll Lock, Pause
  row(73, {210, 199, 201, 211, 207, 209});                // Insert, Home, Page Up, Delete, End, Page Down
  row(79, {205, 203, 208, 200});                          // Right, Left, Down, Up
  row(83, {69, 181, 55, 74, 78, 156});                    // Num Lock and the pad's / * - + Enter
  row(89, {79, 80, 81, 75, 76, 77, 71, 72, 73, 82, 83});  // the pad's 1 to 9, 0 and .
  row(100, {86, 221, 222, 141});                          // the key beside left Shift, Menu, Power, pad =
  row(104, {100, 101, 102});                              // F13 to F15
  row(133, {179});                      // pad comma; 134, the equals sign of some other pads, has no number
  row(135, {115, 112, 125, 121, 123});  // the Japanese Ro, Kana, Yen, Henkan, Muhenkan
  row(224, {29, 42, 56, 219, 157, 54, 184, 220});  // left Ctrl, Shift, Alt, Windows, then the right ones
  return table;
}

// The kernel counts the older keys by their scan codes.
constexpr Numbers NumbersOfEvdev() {
  Numbers table{};
  const auto row = [&table](size_t code, std::initializer_list<uint8_t> numbers) {
    for (const uint8_t number : numbers) {
      table[code++] = number;
    }
  };
  for (uint8_t code = 1; code <= 83; ++code) table[code] = code;
  row(86, {86, 87, 88});                // the key beside left Shift, F11, F12
  row(89, {115, 0, 0, 121, 112, 123});  // the Japanese Ro, Henkan, Kana, Muhenkan
  row(96, {156, 157, 181, 183, 184});   // the pad's Enter, right Ctrl, the pad's /, Print Screen, right Alt
  row(102, {199, 200, 201, 203, 205});  // Home, Up, Page Up, Left, Right
  row(107, {207, 208, 209, 210, 211});  // End, Down, Page Down, Insert, Delete
  row(116, {222, 141, 0, 197, 0, 83});  // Power, pad =, Pause, pad comma, which SDL takes for the pad's dot
  row(124, {125, 219, 220, 221});       // Yen, left and right Windows, Menu
  row(183, {100, 101, 102});            // F13 to F15
  row(171, {100});                      // a key of notebooks that counts as F13
  row(210, {183});                      // and one that counts as Print Screen
  return table;
}

constexpr Numbers kOfUsages = NumbersOfUsages();
constexpr Numbers kOfEvdev = NumbersOfEvdev();

int32_t Find(const Numbers& numbers, int32_t place) {
  return place < 0 || place >= static_cast<int32_t>(kPlaces) ? 0 : numbers[static_cast<size_t>(place)];
}

}  // namespace

int32_t KeyNumberOf(int32_t usage) { return Find(kOfUsages, usage); }

int32_t KeyNumberOfEvdev(int32_t code) { return Find(kOfEvdev, code); }

}  // namespace platform
