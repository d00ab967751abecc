// A disk that is full or fails: the old file stays. This program has its own fsync, since no test can break a
// disk.
#include <csignal>
#include <string>

#include <gtest/gtest.h>
#include <sys/resource.h>
#include <unistd.h>

#include "base/paths.h"
#include "platform/files.h"
#include "tests/support/game_test.h"

namespace {

bool diskFails = false;
int filesSynced = 0;

}  // namespace

extern "C" int fsync(int) {
  ++filesSynced;
  return diskFails ? -1 : 0;
}

namespace qlm {
namespace {

// No file of this program grows beyond that.
class SmallDisk {
 public:
  explicit SmallDisk(rlim_t bytes) : handler_(std::signal(SIGXFSZ, SIG_IGN)) {
    getrlimit(RLIMIT_FSIZE, &before_);
    const rlimit limit = {bytes, before_.rlim_max};
    setrlimit(RLIMIT_FSIZE, &limit);
  }
  ~SmallDisk() {
    setrlimit(RLIMIT_FSIZE, &before_);
    std::signal(SIGXFSZ, handler_);
  }
  SmallDisk(const SmallDisk&) = delete;
  SmallDisk& operator=(const SmallDisk&) = delete;

 private:
  rlimit before_ = {};
  void (*handler_)(int);
};

class WriteFailureTest : public GameTest {
 protected:
  WriteFailureTest() {
    diskFails = false;
    path_ = WriteData(u"w\\f", "old");
    filesSynced = 0;
  }
  void ExpectOldFileAlone() const {
    EXPECT_EQ(platform::ReadFile(path_), "old");
    EXPECT_EQ(platform::ListFolder(Join(AppPath, u"\\w")).size(), 1U);
  }

  Text path_;
};

TEST_F(WriteFailureTest, TheBytesAreOnTheDiskBeforeTheOldFileGoes) {
  EXPECT_TRUE(platform::WriteFile(path_, "new"));
  EXPECT_EQ(filesSynced, 1);
  EXPECT_EQ(platform::ReadFile(path_), "new");
}

TEST_F(WriteFailureTest, ADiskThatFailsToTakeTheBytesLeavesTheOldFile) {
  diskFails = true;
  EXPECT_FALSE(platform::WriteFile(path_, "new"));
  ExpectOldFileAlone();
}

TEST_F(WriteFailureTest, AFullDiskLeavesTheOldFile) {
  const SmallDisk disk(1000);
  EXPECT_FALSE(platform::WriteFile(path_, std::string(5000, 'n')));
  EXPECT_FALSE(platform::WriteFile(path_, std::string(1 << 20, 'n')));
  ExpectOldFileAlone();
  EXPECT_TRUE(platform::WriteFile(path_, "new"));
}

}  // namespace
}  // namespace qlm
