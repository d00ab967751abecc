// Checks of a chart as a whole.
#include "state/chart.h"
#include "state/settings.h"
#include "tools/qlmprobe/check_facts.h"

namespace probe {
namespace {

using qlm::ChartReport;
using qlm::Join;
using qlm::TextView;

void CheckField(Findings& findings, bool there, TextView name) {
  if (there) return;
  findings.Add(0, "missing-field",
               Join(u"there is no ", name, u": the one of the chart played before stays on the screen"));
}

void CheckUses(Findings& findings, const ChartReport::Uses& uses,
               const std::map<int32_t, ChartReport::Definition>& defined, TextView word, TextView effect) {
  for (size_t slot = 0; slot < uses.size(); ++slot) {
    const ChartReport::Use& use = uses[slot];
    if (use.count == 0 || defined.contains(static_cast<int32_t>(slot))) continue;
    findings.Add(
        use.line, "undefined",
        Join(u"#", word, slot < 16 ? u"0" : u"", qlm::Hex(static_cast<uint32_t>(slot)),
             u" is not defined and is used ", use.count, use.count == 1 ? u" time: " : u" times: ", effect));
  }
}

void CheckSides(Findings& findings, const ChartReport& report) {
  const auto [first, second] = report.notes;
  if (qlm::HdrPlayer == 1 && second > 0) {
    findings.Add(0, "player",
                 Join(second, u" notes of the second side in a chart for one player: they have no lanes"));
  }
  // The notes of the wide reading are counted where the chart is loaded by it.
  if (first + second == 0 && !qlm::WideCharts) TellNoNotes(findings);
}

void CheckLastMeasure(Findings& findings, const ChartReport& report) {
  if (qlm::lastMeasure <= int64_t{report.lastObject} + 1) return;
  findings.Add(0, "last-measure",
               Join(u"the last object lies in measure ", report.lastObject, u", but a line names measure ",
                    qlm::lastMeasure, u": the play goes on to its end"));
}

}  // namespace

void TellNoNotes(Findings& findings) { findings.Add(0, "no-notes", u"the chart has no notes"); }

void CheckWhole(Findings& findings, const ChartReport& report) {
  CheckField(findings, report.hasTitle, u"#TITLE");
  CheckField(findings, report.hasArtist, u"#ARTIST");
  CheckField(findings, report.hasGenre, u"#GENRE");
  CheckUses(findings, report.soundUses, report.sounds, u"WAV", u"silence");
  CheckUses(findings, report.pictureUses, report.pictures, u"BMP", u"no picture");
  CheckUses(findings, report.tempoUses, report.tempi, u"BPM", u"the tempo does not change");
  CheckSides(findings, report);
  CheckLastMeasure(findings, report);
}

}  // namespace probe
