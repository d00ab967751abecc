// What the key configuration edits, without its window: which input code has which function, and the function
// in hand.
#pragma once

#include <cstdint>
#include <span>

#include "base/text.h"
#include "state/keys.h"

namespace qlm {

// A function is 1 to 8, of menus, or the channel of a lane: 11 to 19 and 21 to 29.
constexpr int32_t kFirstLaneFunction = 11;

struct KeyWork {
  KeyTable workTable;  // from an input code to its function, 0 for none
  int32_t currentFn = kFirstLaneFunction;
};

// The functions in the order of the list: lanes first, those of menus behind them.
std::span<const int16_t> ListedFunctions();
// Files hold any number.
bool IsFunction(int32_t number);
// Its name in the list.
Text FunctionItem(int32_t function);
// Its row in the list: the name, a tab, and in brackets each input code that has it, in ascending order.
Text FunctionRow(const KeyTable& table, int32_t function);

// Steps round all functions, in the order of the keys on a controller.
int32_t NextFunction(int32_t function);
int32_t PreviousFunction(int32_t function);

// An input came: the keys 1 and 2 step back and forth, and any other belongs to the function in hand from now
// on. A code outside the table changes nothing.
void TakeInput(KeyWork& work, int32_t code);

}  // namespace qlm
