// Steps with their jumps, and rows of the list.
#include "forms/key_functions.h"

#include <algorithm>
#include <array>
#include <cstddef>
#include <iterator>

#include "state/key_numbers.h"

namespace qlm {
namespace {

constexpr int16_t kListed[] = {11, 12, 13, 14, 15, 16, 17, 18, 19, 21, 22, 23, 24,
                               25, 26, 27, 28, 29, 1,  2,  3,  4,  5,  6,  7,  8};

constexpr std::array<TextView, 8> kMenuNames = {u"ESC", u"TAB", u"Enter", u"↑", u"↓", u"←", u"→", u"★"};

}  // namespace

std::span<const int16_t> ListedFunctions() { return kListed; }

bool IsFunction(int32_t number) {
  return std::find(std::begin(kListed), std::end(kListed), number) != std::end(kListed);
}

Text FunctionItem(int32_t function) {
  const bool isMenu = function >= 1 && function <= static_cast<int32_t>(kMenuNames.size());
  return Join(Padded(function, 2), isMenu ? kMenuNames.at(static_cast<size_t>(function - 1)) : TextView());
}

Text FunctionRow(const KeyTable& table, int32_t function) {
  Text row = Join(FunctionItem(function), u"\t");
  for (int32_t code = 0; code <= KeyTable::kLast; ++code) {
    if (table[code] == function) row += Join(u"[", code, u"]");
  }
  return row;
}

int32_t NextFunction(int32_t function) {
  switch (function) {
    case 8: return 11;
    case 15: return 18;
    case 17: return 21;
    case 19: return 16;
    case 25: return 28;
    case 27: return 1;
    case 29: return 26;
    default: return function + 1;
  }
}

int32_t PreviousFunction(int32_t function) {
  switch (function) {
    // Quirk: back from the first function, and from key 6 of the second side, lies its key 5, so that 26 to
    // 29 are passed over.
    case 1:
    case 28: return 25;
    case 11: return 8;
    case 16: return 19;
    case 18: return 15;
    case 21: return 17;
    case 26: return 29;
    default: return function - 1;
  }
}

void TakeInput(KeyWork& work, int32_t code) {
  switch (code) {
    case kKey1: work.currentFn = PreviousFunction(work.currentFn); break;
    case kKey2: work.currentFn = NextFunction(work.currentFn); break;
    default: work.workTable.Put(code, static_cast<int16_t>(work.currentFn)); break;
  }
}

}  // namespace qlm
