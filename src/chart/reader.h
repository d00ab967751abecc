// The reader of BMS text: one chart file to objects, header fields and file tables.
#pragma once

#include <string_view>

#include "base/text.h"

namespace qlm {

class ChartReport;

// Empties all that one chart owns. Header fields, the tempo table and loaded files stay, so that a reload of
// the same chart loads nothing.
void BMSInit();
// Appends the chart at `path` to the object table. No bad line stops a read; a missing file reads as an empty
// one. Stops on the spot when LoadAbort is set behind a #WAV or #BMP line.
void BMSRead(TextView path);
// The same for bytes at hand. The chart's sounds and pictures lie in the folder of `path`. With a report it
// is a read for the chart's author, who hears of the classic reading, even of text that the wide one decodes.
void BMSReadBytes(TextView path, std::string_view bytes, ChartReport* report = nullptr);
// No text chart is longer; what is, takes minutes to read and has no music in it.
constexpr int64_t kLongestChart = int64_t{256} << 20;
// True, with a word in the log and on the screen, for a file that is longer.
bool RefuseLongChart(TextView path);

// Raises the fatal message if the object table is too small or could not be made, once since BMSInit. True
// when it did: the load then stops.
bool ReportShortage();

}  // namespace qlm
