// The command text: options, lists and charts.
#pragma once

#include <optional>
#include <vector>

#include "base/text.h"

namespace qlm {

// Whether a word begins with an option's two characters.
// Quirk: so "-B-" is "-B", and the minus forms cannot switch anything off.
bool IsOption(TextView word);

// Splits at blanks, except between double quotes, which vanish. Empty words are left out.
std::vector<Text> CommandWords(TextView command);

// Whether a word names a chart, which would be played at once.
bool NamesChart(TextView command);

// Takes the words in turn; then plays list entry 0 if at least one chart was named. Gives whether that chart
// could be loaded, nothing when none was named.
std::optional<bool> RunCommandLine(TextView command);

}  // namespace qlm
