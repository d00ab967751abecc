// The ground of chart tests: charts written line by line, and the object table as readable text.
#pragma once

#include <initializer_list>
#include <string>
#include <vector>

#include "tests/support/game_test.h"

namespace qlm {

class ChartTest : public GameTest {
 protected:
  // Sounds and pictures wait for their first use, the speed is natural.
  ChartTest();

  // The lines, with CR LF before and behind each, so that the first one is seen too.
  static Text Lines(const std::vector<Text>& lines);
  // The path of a file in the folder of the charts.
  static Text Song(TextView name);
  Text WriteChart(const std::vector<Text>& lines, TextView name = u"song\\chart.bms") const;
  // An empty table, then a read of these lines.
  void Read(const std::vector<Text>& lines) const;
  // The same for bytes.
  void ReadBytes(std::string_view bytes) const;
  // The same, and preparation.
  void Prepare(const std::vector<Text>& lines) const;

  // The records in use as "m1 t64 p256 c11 v10": measure, tick, pos, channel, value.
  static std::vector<std::string> Objs();
  // Those of one channel, in table order.
  static std::vector<std::string> ObjsOf(int32_t channel);
  // A picture of 2 by 1 pixels as a file.
  static std::string TinyBitmap();
  // How often a line stands in the log, indent not counted.
  int64_t CountLogged(TextView words) const;
};

}  // namespace qlm
