// Work that may ask for more memory than there is.
#pragma once

#include <new>
#include <stdexcept>

namespace platform {

// Runs the work. False when the memory for it could not be had; it then ended where that was.
template <typename Work>
bool WithinMemory(Work work) {
  try {
    work();
    return true;
  } catch (const std::bad_alloc&) {
    return false;
  } catch (const std::length_error&) {
    return false;
  }
}

}  // namespace platform
