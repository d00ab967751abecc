// What a chart's load leaves in memory, as JSON keys.
#pragma once

#include "base/json.h"
#include "base/table.h"
#include "base/text.h"

namespace probe {

using qlm::Json;

// The files that a chart names, by slot, and its folder.
struct ChartFiles {
  const qlm::SlotTable<qlm::Text>& wav;
  const qlm::SlotTable<qlm::Text>& bmp;
  qlm::TextView folder;
};

// `raw` leaves out what preparation makes. File names are given without the folder.
void PutChart(Json& json, bool raw, const ChartFiles& files);

}  // namespace probe
