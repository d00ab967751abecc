// The one sort of the game, for the object table and for lists.
#pragma once

#include <algorithm>
#include <cstdint>
#include <span>
#include <utility>
#include <vector>

namespace qlm {

// Sorts records by key(record), ascending.
// Quirk: not stable, and the order in which equal keys come out is fixed by the scheme: which of two notes at
// one place counts, and which becomes a background sound, rests on it. Keep each step as it is.
template <typename Record, typename Key>
void SortInScheme(std::span<Record> records, Key key) {
  // The scheme never leaves a range: at each of its ends stands a record that ends the walk there.
  Record* const first = records.data();
  const auto keyAt = [&](int64_t i) -> decltype(auto) { return key(first[i]); };
  std::vector<std::pair<int64_t, int64_t>> ranges = {{0, static_cast<int64_t>(records.size()) - 1}};
  while (!ranges.empty()) {
    const auto [lo, hi] = ranges.back();
    ranges.pop_back();
    if (lo >= hi) continue;
    auto low = keyAt(lo);
    auto pivot = keyAt((lo + hi) / 2);
    auto high = keyAt(hi);
    if (pivot < low) std::swap(pivot, low);
    if (high < pivot) std::swap(pivot, high);
    if (pivot < low) std::swap(pivot, low);
    int64_t i = lo - 1;
    int64_t j = hi + 1;
    while (true) {
      do ++i;
      while (keyAt(i) < pivot);
      do --j;
      while (pivot < keyAt(j));
      if (i >= j) break;
      std::swap(first[i], first[j]);
    }
    ranges.emplace_back(j + 1, hi);
    ranges.emplace_back(lo, i - 1);
  }
}

}  // namespace qlm
