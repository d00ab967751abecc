// A fixed table whose limits are part of the game: what would go past its end is dropped.
#pragma once

#include <array>
#include <cassert>
#include <cstddef>
#include <cstdint>
#include <utility>

namespace qlm {

// Entries 0 to Last.
template <typename T, int64_t Last>
class Table {
 public:
  static constexpr int64_t kLast = Last;
  static constexpr bool Holds(int64_t index) { return index >= 0 && index <= Last; }

  // Drops the value when the index is outside.
  void Put(int64_t index, T value) {
    if (Holds(index)) entries_[static_cast<size_t>(index)] = std::move(value);
  }
  // Null outside.
  T* Find(int64_t index) { return Holds(index) ? &entries_[static_cast<size_t>(index)] : nullptr; }
  const T* Find(int64_t index) const {
    return Holds(index) ? &entries_[static_cast<size_t>(index)] : nullptr;
  }
  // For an index that is known to lie inside.
  T& operator[](int64_t index) {
    assert(Holds(index));
    return entries_[static_cast<size_t>(index)];
  }
  const T& operator[](int64_t index) const {
    assert(Holds(index));
    return entries_[static_cast<size_t>(index)];
  }

  void Fill(const T& value) { entries_.fill(value); }
  void Clear() {
    for (T& entry : entries_) entry = T{};
  }
  auto begin() { return entries_.begin(); }
  auto end() { return entries_.end(); }
  auto begin() const { return entries_.begin(); }
  auto end() const { return entries_.end(); }

 private:
  std::array<T, static_cast<size_t>(Last) + 1> entries_{};
};

}  // namespace qlm
