// The charts of a song, as its score plans them.
#pragma once

#include <string>
#include <vector>

#include "bms.h"
#include "sample_bank.h"

namespace assetmaker {

struct NamedChart {
  std::string fileName;
  Chart chart;
};

std::vector<NamedChart> MakeCharts(const Score& score, const SampleBank& bank);

}  // namespace assetmaker
