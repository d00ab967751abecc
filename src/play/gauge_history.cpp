// Sampling of the gauge.
#include "play/gauge_history.h"

#include <limits>

#include "base/numbers.h"
#include "net/messages.h"
#include "play_screen/gauge_graph.h"
#include "state/gauge.h"
#include "state/network.h"
#include "state/session.h"
#include "state/timeline.h"

namespace qlm {
namespace {

// Every third sample goes to the other machines.
constexpr int32_t kSamplesASend = 3;

void TakeSample(int32_t slot) {
  const std::optional<uint8_t> sample = RoundTo<uint8_t>(Gauge[0]);
  if (sample) GaugeHistory[0].Put(slot, *sample);
  const int64_t next = int64_t{slot} + 1;
  HistoryNext[0] = static_cast<float>(next);
  if (network.NetActive && !PreviewActive && next % kSamplesASend == 0) SendGaugeData(sample.value_or(0));
  if (!sample) return;
  StoreOwnGauge(slot, *sample);
  DrawGaugeSample(slot, *sample);
}

}  // namespace

std::optional<int32_t> HistorySlot() {
  const std::optional<int32_t> step = Round(HistoryStep);
  return step ? Divide(playClock, *step) : std::nullopt;
}

void FillGaugeHistory() {
  const std::optional<int32_t> due = HistorySlot();
  const std::optional<int32_t> first = Round(HistoryNext[0]);
  if (!due || !first) return;
  const int32_t last = MinI32(*due, std::numeric_limits<int32_t>::max() - 1);
  for (loopCounter = *first; loopCounter <= last; ++loopCounter) TakeSample(loopCounter);
}

}  // namespace qlm
