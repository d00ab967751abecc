// The ground of chart tests.
#include "tests/chart/chart_test.h"

#include <algorithm>

#include "base/paths.h"
#include "chart/preparation.h"
#include "chart/reader.h"
#include "state/chart.h"
#include "state/options.h"
#include "state/settings.h"
#include "tools/media_files/bmp.h"

namespace qlm {

ChartTest::ChartTest() {
  WAVLoadmode = 1;
  BMPLoadmode = 1;
  RealHiSpeed = 1;
}

Text ChartTest::Lines(const std::vector<Text>& lines) {
  Text text(kCrLf);
  for (const Text& line : lines) text += line + Text(kCrLf);
  return text;
}

Text ChartTest::Song(TextView name) { return Join(AppPath, u"\\song\\", name); }

Text ChartTest::WriteChart(const std::vector<Text>& lines, TextView name) const {
  return WriteText(name, Lines(lines));
}

void ChartTest::Read(const std::vector<Text>& lines) const {
  BMSInit();
  BMSRead(WriteChart(lines));
}

void ChartTest::ReadBytes(std::string_view bytes) const {
  BMSInit();
  BMSRead(WriteData(u"song\\chart.bms", bytes));
}

void ChartTest::Prepare(const std::vector<Text>& lines) const {
  Read(lines);
  BMSPrepare();
}

std::vector<std::string> ChartTest::Objs() {
  std::vector<std::string> shown;
  for (int32_t i = 0; i < objCount; ++i) {
    const ChartObj* obj = FindObj(i);
    shown.push_back(obj == nullptr ? "none"
                                   : Utf8(Join(u"m", obj->measure, u" t", obj->tick, u" p", obj->pos, u" c",
                                               obj->channel, u" v", obj->value)));
  }
  return shown;
}

std::vector<std::string> ChartTest::ObjsOf(int32_t channel) {
  std::vector<std::string> all = Objs();
  const std::string mark = " c" + std::to_string(channel) + " ";
  std::erase_if(all, [&](const std::string& obj) { return obj.find(mark) == std::string::npos; });
  return all;
}

std::string ChartTest::TinyBitmap() { return media::BmpOf({{0xFFFFFF, 0}}); }

int64_t ChartTest::CountLogged(TextView words) const {
  return std::count_if(log.begin(), log.end(), [&](const Text& line) { return Trim(line) == words; });
}

}  // namespace qlm
