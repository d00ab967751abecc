// Key places to key numbers: one table.
#include "platform/window_keys.h"

#include <array>
#include <cstddef>
#include <initializer_list>

namespace platform {
namespace {

constexpr size_t kUsages = 256;

constexpr std::array<uint8_t, kUsages> MakeTable() {
  std::array<uint8_t, kUsages> table{};
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

constexpr std::array<uint8_t, kUsages> kNumbers = MakeTable();

}  // namespace

int32_t KeyNumberOf(int32_t usage) {
  return usage < 0 || usage >= static_cast<int32_t>(kUsages) ? 0 : kNumbers[static_cast<size_t>(usage)];
}

}  // namespace platform
