// Tests of the gauge samples.
#include "play/gauge_history.h"

#include "state/gauge.h"
#include "state/network.h"
#include "state/surfaces.h"
#include "state/timeline.h"
#include "tests/play/play_test.h"

namespace qlm {
namespace {

class GaugeHistoryTest : public PlayTest {
 protected:
  GaugeHistoryTest() {
    Lay(ObjSeparator, 1'000'000);
    HistoryStep = 10;
    Begin();
  }
};

TEST_F(GaugeHistoryTest, SlotIsFilledWhenItIsDue) {
  Gauge = {22, 50};
  Turn(0);
  EXPECT_FLOAT_EQ(HistoryNext[0], 1);
  EXPECT_EQ(GaugeHistory[0][0], 22);
  Gauge[0] = 30;
  Turn(9);
  EXPECT_FLOAT_EQ(HistoryNext[0], 1);
  Turn(10);
  EXPECT_FLOAT_EQ(HistoryNext[0], 2);
  EXPECT_EQ(GaugeHistory[0][0], 22);
  EXPECT_EQ(GaugeHistory[0][1], 30);
}

TEST_F(GaugeHistoryTest, OnlySideZeroIsSampled) {
  Gauge = {22, 50};
  Turn(100);
  EXPECT_EQ(GaugeHistory[0][10], 22);
  EXPECT_EQ(GaugeHistory[1][10], 0);
  EXPECT_FLOAT_EQ(HistoryNext[1], 0);
}

TEST_F(GaugeHistoryTest, MissedSlotsAreFilledTogether) {
  Gauge[0] = 22;
  Turn(0);
  Gauge[0] = 60;
  Turn(55);
  for (int32_t slot = 1; slot <= 5; ++slot) EXPECT_EQ(GaugeHistory[0][slot], 60) << slot;
  EXPECT_EQ(GaugeHistory[0][6], 0);
  EXPECT_FLOAT_EQ(HistoryNext[0], 6);
}

TEST_F(GaugeHistoryTest, SampleRoundsHalfToEven) {
  Gauge[0] = 22.5F;
  Turn(0);
  Gauge[0] = 23.5F;
  Turn(10);
  EXPECT_EQ(GaugeHistory[0][0], 22);
  EXPECT_EQ(GaugeHistory[0][1], 24);
}

TEST_F(GaugeHistoryTest, StepRoundsHalfToEven) {
  HistoryStep = 10.5F;
  Turn(10);
  EXPECT_FLOAT_EQ(HistoryNext[0], 2);  // 10 \ 10 is 1
  HistoryStep = 11.5F;
  Turn(24);
  EXPECT_FLOAT_EQ(HistoryNext[0], 3);  // 24 \ 12 is 2
}

TEST_F(GaugeHistoryTest, StepThatRoundsToZeroHasNoEffect) {
  HistoryStep = 0.5F;  // a chart of 150 ms
  Turn(100);
  EXPECT_FLOAT_EQ(HistoryNext[0], 0);
  EXPECT_EQ(GaugeHistory[0][0], 0);
  EXPECT_FALSE(HistorySlot().has_value());
}

TEST_F(GaugeHistoryTest, SlotsPastTheTableAreSkipped) {
  Gauge[0] = 40;
  Turn(2985);
  EXPECT_FLOAT_EQ(HistoryNext[0], 299);
  Turn(5000);
  EXPECT_EQ(GaugeHistory[0][299], 40);
  EXPECT_FLOAT_EQ(HistoryNext[0], 501);
}

TEST_F(GaugeHistoryTest, TheOwnRecordTakesEverySample) {
  const NetUser& own = network.NetUsers[0];
  Gauge[0] = 40.4F;
  JPts[0] = 17.5F;
  Score[0] = 1000.25;
  Turn(20);
  EXPECT_EQ(own.slot, 2);
  EXPECT_FLOAT_EQ(own.gauge, 40);
  EXPECT_FLOAT_EQ(own.jpts, 17.5F);
  EXPECT_FLOAT_EQ(own.score, 1000.25F);
  EXPECT_EQ(own.history[2], 40);
  EXPECT_EQ(own.history[3], 0);
}

TEST_F(GaugeHistoryTest, TheOwnRecordIsKeptPastTheEndOfTheTables) {
  const NetUser& own = network.NetUsers[0];
  Gauge[0] = 40;
  Turn(2999);
  EXPECT_EQ(own.history[99], 40);
  Gauge[0] = 60;
  JPts[0] = 36;
  Score[0] = 2000;
  Turn(5000);
  EXPECT_EQ(own.slot, 500);
  EXPECT_FLOAT_EQ(own.gauge, 60);
  EXPECT_FLOAT_EQ(own.jpts, 36);
  EXPECT_FLOAT_EQ(own.score, 2000);
  EXPECT_EQ(own.history[99], 40);
  EXPECT_EQ(GaugeHistory[0][299], 40);
}

TEST_F(GaugeHistoryTest, TheOwnRecordIsThatOfTheOwnPlace) {
  network.NetMyIndex = 3;
  Gauge[0] = 40;
  Turn(0);
  EXPECT_FLOAT_EQ(network.NetUsers[0].gauge, 0);
  EXPECT_FLOAT_EQ(network.NetUsers[3].gauge, 40);
  network.NetMyIndex = 5;
  Turn(10);
  EXPECT_EQ(network.NetUsers[3].slot, 0);
}

TEST_F(GaugeHistoryTest, GaugeThatIsNoByteIsSkipped) {
  Gauge[0] = -1;
  Turn(0);
  EXPECT_FLOAT_EQ(HistoryNext[0], 1);
  EXPECT_EQ(GaugeHistory[0][0], 0);
}

TEST_F(GaugeHistoryTest, SharedCounterStandsAtTheNextSlot) {
  Turn(35);
  EXPECT_EQ(loopCounter, 4);
  Turn(36);
  EXPECT_EQ(loopCounter, 4);
}

TEST_F(GaugeHistoryTest, SamplesAreDrawnOnTheGraph) {
  Gauge[0] = 80;
  Turn(20);                              // slots 0, 1 and 2
  EXPECT_EQ(DDGraph->Pixel(0, 40), 0U);  // slot 0 draws nothing
  EXPECT_EQ(DDGraph->Pixel(1, 40), platform::Rgb(0, 255, 0));
  EXPECT_EQ(DDGraph->Pixel(4, 40), platform::Rgb(0, 255, 0));
  EXPECT_EQ(DDGraph->Pixel(5, 40), 0U);
  Gauge[0] = 81;
  Turn(30);
  EXPECT_EQ(DDGraph->Pixel(3, 38), platform::Rgb(255, 0, 0));
}

}  // namespace
}  // namespace qlm
