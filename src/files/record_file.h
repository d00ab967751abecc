// Play records, each beside its chart. The file NAME.qpd: which chart it is of, the chart's header, the row
// that the play came to, and the events.
#pragma once

#include <cstddef>
#include <cstdint>
#include <span>
#include <string>
#include <string_view>
#include <vector>

#include "base/text.h"
#include "state/lists.h"
#include "state/records.h"
#include "state/scores.h"

namespace qlm {

// What is read of a record.
struct RecordFile {
  int32_t bmsId = 0;
  ScoreEntry entry;
  int32_t count = 0;  // of events, as the file says; it may hold fewer
  std::vector<RecEvent> events;
  size_t looked = 0;  // bytes up to the last one that was read
};

// The record of a chart.
// Quirk: of a chart without an extension it is NAME.bpd.
Text RecordPath(TextView chart);
// Of records, ".w.qpd" in the wide reading.
TextView RecordExtension();

// Any bytes: what is missing at their end is 0, and there are no more events than the bytes and a record
// hold.
RecordFile TakeRecord(std::string_view bytes);
// The file of a play with `count` events. Those that `events` lacks are zero bytes. The header's texts are
// cut where they would run into the row.
std::string RecordBytes(int32_t bmsId, const SongEntry& header, const ScoreEntry& entry, int32_t count,
                        std::span<const RecEvent> events);

}  // namespace qlm
