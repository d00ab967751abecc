// Counts what the program takes from the heap.
#pragma once

#include <cstddef>

namespace qlm {

// Calls of operator new since the program began. Linking this replaces the operator.
size_t Allocations();

// From here on operator new has no memory for more bytes than that at a time; SIZE_MAX for as much as there
// is.
void FailAllocationsAbove(size_t bytes);

}  // namespace qlm
