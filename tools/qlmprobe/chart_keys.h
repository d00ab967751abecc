// What a chart's load leaves in memory, as JSON keys.
#pragma once

#include "tools/qlmprobe/json.h"

namespace probe {

// `raw` leaves out what preparation makes. `folder` is that of the chart: file names are given without it.
void PutChart(Json& json, bool raw, qlm::TextView folder);

}  // namespace probe
