// The three charts of the stock song: who plays which notes with which finger.
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
