// Any bytes as the list of what an installed program has brought: what is taken from it is written and taken
// again as it was.
#include <cstddef>
#include <cstdint>
#include <cstdlib>
#include <string_view>

#include "files/stock_data.h"

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size) {
  const qlm::StockList list = qlm::TakeStockList({reinterpret_cast<const char*>(data), size});
  const qlm::StockList again = qlm::TakeStockList(qlm::StockListBytes(list));
  if (again.version != list.version || again.sums != list.sums) std::abort();
  return 0;
}
