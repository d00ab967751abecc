// The command `check`: what an author would want to know about a chart.
#include <array>
#include <optional>

#include "base/paths.h"
#include "chart/loading.h"
#include "chart/preparation.h"
#include "chart/reader.h"
#include "chart/wide_reading.h"
#include "platform/files.h"
#include "state/chart.h"
#include "state/settings.h"
#include "tools/qlmprobe/check_facts.h"
#include "tools/qlmprobe/commands.h"
#include "tools/qlmprobe/engine.h"

namespace probe {
namespace {

// Whether the game's tables hold the chart, as a play loads it.
void CheckTables(Findings& findings, qlm::TextView path) {
  qlm::NoBGA = qlm::NoWAV = true;
  qlm::BMSLoad(path);
  qlm::NoBGA = qlm::NoWAV = false;
  if (fatalMessage) {
    findings.Add(0, "objects",
                 qlm::Join(u"the chart needs ", qlm::objCount, u" objects, and the game has room for ",
                           qlm::numObjs + 1, u": it ends with a message"));
    fatalMessage.reset();
    return;
  }
  if (qlm::WideCharts && qlm::TotalNotes == std::array{0, 0}) TellNoNotes(findings);
  const int64_t room = qlm::KeySoundChanges.kLast + 1;
  if (qlm::keySoundCount > room) {
    findings.Add(0, "key-sounds",
                 qlm::Join(u"the lanes change their sound ", qlm::keySoundCount,
                           u" times, and only the first ", room, u" changes are kept"));
  }
}

// The report on a chart, from bytes with one line more in front. In the wide reading its text and its slots
// are those of the wide one.
qlm::ChartReport ReadForAuthor(qlm::TextView path, const std::string& bytes) {
  // The wide reading puts a line of its own in front of them.
  qlm::ChartReport report(qlm::WideCharts ? -1 : 0);
  qlm::BMSInit();
  std::optional<qlm::SlotDigitsOf> digits;
  if (qlm::WideCharts) digits.emplace(qlm::WideReading::Decode(bytes).text);
  qlm::BMSReadBytes(path, bytes, &report);
  if (!qlm::shortageRaised) qlm::BMSPrepare(&report);
  fatalMessage.reset();  // all blocks of #RANDOM together may be too many objects
  return report;
}

}  // namespace

std::vector<Finding> CheckChart(const qlm::Text& path) {
  Findings findings;
  const std::string bytes = platform::ReadFile(path).value_or(std::string());
  const qlm::ChartReport report = ReadForAuthor(path, CheckText(findings, bytes));
  TellReport(findings, report);
  CheckWhole(findings, report);
  CheckFiles(findings, report, path);
  CheckTables(findings, path);
  if (!qlm::WideCharts) CheckWide(findings, bytes, path);
  return findings.InOrder();
}

int CheckCommand(Arguments& arguments) {
  StartEngine(arguments);
  const std::vector<std::string>& files = arguments.Files();
  if (!arguments.Good()) return kWrongUsage;

  bool anything = false;
  Json json;
  json.Key("charts").BeginArray();
  for (const std::string& file : files) {
    if (!CheckReadableChart(file)) {
      anything = true;
      continue;
    }
    json.BeginObject();
    json.Put("file", std::string_view(PrintedPath(file)));
    json.Key("findings").BeginArray();
    for (const Finding& finding : CheckChart(GamePath(file))) {
      // What the wide reading makes otherwise is no fault of the chart.
      if (finding.kind != "wide") anything = true;
      json.BeginObject();
      json.Put("line", finding.line);
      json.Put("kind", finding.kind);
      json.Put("text", qlm::TextView(finding.text));
      json.EndObject();
    }
    json.EndArray();
    json.EndObject();
  }
  json.EndArray();
  return Print(json, anything ? kRefused : kDone);
}

}  // namespace probe
