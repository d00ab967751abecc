// What a person is told of files that cannot be written.
#pragma once

#include "base/text.h"

namespace qlm {

// Names the file on standard error and in the screen message, the first time that it is this file.
void ReportUnwritten(TextView path);

// A box that names the settings or the keys that were not saved, when there is a display. Nothing when both
// were.
void ShowUnsaved(bool keysSaved, bool settingsSaved);

}  // namespace qlm
