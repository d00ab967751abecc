// Any bytes as a play record: what is taken fits into them, and a play runs by it to its end.
#include <cstddef>
#include <cstdint>
#include <cstdlib>
#include <string_view>

#include "base/log.h"
#include "files/record_file.h"
#include "platform/clock.h"
#include "play/position.h"
#include "play/records.h"
#include "play/reset.h"
#include "play/turn.h"
#include "state/chart.h"
#include "state/records.h"
#include "state/reset.h"
#include "state/session.h"
#include "state/settings.h"

namespace {

// A bar line and two notes a lane, all within the first measure.
void LayChart() {
  qlm::numObjs = 63;
  qlm::objs.assign(64, {});
  qlm::HdrBPM = 150;
  qlm::TotalNotes = {32, 0};
  for (int32_t channel = 0; channel <= 99; ++channel) qlm::ChannelMap[channel] = channel;
  for (int32_t pos = 0; pos < 192; pos += 12) {
    *qlm::AddObj() = {.pos = pos, .tick = pos, .channel = 11 + pos / 12 % 9, .speedMul = 1};
  }
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size) {
  const std::string_view bytes(reinterpret_cast<const char*>(data), size);
  const qlm::RecordFile record = qlm::TakeRecord(bytes);
  if (record.looked > size || record.events.size() > size / 18) std::abort();

  qlm::ResetState();
  qlm::logOutput.file = false;
  platform::UseVirtualClock(1'000'000);
  qlm::NOVSync = true;
  LayChart();
  qlm::BMSID = record.bmsId;
  qlm::ShowRec = qlm::UserPlay = true;
  qlm::TakeUserRec(bytes);
  if (qlm::RecCount != static_cast<int32_t>(record.events.size())) std::abort();
  qlm::ResetPlay();
  qlm::PlayAlive = true;
  qlm::SeekChart(0, true);
  platform::SetFrameClock([](uint32_t now) { return now + 20; });
  for (int turn = 0; turn < 100 && !qlm::PlayEnd; ++turn) qlm::PlayStep();
  platform::SetFrameClock(nullptr);
  if (qlm::RecCursor < 0 || qlm::RecCursor > qlm::RecCount) std::abort();
  return 0;
}
