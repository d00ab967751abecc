// Lines are split at CR LF; object lines begin with "#" and five digits.
#include "chart_text.h"

#include <algorithm>
#include <cctype>
#include <cstdlib>
#include <iterator>

#include "tests/support/whole_file.h"
#include "wav.h"

namespace stock {
namespace {

bool IsObjectLine(const std::string& line) {
  return line.size() > 7 && line[0] == '#' && line[6] == ':' &&
         std::all_of(line.begin() + 1, line.begin() + 6, [](unsigned char c) { return std::isdigit(c); });
}

void ReadObjects(const std::string& line, ChartText& chart) {
  const int measure = std::atoi(line.substr(1, 3).c_str()), channel = std::atoi(line.substr(4, 2).c_str());
  const std::string data = line.substr(7);
  chart.lastMeasure = std::max(chart.lastMeasure, measure);
  if (channel == 2) {
    chart.measureLengths[measure] = std::atof(data.c_str());
    return;
  }
  chart.data.push_back(data);
  const std::size_t count = data.size() / 2;
  for (std::size_t i = 0; i < count; ++i) {
    const int value = static_cast<int>(std::strtol(data.substr(2 * i, 2).c_str(), nullptr, 16));
    if (value == 0) continue;
    chart.cells.push_back({measure, static_cast<double>(i) / static_cast<double>(count), channel, value});
  }
}

}  // namespace

ChartText ReadChart(const std::filesystem::path& path) {
  ChartText chart;
  chart.bytes = qlm::WholeFile(path);
  for (std::size_t at = 0; at < chart.bytes.size();) {
    const std::size_t end = std::min(chart.bytes.find("\r\n", at), chart.bytes.size());
    chart.lines.push_back(chart.bytes.substr(at, end - at));
    at = end + 2;
  }
  for (const std::string& line : chart.lines) {
    const std::size_t blank = line.find(' ');
    if (IsObjectLine(line)) {
      ReadObjects(line, chart);
    } else if (!line.empty() && line[0] == '#' && blank != std::string::npos) {
      chart.commands[line.substr(1, blank - 1)] = line.substr(blank + 1);
    }
  }
  return chart;
}

std::string Slot(int value) {
  constexpr const char* digits = "0123456789ABCDEF";
  return {digits[value / 16 % 16], digits[value % 16]};
}

Times::Times(const ChartText& chart) : chart_(chart) {
  tempi_[0] = std::atof(chart.commands.at("BPM").c_str());
  for (const Cell& cell : chart.cells) {
    const double beat = Beats(cell.measure, cell.place);
    if (cell.channel == 3) tempi_[beat] = cell.value;
    if (cell.channel != 8) continue;
    tempi_[beat] = std::atof(chart.commands.at("BPM" + Slot(cell.value)).c_str());
  }
}

double Times::Beats(int measure, double place) const {
  double beats = 0;
  for (int i = 0; i <= measure; ++i) {
    const auto given = chart_.measureLengths.find(i);
    const double length = 4 * (given == chart_.measureLengths.end() ? 1 : given->second);
    beats += i < measure ? length : length * place;
  }
  return beats;
}

double Times::At(int measure, double place) const {
  const double until = Beats(measure, place);
  double seconds = 0;
  for (auto tempo = tempi_.begin(); tempo != tempi_.end() && tempo->first < until; ++tempo) {
    const auto next = std::next(tempo);
    const double end = next == tempi_.end() ? until : std::min(next->first, until);
    seconds += (end - tempo->first) * 60 / tempo->second;
  }
  return seconds;
}

}  // namespace stock
