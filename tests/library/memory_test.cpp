// Charts and lists that memory does not suffice for: a program of its own, whose operator new can be made to
// fail.
#include <cstdint>

#include "base/paths.h"
#include "files/list_file.h"
#include "library/header.h"
#include "library/jukebox.h"
#include "state/lists.h"
#include "tests/support/allocations.h"
#include "tests/support/game_test.h"

namespace qlm {
namespace {

constexpr size_t kPlenty = SIZE_MAX;

class LibraryMemoryTest : public GameTest {
 protected:
  ~LibraryMemoryTest() override { FailAllocationsAbove(kPlenty); }
};

TEST_F(LibraryMemoryTest, ChartThatMemoryDoesNotSufficeForLeavesTheDefaults) {
  const Text path = WriteData(u"a.bms", "\r\n#TITLE x\r\n" + std::string(3'000'000, '*'));
  songList.resize(1);
  // Too little for its bytes, then too little for its text.
  for (const size_t most : {size_t{1} << 20, size_t{5} << 20}) {
    songList[0] = {};
    log.clear();
    FailAllocationsAbove(most);
    ReadBMSHeader(path, 0);
    FailAllocationsAbove(kPlenty);
    EXPECT_EQ(songList[0].title, u"") << most;
    EXPECT_EQ(songList[0].playLevel, 3) << most;
    EXPECT_EQ(log.size(), 1U) << most;
  }
  ReadBMSHeader(path, 0);
  EXPECT_EQ(songList[0].title, u"x");
}

TEST_F(LibraryMemoryTest, ListThatMemoryDoesNotSufficeForIsEmpty) {
  const Text path = WriteData(u"a.qbl", ListFileBytes(std::vector(10'000, SongEntry{})));
  FailAllocationsAbove(size_t{1} << 20);
  LoadJukeList(path, true);
  FailAllocationsAbove(kPlenty);
  EXPECT_EQ(lastSong, -1);
  EXPECT_EQ(listFileName, path);
  LoadJukeList(path, true);
  EXPECT_EQ(lastSong, 9'999);
}

}  // namespace
}  // namespace qlm
