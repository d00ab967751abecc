// What the wide reading would make otherwise of a chart that was read without it.
#include <algorithm>
#include <array>
#include <initializer_list>

#include "chart/loading.h"
#include "chart/reader.h"
#include "chart/wide_reading.h"
#include "platform/text.h"
#include "state/chart.h"
#include "state/settings.h"
#include "state/wide_chart.h"
#include "tools/qlmprobe/check_facts.h"
#include "tools/qlmprobe/engine.h"

namespace probe {
namespace {

using qlm::BeginsWith;
using qlm::Join;
using qlm::Text;
using qlm::TextView;

// What a line may hold that only the wide reading takes, or takes otherwise.
enum class Fact {
  kBase62,
  kSlots,
  kStops,
  kTempi,
  kLongNotes,
  kMines,
  kBlocks,
  kTitles,
  kPreview,
  kVolume,
  kScroll
};

struct FactWords {
  Fact fact;
  TextView words;  // behind the number of lines
};
constexpr std::array<FactWords, 11> kFacts = {{
    {Fact::kBase62, u"#BASE 62: the wide reading tells capital and small letters of slots apart"},
    {Fact::kSlots, u"slots beyond FF: the wide reading has a place for each"},
    {Fact::kStops, u"stops: the wide reading makes them"},
    {Fact::kTempi, u"#EXBPM: the wide reading takes these tempi"},
    {Fact::kLongNotes, u"long notes: the wide reading has them"},
    {Fact::kMines, u"mines: the wide reading shows them, and they do no harm"},
    {Fact::kBlocks, u"blocks beyond #IF and #ENDIF: the wide reading follows them"},
    {Fact::kTitles, u"a second title or artist, or a difficulty: the wide reading shows it"},
    {Fact::kPreview, u"#PREVIEW: in the wide reading the song select plays it"},
    {Fact::kVolume, u"#VOLWAV: the wide reading plays at this volume"},
    {Fact::kScroll, u"scroll speeds of the chart: the wide reading passes them over too"},
}};

bool IsHexPair(TextView digits) {
  return digits.size() == 2 && qlm::IsHexDigit(digits[0]) && qlm::IsHexDigit(digits[1]);
}

class Facts {
 public:
  void Take(int64_t number, TextView line) {
    qlm::IsNumbered(line) ? Data(number, line) : Header(number, line);
  }

  // Whether two loads may find other notes.
  bool HasChance() const { return chance_; }

  void Tell(Findings& findings) const {
    for (const FactWords& row : kFacts) {
      const Lines& lines = lines_[static_cast<size_t>(row.fact)];
      if (lines.count == 0) continue;
      findings.Add(lines.first, "wide",
                   Join(lines.count, lines.count == 1 ? u" line with " : u" lines with ", row.words));
    }
  }

 private:
  struct Lines {
    int64_t first = 0;
    int64_t count = 0;
  };

  void Note(int64_t number, Fact fact) {
    Lines& lines = lines_[static_cast<size_t>(fact)];
    if (lines.count++ == 0) lines.first = number;
  }

  void Data(int64_t number, TextView line) {
    const TextView letters = qlm::Mid(line, 4, 2);
    if (qlm::EqualsAnyCase(letters, u"SC") || qlm::EqualsAnyCase(letters, u"SP"))
      return Note(number, Fact::kScroll);
    const int32_t channel = qlm::WideReading::ChannelOf(line);
    if (channel == qlm::ObjStop) {
      Note(number, Fact::kStops);
    } else if (qlm::IsMine(channel)) {
      Note(number, Fact::kMines);
    } else if (channel > 50) {
      Note(number, Fact::kLongNotes);
    }
    if (channel == 0 || channel == 2 || channel == 3) return;
    const qlm::Cells cells(line);
    for (int64_t j = 0; j < cells.Count(); ++j) {
      if (!IsHexPair(cells.Letters(j))) return Note(number, Fact::kSlots);
    }
  }

  void Header(int64_t number, TextView line) {
    const auto is = [line](std::initializer_list<TextView> words) {
      return std::any_of(words.begin(), words.end(),
                         [line](TextView word) { return BeginsWith(line, word); });
    };
    const bool defines = is({u"WAV", u"BMP"}) || (is({u"BPM"}) && qlm::Mid(line, 4, 1) != u" ");
    if (defines && !IsHexPair(qlm::SlotDigits(line))) Note(number, Fact::kSlots);
    if (is({u"RANDOM", u"SWITCH"})) chance_ = true;
    if (is({u"BASE 62"})) Note(number, Fact::kBase62);
    if (is({u"STOP"})) Note(number, Fact::kStops);
    if (is({u"EXBPM"})) Note(number, Fact::kTempi);
    if (is({u"LNOBJ"})) Note(number, Fact::kLongNotes);
    if (is({u"ELSE", u"SETRANDOM", u"ENDRANDOM", u"SWITCH", u"SETSWITCH"})) Note(number, Fact::kBlocks);
    if (is({u"SUBTITLE", u"SUBARTIST", u"DIFFICULTY"})) Note(number, Fact::kTitles);
    if (is({u"PREVIEW"})) Note(number, Fact::kPreview);
    if (is({u"VOLWAV"}) && qlm::ToWhole(qlm::Argument(line, 8)).value_or(100) != 100)
      Note(number, Fact::kVolume);
    if (is({u"SCROLL", u"SPEED"})) Note(number, Fact::kScroll);
  }

  std::array<Lines, kFacts.size()> lines_{};
  bool chance_ = false;
};

// What a load left in memory.
struct Load {
  int32_t notes = qlm::TotalNotes[0] + (qlm::HdrPlayer == 3 ? 0 : qlm::TotalNotes[1]);
  int32_t ms = qlm::BMSLengthMs;
};

Text Seconds(int32_t ms) { return Join((int64_t{ms} + 500) / 1000, u" s"); }

void TellLoads(Findings& findings, TextView path) {
  const Load classic;
  qlm::WideCharts = qlm::NoBGA = qlm::NoWAV = true;
  qlm::BMSLoad(path);
  qlm::WideCharts = qlm::NoBGA = qlm::NoWAV = false;
  if (qlm::shortageRaised) return fatalMessage.reset();
  const Load wide;
  if (wide.notes != classic.notes) {
    findings.Add(
        0, "wide",
        Join(u"the wide reading finds ", wide.notes, u" notes, and the classic one ", classic.notes));
  }
  if (Seconds(wide.ms) != Seconds(classic.ms)) {
    findings.Add(0, "wide",
                 Join(u"by the wide reading the chart lasts ", Seconds(wide.ms), u", and by the classic one ",
                      Seconds(classic.ms)));
  }
}

}  // namespace

void CheckWide(Findings& findings, std::string_view bytes, TextView path) {
  const bool beyondAscii =
      std::any_of(bytes.begin(), bytes.end(), [](char byte) { return (byte & 0x80) != 0; });
  if (beyondAscii && platform::IsUtf8(bytes)) {
    findings.Add(0, "wide", u"UTF-8 text: the wide reading decodes it");
  }
  const qlm::ChartText chart = qlm::WideReading::Decode(bytes);
  // CR alone at every line's end is converted in both readings.
  const bool otherEnds = chart.converted && bytes.find('\n') != std::string_view::npos;
  if (otherEnds || bytes.starts_with('#')) {
    findings.Add(0, "wide",
                 u"commands on the first line, or behind LF or CR alone: the wide reading reads them");
  }
  const TextView text = chart.text;
  Facts facts;
  int64_t number = 0;
  for (size_t at = 0; at < text.size(); ++number) {
    const size_t end = qlm::FindLineEnd(text, at);
    if (text[at] == u'#') facts.Take(number, text.substr(at + 1, end - at - 1));
    at = end + 2;
  }
  facts.Tell(findings);
  if (!qlm::shortageRaised && !facts.HasChance()) TellLoads(findings, path);
}

}  // namespace probe
