// Counts what the program takes from the heap. In a file of its own, so that no call is inlined and left out.
#include "tests/support/allocations.h"

#include <atomic>
#include <cstdlib>
#include <new>

namespace {

std::atomic<size_t> allocations = 0;

}  // namespace

void* operator new(size_t size) {
  ++allocations;
  if (void* memory = std::malloc(size == 0 ? 1 : size)) return memory;
  std::abort();
}
void* operator new(size_t size, const std::nothrow_t&) noexcept {
  ++allocations;
  return std::malloc(size == 0 ? 1 : size);
}
void operator delete(void* memory) noexcept { std::free(memory); }
void operator delete(void* memory, size_t) noexcept { std::free(memory); }

namespace qlm {

size_t Allocations() { return allocations; }

}  // namespace qlm
