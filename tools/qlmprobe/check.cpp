// The command `check`: what an author would want to know about a chart.
#include <algorithm>

#include "base/paths.h"
#include "chart/loading.h"
#include "platform/files.h"
#include "state/chart.h"
#include "state/settings.h"
#include "tools/qlmprobe/check_facts.h"
#include "tools/qlmprobe/commands.h"
#include "tools/qlmprobe/engine.h"

namespace probe {
namespace {

// What only the engine itself can tell: whether its tables hold the chart.
void CheckTables(ChartFacts& facts, qlm::TextView path) {
  qlm::NoBGA = qlm::NoWAV = true;
  qlm::BMSLoad(path);
  qlm::NoBGA = qlm::NoWAV = false;
  if (fatalMessage) {
    facts.Find(0, "objects",
               qlm::Join(u"the chart needs ", qlm::objCount, u" objects, and the game has room for ",
                         qlm::numObjs + 1, u": it ends with a message"));
    fatalMessage.reset();
    return;
  }
  const int64_t room = qlm::KeySoundChanges.kLast + 1;
  if (qlm::keySoundCount > room) {
    facts.Find(0, "key-sounds",
               qlm::Join(u"the lanes change their sound ", qlm::keySoundCount, u" times, and only the first ",
                         room, u" changes are kept"));
  }
}

std::vector<Finding> CheckChart(const std::string& file) {
  ChartFacts facts;
  const qlm::Text path = GamePath(file);
  CheckText(facts, platform::ReadFile(path).value_or(std::string()));
  CheckHeader(facts);
  CheckData(facts);
  CheckFiles(facts, path);
  CheckTables(facts, path);
  std::stable_sort(facts.findings.begin(), facts.findings.end(),
                   [](const Finding& a, const Finding& b) { return a.line < b.line; });
  return facts.findings;
}

}  // namespace

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
    for (const Finding& finding : CheckChart(file)) {
      anything = true;
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
