// Whether a chart that was loaded can be played as its author meant it.
#pragma once

#include <string>

#include "base/text.h"

namespace qlm {

// What a player would otherwise sit before without knowing why, as the beginning of a sentence: the chart in
// memory is empty, silent or without an end. Empty when it is none of them. Sounds that are loaded later, or
// were not asked for, are not missed.
TextView TroubleOfChart();

// The command that says more of the chart at this path, as it is typed into a terminal.
std::string CheckCommand(TextView path);

// Tells of the trouble of the chart that was loaded from this path: the screen as long as the chart is
// played, and the terminal, with the command that says more.
void TellTrouble(TextView path);

}  // namespace qlm
