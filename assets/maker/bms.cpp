// Header lines, then the objects measure by measure, channel by channel.
#include "bms.h"

#include <array>
#include <cmath>
#include <numeric>
#include <sstream>

namespace assetmaker {
namespace {

constexpr std::string_view lineEnd = "\r\n";

std::string Hex(int value) {
  constexpr std::string_view digits = "0123456789ABCDEF";
  return {digits[static_cast<std::size_t>(value / 16)], digits[static_cast<std::size_t>(value % 16)]};
}

std::string ThreeDigits(std::size_t number) {
  const std::string digits = std::to_string(number);
  return std::string(3 - digits.size(), '0') + digits;
}

// 126.5 as "126.5", 132 as "132".
std::string Shortest(double number) {
  std::ostringstream text;
  text << number;
  return text.str();
}

bool IsWholeByte(double tempo) { return tempo == std::floor(tempo) && tempo >= 1 && tempo <= 255; }

// Tempo changes behind the first: whole numbers stand in the cells of channel 03, all others in a table that
// channel 08 points into.
struct TempoObjects {
  std::vector<ChartObject> objects;
  std::vector<double> table;  // entry n is #BPM of slot n + 1
};

TempoObjects TempoObjectsOf(const Score& score) {
  constexpr int tempoChannel = 3, tableChannel = 8;
  TempoObjects tempi;
  for (const TempoChange& change : score.tempi) {
    if (change.tick == 0) continue;
    if (IsWholeByte(change.tempo)) {
      tempi.objects.push_back({change.tick, tempoChannel, static_cast<int>(change.tempo)});
    } else {
      tempi.table.push_back(change.tempo);
      tempi.objects.push_back({change.tick, tableChannel, static_cast<int>(tempi.table.size())});
    }
  }
  return tempi;
}

// One line of a measure: its cells by tick from the start of the measure.
using Row = std::map<int, int>;

std::string Cells(const Row& row, int measureLength) {
  int step = measureLength;
  for (const auto& [tick, value] : row) step = std::gcd(step, tick);
  std::string cells;
  for (int tick = 0; tick < measureLength; tick += step) {
    const auto cell = row.find(tick);
    cells += cell == row.end() ? "00" : Hex(cell->second);
  }
  return cells;
}

// Objects of one channel that fall on one tick go to rows of their own.
void Place(std::vector<Row>& rows, int tick, int value) {
  for (Row& row : rows) {
    if (row.emplace(tick, value).second) return;
  }
  rows.push_back({{tick, value}});
}

class Text {
 public:
  void Line(std::string_view line = {}) {
    text_ += line;
    text_ += lineEnd;
  }
  void Command(std::string_view name, std::string_view value) {
    Line('#' + std::string(name) + ' ' + std::string(value));
  }
  void Command(std::string_view name, int value) { Command(name, std::to_string(value)); }
  std::string Taken() && { return std::move(text_); }

 private:
  std::string text_;
};

void WriteHeader(Text& text, const Chart& chart, const Score& score, const std::vector<double>& tempoTable) {
  const ChartHeader& header = chart.header;
  text.Command("PLAYER", header.player);
  text.Command("GENRE", header.genre);
  text.Command("TITLE", header.title);
  text.Command("ARTIST", header.artist);
  text.Command("BPM", Shortest(score.tempi.front().tempo));
  text.Command("PLAYLEVEL", header.playLevel);
  text.Command("RANK", header.rank);
  text.Command("TOTAL", header.total);
  text.Command("STAGEFILE", header.stageFile);
  text.Line();
  for (const auto& [slot, name] : chart.sounds) text.Command("WAV" + Hex(slot), name);
  text.Line();
  for (const auto& [slot, name] : chart.pictures) text.Command("BMP" + Hex(slot), name);
  text.Line();
  for (std::size_t i = 0; i < tempoTable.size(); ++i) {
    text.Command("BPM" + Hex(static_cast<int>(i) + 1), Shortest(tempoTable[i]));
  }
}

void WriteMeasures(Text& text, const Score& score, const std::vector<ChartObject>& objects) {
  for (std::size_t number = 0; number < score.measures.size(); ++number) {
    const Measure& measure = score.measures[number];
    std::map<int, std::vector<Row>> channels;
    for (const ChartObject& object : objects) {
      const int tick = object.tick - measure.tick;
      if (tick >= 0 && tick < measure.length) Place(channels[object.channel], tick, object.value);
    }
    text.Line();
    const std::string start = '#' + ThreeDigits(number);
    if (measure.length != wholeNote) {
      text.Line(start + "02:" + Shortest(static_cast<double>(measure.length) / wholeNote));
    }
    for (const auto& [channel, rows] : channels) {
      const std::string name =
          start + static_cast<char>('0' + channel / 10) + static_cast<char>('0' + channel % 10) + ':';
      for (const Row& row : rows) text.Line(name + Cells(row, measure.length));
    }
  }
}

}  // namespace

std::string BmsText(const Chart& chart, const Score& score) {
  const TempoObjects tempi = TempoObjectsOf(score);
  std::vector<ChartObject> objects = tempi.objects;
  objects.insert(objects.end(), chart.objects.begin(), chart.objects.end());
  Text text;
  // Readers find commands behind a line end, so a first line with a command would be lost: this one is for
  // people.
  text.Line("*---------------------- HEADER");
  WriteHeader(text, chart, score, tempi.table);
  text.Line();
  text.Line("*---------------------- MAIN DATA");
  WriteMeasures(text, score, objects);
  return std::move(text).Taken();
}

}  // namespace assetmaker
