// A file that cannot be written is told once.
#include "shell/unwritten.h"

#include "base/paths.h"
#include "state/message.h"
#include "tests/support/game_test.h"

namespace qlm {
namespace {

class UnwrittenTest : public GameTest {};

TEST_F(UnwrittenTest, OnceOnTheScreenAndOnTheTerminal) {
  testing::internal::CaptureStderr();
  ReportUnwritten(DataPath(u"once.txt"));
  EXPECT_EQ(testing::internal::GetCapturedStderr(),
            "quillmarch: " + SystemFolder() +
                "/_qlmfiles/once.txt cannot be written; is the disk full, or the folder read-only?\n");
  EXPECT_TRUE(message.up);
  EXPECT_EQ(message.text, u"once.txt cannot be written");

  ResetMessage();
  testing::internal::CaptureStderr();
  ReportUnwritten(DataPath(u"once.txt"));
  EXPECT_EQ(testing::internal::GetCapturedStderr(), "");
  EXPECT_FALSE(message.up);

  ReportUnwritten(DataPath(u"other.txt"));
  EXPECT_EQ(message.text, u"other.txt cannot be written");
}

}  // namespace
}  // namespace qlm
