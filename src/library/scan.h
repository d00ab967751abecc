// The search for files, and the charts that it brings into the active list.
#pragma once

#include <vector>

#include "base/text.h"

namespace qlm {

// Appends the files of `folder` to library.foundFiles: for each of the patterns, as in "*.bms;*.bme", all
// that fit it, in the order of their names. With `recurse` those of its folders follow, except of such whose
// name begins with "."; one level down, or at any depth with scanNoLimit, where no folder is entered twice,
// so that links cannot lead in circles. What cannot be read is told in the log. Events run meanwhile.
void FindFiles(TextView folder, TextView patterns, bool recurse);
// The same for a list of its own, with the folders in it.
std::vector<Text> SearchFiles(TextView folder, TextView patterns);

// What charts are called: two patterns, and one more in the wide reading.
TextView ChartPatterns();
// Appends all charts of a folder and of those in it to the active list. Events run meanwhile.
void ScanFolder(TextView folder);

// Looks for charts in all search folders and writes a jukebox for each that has some; the active list is then
// the list of jukeboxes. Without a search file, as at the first start, the stock songs' folder is searched.
// False, with a box that says so, when there is no jukebox. Events that set library.scanStopped end the
// search where it stands, without that box. `noDepthLimit` only stands in the log; library.scanNoLimit is
// what counts.
bool MakeBMSListFile(bool noDepthLimit);
// That box.
void ReportNoCharts();

}  // namespace qlm
