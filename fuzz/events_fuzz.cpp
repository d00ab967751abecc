// Any bytes as an events file of the probe: what is taken is in range, and every turn finds its events in
// their order.
#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <cstdlib>
#include <string>

#include "tools/qlmprobe/events.h"

namespace {

void Check(bool holds) {
  if (!holds) std::abort();
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size) {
  const std::string text(reinterpret_cast<const char*>(data), size);
  std::string wrong;
  auto events = probe::ParseEvents(text, wrong);
  Check(events.has_value() == wrong.empty());
  if (!events) return 0;
  Check(static_cast<std::ptrdiff_t>(events->size()) <= std::count(text.begin(), text.end(), '\n') + 1);
  for (const probe::KeyEvent& event : *events) Check(event.key >= 0 && event.key <= 400);
  for (const int32_t turnsPerSecond : {1, 60, 1000}) {
    probe::OrderByTurns(*events, turnsPerSecond);
    Check(std::is_sorted(events->begin(), events->end(), [&](const auto& a, const auto& b) {
      return probe::ServingTurn(a.time, turnsPerSecond) < probe::ServingTurn(b.time, turnsPerSecond);
    }));
  }
  return 0;
}
