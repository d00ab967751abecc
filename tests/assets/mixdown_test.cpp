// The whole song as one sound, and parts of it.
#include "assets/maker/mixdown.h"

#include <gtest/gtest.h>

#include <algorithm>

namespace assetmaker {
namespace {

// Two bars of two seconds: piano in both, horn in the second.
constexpr const char* twoBars =
    "section first\n"
    "beats 4\n"
    "tempo 120\n"
    "part melody piano notes\n"
    "  D5/4 R/2. |\n"
    "section second\n"
    "beats 4\n"
    "tempo 120\n"
    "part melody piano notes\n"
    "  D5/4 R/2. |\n"
    "part harmony horn notes\n"
    "  R/2 A4/2 |\n";

class MixdownTest : public testing::Test {
 protected:
  void SetUp() override {
    ScoreError error;
    score = ReadScore(twoBars, error).value();
    ASSERT_TRUE(bank.Fill(score));
    sounds = bank.RenderAll();
  }

  Score score;
  SampleBank bank;
  std::vector<Sound> sounds;
};

TEST_F(MixdownTest, TakesOnlyWhatIsToBeHeard) {
  const Sound all = Mixdown(score, bank, sounds);
  Sound parts = Mixdown(score, bank, sounds, [](const Event& event) { return event.role == Role::melody; });
  EXPECT_LT(parts.left.size(), all.left.size());
  Mix(parts, Mixdown(score, bank, sounds, [](const Event& event) { return event.role == Role::harmony; }));
  ASSERT_EQ(parts.left.size(), all.left.size());
  for (std::size_t i = 0; i < all.left.size(); ++i) ASSERT_NEAR(parts.left[i], all.left[i], 1e-6) << i;
}

TEST_F(MixdownTest, CutsOutASection) {
  const Sound mix = Mixdown(score, bank, sounds);
  EXPECT_EQ(DuringSection(score, mix, "first").left.size(), 2u * sampleRate);
  const Sound second = DuringSection(score, mix, "second");
  EXPECT_EQ(second.left.size(), 2u * sampleRate);
  EXPECT_TRUE(std::equal(second.left.begin(), second.left.end(), mix.left.begin() + 2 * sampleRate));
  EXPECT_TRUE(DuringSection(score, mix, "third").left.empty());
}

}  // namespace
}  // namespace assetmaker
