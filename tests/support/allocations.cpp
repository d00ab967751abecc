// Counts what the program takes from the heap, and refuses it. In a file of its own, so that no call is
// inlined and left out.
#include "tests/support/allocations.h"

#include <atomic>
#include <cstdint>
#include <cstdlib>
#include <new>

namespace {

std::atomic<size_t> allocations = 0;
std::atomic<size_t> largest = SIZE_MAX;

void* Allocate(size_t size) {
  ++allocations;
  return size > largest ? nullptr : std::malloc(size == 0 ? 1 : size);
}

}  // namespace

void* operator new(size_t size) {
  if (void* memory = Allocate(size)) return memory;
  throw std::bad_alloc();
}
void* operator new(size_t size, const std::nothrow_t&) noexcept { return Allocate(size); }
void operator delete(void* memory) noexcept { std::free(memory); }
void operator delete(void* memory, size_t) noexcept { std::free(memory); }

namespace qlm {

size_t Allocations() { return allocations; }

void FailAllocationsAbove(size_t bytes) { largest = bytes; }

}  // namespace qlm
