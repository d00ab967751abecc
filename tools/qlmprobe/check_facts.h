// What a check gathers about one chart.
#pragma once

#include <cstdint>
#include <map>
#include <optional>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

#include "base/text.h"

namespace probe {

struct Finding {
  int64_t line = 0;  // counted from 1; 0 for the chart as a whole
  std::string_view kind;
  qlm::Text text;
};

// A command of the chart as its author sees it.
struct ChartLine {
  int64_t number = 0;
  qlm::Text command;         // behind the "#"
  bool conditional = false;  // inside an #IF block, so that it may or may not hold
};

struct Definition {
  int64_t line = 0;
  qlm::Text name;
};

// Uses of an index that the chart names.
struct Use {
  int64_t line = 0;  // the first one
  int64_t count = 0;
};

struct ChartFacts {
  std::vector<Finding> findings;
  std::vector<ChartLine> lines;
  std::map<int32_t, Definition> wav;  // by index, the last definition
  std::map<int32_t, Definition> bmp;
  std::map<int32_t, double> bpm;
  std::map<int32_t, Use> wavUses;
  std::map<int32_t, Use> bmpUses;    // on every channel of pictures
  std::map<int32_t, Use> coverUses;  // on the channels of base and layer
  std::map<int32_t, Use> bpmUses;
  std::optional<Definition> stage;
  std::optional<int32_t> player;

  void Find(int64_t line, std::string_view kind, qlm::Text text) {
    findings.push_back({line, kind, std::move(text)});
  }
};

// The steps, in order. Each adds findings and facts for those behind it.

// Splits the chart into commands, and tells of commands that the game does not see.
void CheckText(ChartFacts& facts, std::string_view bytes);
// Lines that are no data: header fields, file names, #RANDOM.
void CheckHeader(ChartFacts& facts);
// Numbered lines: measures, channels, cells.
void CheckData(ChartFacts& facts);
// Sounds and pictures beside the chart at `path`.
void CheckFiles(ChartFacts& facts, qlm::TextView path);

}  // namespace probe
