// late_blocks.txt.
#include "files/late_blocks.h"

#include "base/paths.h"
#include "files/data_folder.h"
#include "state/last_play.h"
#include "tests/support/game_test.h"

namespace qlm {
namespace {

class LateBlocksTest : public GameTest {
 protected:
  static constexpr TextView kName = u"_qlmfiles\\late_blocks.txt";

  static Text Path() { return DataPath(u"late_blocks.txt"); }
};

TEST_F(LateBlocksTest, ThoseOfTheLastPlayAreKept) {
  lateBlocks = 12;
  SaveLateBlocks();
  EXPECT_EQ(ReadBytes(Path()), "12");
  EXPECT_EQ(SavedLateBlocks(), 12);
}

TEST_F(LateBlocksTest, APlayWithoutGapsLeavesNoFile) {
  lateBlocks = 0;
  SaveLateBlocks();
  EXPECT_FALSE(FileExists(Path()));
  WriteData(kName, "12");
  SaveLateBlocks();
  EXPECT_FALSE(FileExists(Path()));
  EXPECT_EQ(SavedLateBlocks(), 0);
}

TEST_F(LateBlocksTest, ARunWithoutAPlayLeavesTheFileAsItIs) {
  WriteData(kName, "12");
  SaveLateBlocks();
  EXPECT_EQ(ReadBytes(Path()), "12");
}

TEST_F(LateBlocksTest, ASecondProgramLeavesTheFileAsItIs) {
  WriteData(kName, "12");
  keepsDataFolder = false;
  for (const int32_t late : {0, 3}) {
    lateBlocks = late;
    SaveLateBlocks();
    EXPECT_EQ(ReadBytes(Path()), "12");
  }
  keepsDataFolder = true;
}

TEST_F(LateBlocksTest, AnythingElseInTheFileIsNothing) {
  for (const char* const bytes : {"", "x", "-3", "99999999999", "\xFF\xFE", "12 blocks"}) {
    WriteData(kName, bytes);
    EXPECT_EQ(SavedLateBlocks(), 0) << bytes;
  }
}

}  // namespace
}  // namespace qlm
