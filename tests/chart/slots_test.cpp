// How many slots a chart has.
#include "state/slots.h"

#include "state/chart.h"
#include "state/session.h"
#include "state/settings.h"
#include "state/sounds.h"
#include "state/surfaces.h"
#include "tests/chart/chart_test.h"

namespace qlm {
namespace {

class SlotsTest : public ChartTest {};

TEST_F(SlotsTest, ClassicTablesHave256) {
  Read({});
  EXPECT_EQ(LastSlot, 255);
  EXPECT_EQ(WavFile.Last(), 255);
  EXPECT_EQ(BpmTable.Last(), 255);
  EXPECT_EQ(CourseWavFile[127].Last(), 255);
  WavFile.Put(256, Text(u"dropped"));
  EXPECT_EQ(WavFile.Find(256), nullptr);
  EXPECT_EQ(SlotName(0x1A), u"1A");
  EXPECT_EQ(SlotName(256), u"??");
  EXPECT_EQ(MessageSlot(0xA), u"A");
}

TEST_F(SlotsTest, WideTablesHave1296AndShrinkAgain) {
  WavHeldName[7] = Text(u"held");
  WideCharts = true;
  Read({});
  EXPECT_EQ(WavFile.Last(), 1295);
  EXPECT_EQ(WavBuffer.Last(), 1295);
  EXPECT_EQ(EchoBuffer[4].Last(), 1295);
  EXPECT_EQ(VoiceList.Last(), 1295);
  EXPECT_EQ(BmpSurface.Last(), 1295);
  EXPECT_EQ(StopTable.Last(), 1295);
  EXPECT_EQ(WavHeldName[7], u"");  // it may find another file under the name
  WavHeldName[7] = Text(u"held");
  Read({});
  EXPECT_EQ(WavHeldName[7], u"held");
  EXPECT_EQ(CourseWavFile[127].Last(), 255);  // no course is read
  EXPECT_EQ(SlotName(1295), u"ZZ");
  EXPECT_EQ(SlotName(36), u"10");
  EXPECT_EQ(MessageSlot(10), u"0A");
  WavHeldName[1295] = Text(u"gone");
  WideCharts = false;
  Read({});
  EXPECT_EQ(WavFile.Last(), 255);
  EXPECT_EQ(WavHeldName[7], u"");
}

TEST_F(SlotsTest, SongsOfAWideCourseHaveAsMany) {
  WideCharts = true;
  CourseMode = true;
  Read({});
  EXPECT_EQ(CourseWavFile[0].Last(), 1295);
  EXPECT_EQ(CourseBmpLoaded[127].Last(), 1295);
  WideCharts = false;
  Read({});
  EXPECT_EQ(CourseBmpLoaded[127].Last(), 255);
}

}  // namespace
}  // namespace qlm
