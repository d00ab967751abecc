// Laying notes under the hands.
#pragma once

#include <vector>

#include "score.h"

namespace assetmaker {

// For every event of the score its channel: a lane, or 1 for the background. Earlier tasks choose their lanes
// first.
std::vector<int> ChooseLanes(const Score& score, const std::vector<Task>& tasks);

}  // namespace assetmaker
