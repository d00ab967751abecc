// Charts as BMS text.
#pragma once

#include <map>
#include <string>
#include <vector>

#include "score.h"

namespace assetmaker {

// One object of a chart: a cell in a channel, at a tick of the score.
struct ChartObject {
  int tick;
  int channel;
  int value;  // 1 to 255

  bool operator==(const ChartObject&) const = default;
};

struct ChartHeader {
  std::string title;  // in code page 932, like all text of a chart
  std::string artist;
  std::string genre;
  std::string stageFile;
  int player;  // 1 one side, 3 both sides for two hands
  int playLevel;
  int rank;   // 0 to 3; higher is easier
  int total;  // what a perfect play adds to the gauge, in percent
};

struct Chart {
  ChartHeader header;
  std::map<int, std::string> sounds, pictures;  // file names by slot
  std::vector<ChartObject> objects;  // notes, background sounds and pictures; tempo is added in writing
};

// The chart as text with CR LF line ends. Tempo changes and short measures come from the score.
std::string BmsText(const Chart& chart, const Score& score);

}  // namespace assetmaker
