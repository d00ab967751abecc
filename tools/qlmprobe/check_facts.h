// What a check tells about one chart, and its steps.
#pragma once

#include <cstdint>
#include <map>
#include <string>
#include <string_view>
#include <vector>

#include "base/text.h"
#include "chart/chart_report.h"

namespace probe {

struct Finding {
  int64_t line = 0;  // counted from 1; 0 for the chart as a whole
  std::string_view kind;
  qlm::Text text;
};

// As many findings of a kind as an author could want, and the number of those left out. In the wide reading,
// those alone that hold there too.
class Findings {
 public:
  void Add(int64_t line, std::string_view kind, qlm::Text text);
  // More of a kind, which are not kept.
  void LeaveOut(std::string_view kind, int64_t count);
  // By lines, behind them what was left out.
  std::vector<Finding> InOrder() const;

 private:
  std::vector<Finding> findings_;
  std::map<std::string_view, int64_t> kept_;
  std::map<std::string_view, int64_t> leftOut_;
};

// All that a check tells of the chart at `path`, by lines.
std::vector<Finding> CheckChart(const qlm::Text& path);

// Its steps.

// What the reader of charts never gets to see: commands that are hidden from it, and the encoding. Gives the
// bytes for the other steps, as the author means them: with one line more in front, ends that the game sees,
// and without what hides a command.
std::string CheckText(Findings& findings, std::string_view bytes);
// What the reader and preparation have reported, in words.
void TellReport(Findings& findings, const qlm::ChartReport& report);
// The chart as a whole, as it was read for the report and stands in memory: fields that are missing, slots
// that are used and not defined, sides and measures.
void CheckWhole(Findings& findings, const qlm::ChartReport& report);
void TellNoNotes(Findings& findings);
// What the wide reading would make otherwise, of the chart that stands in memory as the classic one loads it.
void CheckWide(Findings& findings, std::string_view bytes, qlm::TextView path);
// Sounds and pictures beside the chart at `path`.
void CheckFiles(Findings& findings, const qlm::ChartReport& report, qlm::TextView path);

}  // namespace probe
