// Tables whose limits are part of the game: what would go past their end is dropped.
#pragma once

#include <array>
#include <cstddef>
#include <cstdint>
#include <memory>
#include <utility>

namespace qlm {

// Ends the program, with both numbers on standard error: an index that had to lie in 0 to `last` does not.
[[noreturn]] void EndOutsideTable(int64_t index, int64_t last);

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
  // For an index that is known to lie inside. One that does not is a mistake of ours, and ends the program
  // before it can spoil anything.
  T& operator[](int64_t index) { return entries_[Inside(index)]; }
  const T& operator[](int64_t index) const { return entries_[Inside(index)]; }

  void Fill(const T& value) { entries_.fill(value); }
  void Clear() {
    for (T& entry : entries_) entry = T{};
  }
  auto begin() { return entries_.begin(); }
  auto end() { return entries_.end(); }
  auto begin() const { return entries_.begin(); }
  auto end() const { return entries_.end(); }

 private:
  static size_t Inside(int64_t index) {
    if (!Holds(index)) [[unlikely]]
      EndOutsideTable(index, Last);
    return static_cast<size_t>(index);
  }

  std::array<T, static_cast<size_t>(Last) + 1> entries_{};
};

// The same by slot of a chart: entries 0 to Last(), 256 of them until SetLast gives another number.
template <typename T>
class SlotTable {
 public:
  static constexpr int64_t kFirstLast = 255;

  SlotTable() : entries_(std::make_unique<T[]>(kFirstLast + 1)) {}

  int64_t Last() const { return last_; }
  // What lies past the new end is dropped; new entries are empty.
  void SetLast(int64_t last) {
    if (last == last_ || last < 0) return;
    auto entries = std::make_unique<T[]>(static_cast<size_t>(last) + 1);
    std::move(begin(), begin() + (last < last_ ? last : last_) + 1, entries.get());
    entries_ = std::move(entries);
    last_ = last;
  }

  bool Holds(int64_t index) const { return index >= 0 && index <= last_; }
  void Put(int64_t index, T value) {
    if (Holds(index)) entries_[static_cast<size_t>(index)] = std::move(value);
  }
  T* Find(int64_t index) { return Holds(index) ? &entries_[static_cast<size_t>(index)] : nullptr; }
  const T* Find(int64_t index) const {
    return Holds(index) ? &entries_[static_cast<size_t>(index)] : nullptr;
  }
  T& operator[](int64_t index) { return entries_[Inside(index)]; }
  const T& operator[](int64_t index) const { return entries_[Inside(index)]; }

  void Clear() {
    for (T& entry : *this) entry = T{};
  }
  T* begin() { return entries_.get(); }
  T* end() { return entries_.get() + last_ + 1; }
  const T* begin() const { return entries_.get(); }
  const T* end() const { return entries_.get() + last_ + 1; }

 private:
  size_t Inside(int64_t index) const {
    if (!Holds(index)) [[unlikely]]
      EndOutsideTable(index, last_);
    return static_cast<size_t>(index);
  }

  int64_t last_ = kFirstLast;
  std::unique_ptr<T[]> entries_;
};

}  // namespace qlm
