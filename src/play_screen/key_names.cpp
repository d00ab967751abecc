// Short names of keys.
#include "play_screen/key_names.h"

#include <algorithm>
#include <cstddef>

#include "state/key_numbers.h"

namespace qlm {
namespace {

// From number 1 on.
constexpr std::array<TextView, 88> kKeyboard = {
    u"ESC",  u"1",     u"2",    u"3",      u"4",    u"5",     u"6",    u"7",    u"8",     u"9",       u"0",
    u"-",    u"=",     u"BACK", u"TAB",    u"Q",    u"W",     u"E",    u"R",    u"T",     u"Y",       u"U",
    u"I",    u"O",     u"P",    u"[",      u"]",    u"ENTER", u"CTRL", u"A",    u"S",     u"D",       u"F",
    u"G",    u"H",     u"J",    u"K",      u"L",    u";",     u"'",    u"`",    u"SHIFT", u"\\",      u"Z",
    u"X",    u"C",     u"V",    u"B",      u"N",    u"M",     u",",    u".",    u"/",     u"R.SHIFT", u"PAD*",
    u"ALT",  u"SPACE", u"CAPS", u"F1",     u"F2",   u"F3",    u"F4",   u"F5",   u"F6",    u"F7",      u"F8",
    u"F9",   u"F10",   u"NUM",  u"SCROLL", u"PAD7", u"PAD8",  u"PAD9", u"PAD-", u"PAD4",  u"PAD5",    u"PAD6",
    u"PAD+", u"PAD1",  u"PAD2", u"PAD3",   u"PAD0", u"PAD.",  u"",     u"",     u"",      u"F11",     u"F12"};

struct FarKey {
  int32_t key;
  TextView name;
};
constexpr FarKey kFarKeys[] = {
    {156, u"PAD ENT"},   {157, u"R.CTRL"},         {181, u"PAD/"},      {184, u"R.ALT"},       {199, u"HOME"},
    {kKeyUp, u"UP"},     {kKeyPageUp, u"PG UP"},   {kKeyLeft, u"LEFT"}, {kKeyRight, u"RIGHT"}, {207, u"END"},
    {kKeyDown, u"DOWN"}, {kKeyPageDown, u"PG DN"}, {210, u"INS"},       {kKeyDelete, u"DEL"}};

TextView NameOnKeyboard(int32_t key) {
  if (key >= 1 && key <= static_cast<int32_t>(kKeyboard.size()))
    return kKeyboard[static_cast<size_t>(key - 1)];
  const auto* const row = std::find_if(std::begin(kFarKeys), std::end(kFarKeys),
                                       [key](const FarKey& candidate) { return candidate.key == key; });
  return row == std::end(kFarKeys) ? TextView() : row->name;
}

}  // namespace

KeyName::KeyName(int32_t key) {
  if (key >= kKeyJoy) {
    AddInput(key - kKeyJoy);
  } else if (const TextView name = NameOnKeyboard(key); !name.empty()) {
    Add(name);
  } else {
    Add(u"K");
    Add(key);
  }
}

void KeyName::AddInput(int32_t input) {
  constexpr std::array<TextView, kJoyButtons> kDirections = {u"L", u"R", u"U", u"D"};
  Add(u"J");
  Add(input / kJoyInputs + 1);
  const int32_t own = input % kJoyInputs;
  if (own < kJoyButtons) {
    Add(kDirections[static_cast<size_t>(own)]);
  } else {
    Add(u"B");
    Add(own - kJoyButtons + 1);
  }
}

void KeyName::Add(TextView words) {
  for (const char16_t unit : words) {
    if (length_ < words_.size()) words_[length_++] = unit;
  }
}

void KeyName::Add(int32_t number) {
  if (number >= 10) Add(number / 10);
  const char16_t digit = static_cast<char16_t>(u'0' + number % 10);
  Add(TextView(&digit, 1));
}

}  // namespace qlm
