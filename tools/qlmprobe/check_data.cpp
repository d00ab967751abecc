// Checks of numbered lines.
#include <algorithm>

#include "base/numbers.h"
#include "chart/lines.h"
#include "state/chart.h"
#include "tools/qlmprobe/check_facts.h"

namespace probe {
namespace {

using qlm::Join;
using qlm::Text;
using qlm::TextView;

constexpr int32_t kMeasures = 1000;

bool AllDigits(TextView text) { return std::all_of(text.begin(), text.end(), qlm::IsDigit); }

TextView WhyDropped(int32_t channel) {
  if (channel == 9) return u"the game knows no stops";
  if (channel == 17 || channel == 27) return u"the game has no free zone";
  if (channel >= 51 && channel <= 69) return u"the game has no long notes";
  if (channel == 5) return u"the game has no object that is only seen in other programs";
  return u"the game does not know it";
}

struct DataLine {
  const ChartLine* line;
  int32_t measure;
  int32_t channel;
  TextView data;
};

class DataCheck {
 public:
  explicit DataCheck(ChartFacts& facts) : facts_(facts) {}

  void Run() {
    for (const ChartLine& line : facts_.lines) {
      if (qlm::IsNumbered(line.command)) Split(line);
    }
    PlaceMeasures();
    for (const DataLine& data : data_) CheckCells(data);
    CheckUses();
    CheckSides();
    CheckLastMeasure();
  }

 private:
  // Takes a line apart; lengths are stored, and what makes no objects is told and left out.
  void Split(const ChartLine& line) {
    const TextView measureDigits = qlm::Left(line.command, 3);
    const TextView channelDigits = qlm::Mid(line.command, 4, 2);
    qlm::Assign(measure_, qlm::MeasureOf(line.command, 0));
    qlm::Assign(channel_, qlm::ChannelOf(line.command));
    if (measureDigits.size() < 3 || !AllDigits(measureDigits)) {
      facts_.Find(line.number, "measure",
                  Join(u"\"", measureDigits, u"\" is not three digits: the game takes measure ", measure_));
    }
    if (channelDigits.size() < 2 || !AllDigits(channelDigits)) {
      facts_.Find(
          line.number, "channel",
          Join(u"channels are two decimal digits: \"", channelDigits, u"\" is read as channel ", channel_));
    }
    if (measure_ < 0 || measure_ >= kMeasures) return;
    lastMeasure_ = std::max(lastMeasure_, measure_);
    if (qlm::Mid(line.command, 6, 1) != u":") {
      facts_.Find(line.number, "colon", u"the sixth character is passed over: a colon is missing");
    }
    if (channel_ == 2) return TakeLength(line);
    if (!qlm::MakesObjects(channel_)) {
      facts_.Find(line.number, "channel",
                  Join(u"channel ", channelDigits, u" makes no objects: ", WhyDropped(channel_)));
      return;
    }
    data_.push_back({&line, measure_, channel_, qlm::Mid(line.command, 7)});
  }

  void TakeLength(const ChartLine& line) {
    const std::optional<float> length = qlm::LengthOf(line.command);
    if (!length) {
      facts_.Find(line.number, "length", u"a length so large is dropped");
      return;
    }
    if (!(*length > 0)) {
      facts_.Find(line.number, "length",
                  *length == 0 ? u"a measure of length 0 gets the length 1"
                               : u"a measure of negative length moves what follows backwards");
    }
    lengths_[static_cast<size_t>(measure_)] = *length;
  }

  // Positions of the bar lines, rounded measure by measure as preparation does.
  void PlaceMeasures() {
    double position = 0;
    for (size_t i = 0; i < kMeasures; ++i) {
      if (lengths_[i] == 0) lengths_[i] = 1;
      starts_[i] = position;
      const double next = position + 192.0 * double{lengths_[i]};
      position = next > -1e9 && next < 1e9 ? qlm::RoundHalfEven(next) : position;
    }
  }

  void CheckCells(const DataLine& data) {
    const auto count = static_cast<int64_t>(data.data.size() / 2);
    if (data.data.size() % 2 != 0) {
      facts_.Find(data.line->number, "odd", u"an odd number of characters: the last one is passed over");
    }
    for (int64_t i = 0; i < count; ++i) {
      const TextView cell = data.data.substr(static_cast<size_t>(i) * 2, 2);
      if (cell == u"00") continue;
      const auto value = static_cast<int32_t>(qlm::ValHex(cell));
      if (!qlm::IsHexDigit(cell[0]) || !qlm::IsHexDigit(cell[1])) {
        facts_.Find(data.line->number, "cell",
                    Join(u"\"", cell, u"\" is not two hexadecimal digits: the game makes an object with ",
                         value < 16 ? u"0" : u"", qlm::Hex(static_cast<uint32_t>(value))));
      }
      const double tick = qlm::RoundHalfEven(192.0 / static_cast<double>(count) * static_cast<double>(i));
      TakeObject(data, value, tick);
    }
  }

  void TakeObject(const DataLine& data, int32_t value, double tick) {
    const int64_t line = data.line->number;
    lastObject_ = std::max(lastObject_, data.measure);
    const auto use = [&](std::map<int32_t, Use>& uses) {
      Use& entry = uses[value];
      if (entry.count++ == 0) entry.line = line;
    };
    switch (data.channel) {
      case 3: return;
      case 8: return use(facts_.bpmUses);
      case 4:
      case 7: use(facts_.coverUses); [[fallthrough]];
      case 6: return use(facts_.bmpUses);
      default: use(facts_.wavUses);
    }
    if (!qlm::IsNoteChannel(data.channel)) return;
    ++(data.channel >= 20 ? secondSide_ : firstSide_);
    if (data.line->conditional) return;
    const double length = lengths_[static_cast<size_t>(data.measure)];
    const double position = qlm::RoundHalfEven(starts_[static_cast<size_t>(data.measure)] + tick * length);
    const auto [known, fresh] = notes_.try_emplace({data.channel, position}, line);
    if (!fresh) {
      facts_.Find(line, "duplicate",
                  Join(u"measure ", data.measure, u", tick ", static_cast<int32_t>(tick), u" of channel ",
                       data.channel, u" holds a note of line ", known->second,
                       u" already: one of the two becomes a background sound"));
    }
  }

  void CheckUses() {
    const auto check = [&](const std::map<int32_t, Use>& uses, const auto& defined, TextView word,
                           TextView effect) {
      for (const auto& [index, use] : uses) {
        if (defined(index)) continue;
        facts_.Find(use.line, "undefined",
                    Join(u"#", word, index < 16 ? u"0" : u"", qlm::Hex(static_cast<uint32_t>(index)),
                         u" is not defined and is used ", use.count,
                         use.count == 1 ? u" time: " : u" times: ", effect));
      }
    };
    check(
        facts_.wavUses, [&](int32_t index) { return facts_.wav.contains(index); }, u"WAV", u"silence");
    check(
        facts_.bmpUses, [&](int32_t index) { return facts_.bmp.contains(index); }, u"BMP", u"no picture");
    check(
        facts_.bpmUses, [&](int32_t index) { return facts_.bpm.contains(index); }, u"BPM",
        u"the tempo does not change");
  }

  void CheckSides() {
    if (facts_.player.value_or(1) == 1 && secondSide_ > 0) {
      facts_.Find(
          0, "player",
          Join(secondSide_, u" notes of the second side in a chart for one player: they have no lanes"));
    }
    if (firstSide_ + secondSide_ == 0) facts_.Find(0, "no-notes", u"the chart has no notes");
  }

  void CheckLastMeasure() {
    if (lastMeasure_ > lastObject_ + 1) {
      facts_.Find(0, "last-measure",
                  Join(u"the last object lies in measure ", lastObject_, u", but a line names measure ",
                       lastMeasure_, u": the play goes on to its end"));
    }
  }

  ChartFacts& facts_;
  int32_t measure_ = 0;  // of the last line whose measure was a number
  int32_t channel_ = 0;
  std::vector<DataLine> data_;
  std::vector<float> lengths_ = std::vector<float>(kMeasures, 0);
  std::vector<double> starts_ = std::vector<double>(kMeasures, 0);
  std::map<std::pair<int32_t, double>, int64_t> notes_;  // line by channel and position
  int64_t firstSide_ = 0;
  int64_t secondSide_ = 0;
  int32_t lastMeasure_ = 0;
  int32_t lastObject_ = 0;
};

}  // namespace

void CheckData(ChartFacts& facts) { DataCheck(facts).Run(); }

}  // namespace probe
