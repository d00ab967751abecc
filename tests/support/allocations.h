// Counts what the program takes from the heap.
#pragma once

#include <cstddef>

namespace qlm {

// Calls of operator new since the program began. Linking this replaces the operator.
size_t Allocations();

}  // namespace qlm
