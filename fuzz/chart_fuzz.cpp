// Reads and prepares any bytes as a chart, in both readings.
#include <cstddef>
#include <cstdint>
#include <string_view>

#include "base/log.h"
#include "chart/chart_report.h"
#include "chart/preparation.h"
#include "chart/reader.h"
#include "platform/clock.h"
#include "state/chart.h"
#include "state/options.h"
#include "state/session.h"
#include "state/settings.h"
#include "state/wide_chart.h"

namespace qlm {
namespace {

void Check(bool holds) {
  if (!holds) __builtin_trap();
}

void ReadAndCheck(TextView path, std::string_view bytes) {
  BMSInit();
  BMSReadBytes(path, bytes);
  BMSPrepare();

  Check(objs.size() == static_cast<size_t>(numObjs) + 1);
  Check(objCount >= 2 && keySoundCount >= 0);
  Check(WideCharts || (LongNotes.empty() && Stops.empty()));
  for (int32_t i = 0; i < objCount && i <= numObjs; ++i) {
    const ChartObj& obj = objs[static_cast<size_t>(i)];
    Check(obj.channel >= (WideCharts ? ObjLongNoteEnd : ObjSongChange) && obj.channel != 0);
    Check(obj.channel <= 49 || (WideCharts && IsMine(obj.channel)));
    Check(obj.tick >= 0 && obj.tick <= kMeasureUnits);
  }
  for (const LongNote& note : LongNotes) Check(note.head >= 0 && note.head < objCount);
  for (size_t i = 1; i < Stops.size(); ++i)
    Check(Stops[i].before == Stops[i - 1].before + Stops[i - 1].units);
}

void Run(std::string_view bytes) {
  // Nothing lies in this folder, so that no name in a chart reaches a file.
  constexpr TextView kPath = u"\\no such folder\\chart.bms";
  platform::UseVirtualClock(1'000'000);
  LogIndent = 0;
  logOutput.file = false;
  numObjs = 300;
  WAVLoadmode = BMPLoadmode = 1;
  RealHiSpeed = 1;

  const auto options = bytes.empty() ? uint8_t{0} : static_cast<uint8_t>(bytes.back());
  PlayerForce = options & 3;
  Random = (options & 4) != 0;
  FourDMode = (options & 8) != 0;
  CourseMode = (options & 16) != 0;
  NoBGA = (options & 32) != 0;
  PreviewActive = (options & 64) != 0;
  ScatterNotes = (options & 128) != 0;
  BasePos = CourseMode ? 2040 : 0;

  // For its author first: what that leaves in memory must not matter.
  ChartReport report;
  BMSInit();
  BMSReadBytes(kPath, bytes, &report);
  BMSPrepare(&report);
  for (const ChartFinding& found : report.findings) Check(found.line >= 1);

  ReadAndCheck(kPath, bytes);
  // Wide courses, whose tables take long to make, are the affair of course_fuzz.
  if (CourseMode) return;
  WideCharts = true;
  ReadAndCheck(kPath, bytes);
  WideCharts = false;
}

}  // namespace
}  // namespace qlm

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size) {
  qlm::Run({reinterpret_cast<const char*>(data), size});
  return 0;
}
