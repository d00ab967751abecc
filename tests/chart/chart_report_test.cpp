// What a read for the chart's author reports: faults by line, definitions, uses, and notes that share a
// place.
#include "chart/chart_report.h"

#include "base/rnd.h"
#include "chart/preparation.h"
#include "chart/reader.h"
#include "state/chart.h"
#include "state/settings.h"
#include "state/sounds.h"
#include "state/surfaces.h"
#include "tests/chart/chart_test.h"

namespace qlm {
namespace {

using Fault = ChartFault;

class ChartReportTest : public ChartTest {
 protected:
  // The lines begin at line 2.
  static ChartReport Report(const std::vector<Text>& lines) {
    ChartReport report;
    BMSInit();
    std::string bytes = "\r\n";
    for (const Text& line : lines) bytes += std::string(line.begin(), line.end()) + "\r\n";
    BMSReadBytes(u"\\none\\chart.bms", bytes, &report);
    BMSPrepare(&report);
    return report;
  }
  // "line fault text value other", the fault by its number.
  static std::vector<std::string> Faults(const ChartReport& report) {
    std::vector<std::string> faults;
    for (const ChartFinding& found : report.findings) {
      faults.push_back(std::to_string(found.line) + " " + Name(found.fault) + " " +
                       std::string(found.text.begin(), found.text.end()) + " " + std::to_string(found.value) +
                       " " + std::to_string(found.other));
    }
    return faults;
  }
  static std::string Name(Fault fault) { return std::to_string(static_cast<int>(fault)); }
};
using Strings = std::vector<std::string>;

TEST_F(ChartReportTest, GoodChartHasNoFaults) {
  const ChartReport report = Report({u"#TITLE t", u"#WAV01 a.wav", u"#00111:0100"});
  EXPECT_EQ(Faults(report), Strings());
  EXPECT_TRUE(report.hasTitle);
  EXPECT_FALSE(report.hasArtist);
  EXPECT_EQ(report.sounds.at(1).line, 3);
  EXPECT_EQ(report.sounds.at(1).name, u"a.wav");
  EXPECT_EQ(report.soundUses[1].line, 4);
  EXPECT_EQ(report.soundUses[1].count, 1);
  EXPECT_EQ(report.notes, (std::array<int64_t, 2>{1, 0}));
  EXPECT_EQ(report.lastObject, 1);
}

TEST_F(ChartReportTest, LinesAreCountedAsInAnEditor) {
  ChartReport report;
  BMSReadBytes(u"\\none\\chart.bms", "one\ntwo\rthree\r\n#QUX\r\n\r\n\n\n\r\n#QUX\r\n", &report);
  EXPECT_EQ(Faults(report),
            (Strings{"4 " + Name(Fault::kCommand) + " QUX 0 0", "9 " + Name(Fault::kCommand) + " QUX 0 0"}));
}

TEST_F(ChartReportTest, ColumnsAreThoseThatTheReaderTakes) {
  EXPECT_EQ(Faults(Report({u"#00311:01", u"#9E911:01", u"#0011A:01", u"#00111-01", u"#00117:01"})),
            (Strings{"3 " + Name(Fault::kMeasureDigits) + " 9E9 3 0",
                     "4 " + Name(Fault::kChannelDigits) + " 1A 1 0", "5 " + Name(Fault::kColon) + "  0 0",
                     "6 " + Name(Fault::kNoObjects) + " 17 17 0", "3 " + Name(Fault::kDuplicate) + "  3 2"}));
}

TEST_F(ChartReportTest, EveryBlockIsReadAndNothingIsDrawn) {
  SetRndList({0});
  const ChartReport report = Report({u"#RANDOM 2", u"#IF 1", u"#00111:0G", u"#ENDIF", u"#IF 2", u"#00112:0G",
                                     u"#RANDOM 1", u"#ENDIF", u"#00113:0G"});
  EXPECT_EQ(Faults(report),
            (Strings{"4 " + Name(Fault::kCell) + " 0G 0 0", "7 " + Name(Fault::kCell) + " 0G 0 0",
                     "8 " + Name(Fault::kRandomInside) + "  0 0", "10 " + Name(Fault::kCell) + " 0G 0 0",
                     "8 " + Name(Fault::kFewBlocks) + "  1 0"}));
  EXPECT_EQ(report.notes[0], 3);
  for (const Text& line : log) EXPECT_EQ(line.find(u"RANDOM"), Text::npos);
  SetRndList({});
}

TEST_F(ChartReportTest, NotesOfBlocksShareNoPlace) {
  EXPECT_EQ(Faults(Report({u"#00111:01", u"#RANDOM 1", u"#IF 1", u"#00111:01", u"#ENDIF", u"#00111:02"})),
            (Strings{"7 " + Name(Fault::kDuplicate) + "  1 2"}));
}

// Three notes at one place, in an order that the sort does not keep; equal places of other lanes are none.
TEST_F(ChartReportTest, EachNoteBehindTheFirstIsADuplicateOfIt) {
  const ChartReport report =
      Report({u"#00111:0001", u"#00112:0001", u"#00111:00000001", u"#00111:01010101", u"#00111:0001"});
  EXPECT_EQ(Faults(report),
            (Strings{"5 " + Name(Fault::kDuplicate) + "  1 2", "6 " + Name(Fault::kDuplicate) + "  1 2",
                     "5 " + Name(Fault::kDuplicate) + "  1 4"}));
  EXPECT_EQ(report.findings[0].tick, 96);
  EXPECT_EQ(report.findings[0].channel, 11);
  EXPECT_EQ(report.findings[2].tick, 144);
}

TEST_F(ChartReportTest, FilesAreNamedAndNotLoaded) {
  WAVLoadmode = BMPLoadmode = 0;
  const ChartReport report = Report({u"#WAV0A a.wav", u"#BMP01 a.png", u"#STAGEFILE s.bmp", u"#BPM02 90"});
  EXPECT_EQ(report.sounds.at(10).name, u"a.wav");
  EXPECT_EQ(report.pictures.at(1).name, u"a.png");
  EXPECT_EQ(report.tempi.at(2).line, 5);
  EXPECT_EQ(report.stage->line, 4);
  EXPECT_EQ(report.stage->name, u"s.bmp");
  EXPECT_EQ(WavHeldName[10], u"");
  EXPECT_EQ(BmpHeldName[1], u"");
}

TEST_F(ChartReportTest, FaultsPastTenThousandOfAKindAreCounted) {
  std::vector<Text> lines(10'002, u"#QUX");
  lines.emplace_back(u"#RANK x");
  const ChartReport report = Report(lines);
  EXPECT_EQ(report.findings.size(), 10'001U);
  EXPECT_EQ(report.findings.back().fault, Fault::kNumber);
  EXPECT_EQ(report.dropped[static_cast<size_t>(Fault::kCommand)], 2);
}

TEST_F(ChartReportTest, LongPiecesAreShortened) {
  const ChartReport report = Report({Text(u"#Q") + Text(200, u'q'), Text(u"#WAV01 ") + Text(2000, u'w')});
  EXPECT_EQ(report.findings[0].text, Text(u"Q") + Text(99, u'q') + u"…");
  EXPECT_EQ(report.sounds.at(1).name.size(), 1025U);
}

// The same chart, read for a play and for its author.
TEST_F(ChartReportTest, ObjectsAreThoseOfAPlay) {
  const std::vector<Text> lines = {u"#00002:0.75", u"#00011:0102030405", u"#00111:01",      u"#00111:02",
                                   u"#00103:F0",   u"#00122:0001",       u"#00012:01010101"};
  Prepare(lines);
  const Strings objects = Objs();
  Report(lines);
  EXPECT_EQ(Objs(), objects);
}

}  // namespace
}  // namespace qlm
