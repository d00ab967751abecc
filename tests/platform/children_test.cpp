// Work in child processes: the order, what they say, and how they die.
#include "platform/children.h"

#include <gtest/gtest.h>
#include <unistd.h>

#include <csignal>
#include <cstdlib>
#include <vector>

namespace platform {
namespace {

std::vector<ChildAnswer> AnswersOf(size_t count, size_t atOnce, const ChildWork& work,
                                   uint32_t seconds = 60) {
  std::vector<ChildAnswer> answers;
  RunInChildren(count, atOnce, seconds, work, [&](size_t index, const ChildAnswer& answer) {
    EXPECT_EQ(index, answers.size());
    answers.push_back(answer);
  });
  EXPECT_EQ(answers.size(), count);
  return answers;
}

TEST(Children, TellInTheOrderOfTheirIndices) {
  // The earlier ones end last.
  const auto answers = AnswersOf(6, 3, [](size_t index, std::string& bytes) {
    usleep(static_cast<useconds_t>((6 - index) * 5000));
    bytes = "child " + std::to_string(index);
    return static_cast<int>(index);
  });
  for (size_t i = 0; i < answers.size(); ++i) {
    EXPECT_TRUE(answers[i].ended);
    EXPECT_EQ(answers[i].status, static_cast<int>(i));
    EXPECT_EQ(answers[i].bytes, "child " + std::to_string(i));
  }
}

TEST(Children, SayAsMuchAsTheyLike) {
  const auto answers = AnswersOf(4, 2, [](size_t index, std::string& bytes) {
    bytes.assign(1'000'000, static_cast<char>('a' + index));
    return 0;
  });
  for (size_t i = 0; i < answers.size(); ++i) {
    EXPECT_EQ(answers[i].bytes, std::string(1'000'000, static_cast<char>('a' + i)));
  }
}

TEST(Children, OneThatDiesHarmsNoOther) {
  const auto answers = AnswersOf(5, 2, [](size_t index, std::string& bytes) {
    bytes = "fine";
    if (index == 1) std::abort();
    if (index == 3) raise(SIGKILL);
    return 0;
  });
  EXPECT_FALSE(answers[1].ended);
  EXPECT_EQ(answers[1].signal, SIGABRT);
  EXPECT_FALSE(answers[3].ended);
  EXPECT_EQ(answers[3].signal, SIGKILL);
  for (const size_t i : {0U, 2U, 4U}) {
    EXPECT_TRUE(answers[i].ended);
    EXPECT_EQ(answers[i].bytes, "fine");
  }
}

TEST(Children, OneThatNeverEndsIsKilled) {
  const auto answers = AnswersOf(
      2, 2,
      [](size_t index, std::string& /*bytes*/) {
        volatile bool forever = index == 0;
        while (forever) {
        }
        return 0;
      },
      1);
  EXPECT_FALSE(answers[0].ended);
  EXPECT_EQ(answers[0].signal, SIGXCPU);
  EXPECT_TRUE(answers[1].ended);
}

TEST(Children, LeaveTheParentAsItWas) {
  int here = 1;
  AnswersOf(1, 1, [&](size_t, std::string&) { return here = 2; });
  EXPECT_EQ(here, 1);
  EXPECT_TRUE(AnswersOf(0, 2, [](size_t, std::string&) { return 0; }).empty());
}

}  // namespace
}  // namespace platform
