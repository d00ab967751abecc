// The command `chart`: what one chart load leaves in memory.
#include "state/chart.h"
#include "base/paths.h"
#include "chart/loading.h"
#include "chart/reader.h"
#include "tools/qlmprobe/chart_keys.h"
#include "tools/qlmprobe/commands.h"
#include "tools/qlmprobe/engine.h"

namespace probe {

int ChartCommand(Arguments& arguments) {
  StartEngine(arguments);
  TakeLoadOptions(arguments);
  const bool raw = arguments.Flag("--raw");
  const std::vector<std::string> before = TakeChartsBefore(arguments);
  const std::vector<std::string>& files = arguments.Files();
  if (!arguments.Good()) return kWrongUsage;
  if (!CheckReadableChart(files[0]) || !LoadChartsBefore(before)) return kRefused;

  const qlm::Text path = GamePath(files[0]);
  if (raw) {
    qlm::BMSInit();
    qlm::BMSRead(path);
  } else {
    qlm::BMSLoad(path);
  }
  Json json;
  PutChart(json, raw, {qlm::WavFile, qlm::BmpFile, qlm::GetFolder(path)});
  PutLog(json);
  const int status = PutFatal(json);
  return Print(json, status);
}

}  // namespace probe
