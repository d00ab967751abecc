// What the probe takes for charts that no person writes: time of the processor and memory of its process.
#include "tests/tools/probe.h"

namespace qlm {
namespace {

class LimitsTest : public ProbeTest {
 protected:
  void SetUp() override {
    if (kSanitized) GTEST_SKIP() << "the sanitizers take their own time and memory";
  }

#if defined(__SANITIZE_ADDRESS__)
  static constexpr bool kSanitized = true;
#elif defined(__has_feature)
  static constexpr bool kSanitized = __has_feature(address_sanitizer);
#else
  static constexpr bool kSanitized = false;
#endif
};

TEST_F(LimitsTest, CheckOfOneLineOf64MegabytesIsCheap) {
  constexpr size_t kLength = size_t{64} << 20;
  for (const std::string cell : {"01", "ZZ"}) {
    std::string chart = "\r\n#00111:";
    while (chart.size() < kLength) chart += cell;
    WriteData(u"long.bms", chart);
    const ProcessResult result = Probe({"check", At("long.bms")});
    EXPECT_EQ(result.exitStatus, 1);
    EXPECT_TRUE(Holds(result.output, "\"kind\": \"objects\""));
    EXPECT_LT(result.processorSeconds, 10);
    EXPECT_LT(result.mostMemory, int64_t{1} << 30);
  }
}

// 300,000 seconds, which are 18 million turns.
TEST_F(LimitsTest, PlayOfAMeasureOf150000IsShort) {
  const ProcessResult result = Probe({"play", Chart("long.bms", {"#BPM 120", "#00002:150000", "#00111:01"})});
  EXPECT_EQ(result.exitStatus, 0);
  EXPECT_TRUE(Holds(result.output, "\"playCleared\": true"));
  EXPECT_LT(result.processorSeconds, 5);
}

}  // namespace
}  // namespace qlm
