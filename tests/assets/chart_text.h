// The stock charts taken apart, without any of the game's own reading.
#pragma once

#include <filesystem>
#include <map>
#include <string>
#include <vector>

namespace stock {

struct Cell {
  int measure;
  double place;  // in the measure, 0 up to but not including 1
  int channel;
  int value;  // 1 to 255; cells 00 are left out
};

struct ChartText {
  std::string bytes;
  std::vector<std::string> lines;  // without their line ends
  std::map<std::string, std::string>
      commands;                   // "TITLE", "WAV01", "BPM01" and so on, to the text behind the blank
  std::vector<std::string> data;  // the cells of all object lines, as they stand
  std::vector<Cell> cells;
  std::map<int, double> measureLengths;  // those given
  int lastMeasure = 0;
};

ChartText ReadChart(const std::filesystem::path& path);

// A value as the two digits of its cell: the end of the command that gives its file or tempo.
std::string Slot(int value);

// When each measure place sounds, in seconds, by #BPM and the tempo changes of channels 03 and 08.
class Times {
 public:
  explicit Times(const ChartText& chart);

  double At(int measure, double place) const;

 private:
  double Beats(int measure, double place) const;  // from the start of the chart

  const ChartText& chart_;
  std::map<double, double> tempi_;  // by beat
};

}  // namespace stock
