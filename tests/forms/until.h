// Waits for what the toolkit's loop brings about.
#pragma once

#include <gtest/gtest.h>

#include <QTest>

namespace qlm {

// Runs the loop until the condition holds, half a minute at most: a busy machine takes its time.
template <typename Condition>
testing::AssertionResult Until(Condition condition) {
  if (QTest::qWaitFor(condition, 30'000)) return testing::AssertionSuccess();
  return testing::AssertionFailure() << "it never came to that";
}

}  // namespace qlm
