// Reads the header of any bytes as the lists of both readings do.
#include <cstddef>
#include <cstdint>
#include <string_view>

#include "library/header.h"
#include "state/lists.h"
#include "state/settings.h"

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size) {
  using namespace qlm;
  for (const bool wide : {true, false}) {
    WideCharts = wide;
    songList.assign(1, SongEntry{});
    ReadBMSHeaderBytes(u"\\chart.bms", 0, {reinterpret_cast<const char*>(data), size});
  }
  return 0;
}
