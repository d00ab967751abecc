// What a search for charts shows and tells while it runs.
#pragma once

#include "base/text.h"

namespace qlm {

// The state of the active list, as the caption of the window. Once there is a display, nothing is shown.
void ShowListProgress();
// The folder that was just searched.
void ShowSearchProgress(TextView folder);
// Any other word about a search, as caption.
void ShowProgress(TextView text);

// Tells the log, and who else wants to know, what could not be read.
void ReportUnreadable(TextView path, TextView why);
// Lets events run, now and then. They may end the program.
void PumpSearch();

}  // namespace qlm
