// The numbers of keys and controller inputs, under the names of the keys: scan codes for the keyboard, and
// from kKeyJoy on the controllers. A key's number names its place, here by what a US keyboard shows there.
#pragma once

#include <cstdint>

namespace qlm {

constexpr int32_t kKeyEsc = 1;
constexpr int32_t kKey1 = 2;
constexpr int32_t kKey2 = 3;
constexpr int32_t kKey3 = 4;
constexpr int32_t kKey4 = 5;
constexpr int32_t kKey5 = 6;
constexpr int32_t kKey7 = 8;
constexpr int32_t kKey8 = 9;
constexpr int32_t kKeyTab = 15;
constexpr int32_t kKeyEnter = 28;
constexpr int32_t kKeyS = 31;
constexpr int32_t kKeyD = 32;
constexpr int32_t kKeyF = 33;
constexpr int32_t kKeyJ = 36;
constexpr int32_t kKeyK = 37;
constexpr int32_t kKeyL = 38;
constexpr int32_t kKeyLeftShift = 42;
constexpr int32_t kKeyZ = 44;
constexpr int32_t kKeyX = 45;
constexpr int32_t kKeyC = 46;
constexpr int32_t kKeyV = 47;
constexpr int32_t kKeyN = 49;
constexpr int32_t kKeyM = 50;
constexpr int32_t kKeyComma = 51;
constexpr int32_t kKeyPeriod = 52;
constexpr int32_t kKeySlash = 53;
constexpr int32_t kKeyRightShift = 54;
constexpr int32_t kKeySpace = 57;
constexpr int32_t kKeyF1 = 59;
constexpr int32_t kKeyF2 = 60;
constexpr int32_t kKeyF3 = 61;
constexpr int32_t kKeyF4 = 62;
constexpr int32_t kKeyF5 = 63;
constexpr int32_t kKeyF6 = 64;
constexpr int32_t kKeyF7 = 65;
constexpr int32_t kKeyF8 = 66;
constexpr int32_t kKeyF9 = 67;
constexpr int32_t kKeyF10 = 68;
constexpr int32_t kKeyPad9 = 73;
constexpr int32_t kKeyPad4 = 75;
constexpr int32_t kKeyPad1 = 79;
constexpr int32_t kKeyPad2 = 80;
constexpr int32_t kKeyPad3 = 81;
constexpr int32_t kKeyPad0 = 82;
constexpr int32_t kKeyF11 = 87;
constexpr int32_t kKeyF12 = 88;
constexpr int32_t kKeyPadSlash = 181;
constexpr int32_t kKeyUp = 200;
constexpr int32_t kKeyPageUp = 201;
constexpr int32_t kKeyLeft = 203;
constexpr int32_t kKeyRight = 205;
constexpr int32_t kKeyDown = 208;
constexpr int32_t kKeyPageDown = 209;
constexpr int32_t kKeyDelete = 211;

// Controller inputs: kKeyJoy + controller * kJoyInputs + input, inputs 0 to 3 being left, right, up and down,
// and those from kJoyButtons on the buttons.
constexpr int32_t kKeyJoy = 256;
constexpr int32_t kJoyInputs = 40;
constexpr int32_t kJoyButtons = 4;

}  // namespace qlm
