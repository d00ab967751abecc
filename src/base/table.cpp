// The end of a program that looked for an entry that its table does not have.
#include "base/table.h"

#include <cinttypes>
#include <cstdio>
#include <cstdlib>

namespace qlm {

void EndOutsideTable(int64_t index, int64_t last) {
  std::fprintf(stderr, "internal error: entry %" PRId64 " of a table that ends at %" PRId64 "\n", index,
               last);
  std::abort();
}

}  // namespace qlm
