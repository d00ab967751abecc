// Any bytes as a list file: what is read, written and read again is the same.
#include <cstddef>
#include <cstdint>
#include <cstdlib>
#include <string>
#include <string_view>

#include "files/list_file.h"

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size) {
  using namespace qlm;
  // Every row takes 48 bytes at least, but for the last one.
  constexpr size_t kSmallestRow = 48;
  // So short that no text becomes too long by being written.
  constexpr size_t kMostBytes = 20'000;
  const ListFile list = ReadListFile({reinterpret_cast<const char*>(data), size});
  if (list.rows.size() > size / kSmallestRow + 1 || list.unread > size) std::abort();
  if (list.whole && list.rows.size() != static_cast<size_t>(int64_t{list.lastSong} + 1)) std::abort();
  const std::string bytes = ListFileBytes(list.rows);
  const ListFile again = ReadListFile(bytes);
  if (!again.whole || again.unread != 0 || again.rows.size() != list.rows.size()) std::abort();
  if (size > kMostBytes) return 0;
  for (size_t row = 0; row < list.rows.size(); ++row) {
    if (again.rows[row].path != list.rows[row].path) std::abort();
  }
  if (ListFileBytes(again.rows) != bytes) std::abort();
  return 0;
}
