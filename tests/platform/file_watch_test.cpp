// Tests of the watch over files.
#include "platform/file_watch.h"

#include <gtest/gtest.h>
#include <unistd.h>

#include <filesystem>
#include <fstream>

#include "platform/files.h"

namespace platform {
namespace {

namespace fs = std::filesystem;

class FileWatchTest : public testing::Test {
 protected:
  FileWatchTest() : folder_(fs::temp_directory_path() / ("quillmarch-watch-" + std::to_string(getpid()))) {
    fs::create_directories(folder_ / "sub");
    Write("a.brd", "1");
    Write("sub/p.bmp", "1");
  }
  ~FileWatchTest() override { fs::remove_all(folder_); }

  void Write(const std::string& name, const std::string& bytes) const {
    std::ofstream(folder_ / name, std::ios::binary) << bytes;
  }
  std::u16string Path(const std::string& name) const { return InnerPath((folder_ / name).string()); }

  fs::path folder_;
  FileWatch watch_;
};

TEST_F(FileWatchTest, NothingChangesByItself) {
  EXPECT_FALSE(watch_.Changed());
  watch_.Follow({Path("a.brd"), Path("sub/p.bmp")});
  EXPECT_FALSE(watch_.Changed());
}

TEST_F(FileWatchTest, AFileThatIsWrittenHasChangedOnce) {
  watch_.Follow({Path("a.brd"), Path("sub/p.bmp")});
  Write("sub/p.bmp", "2");
  EXPECT_TRUE(watch_.Changed());
  EXPECT_FALSE(watch_.Changed());
}

TEST_F(FileWatchTest, AFilePutInItsPlaceAndOneThatGoesHaveChanged) {
  watch_.Follow({Path("a.brd")});
  Write("a.tmp", "2");
  EXPECT_FALSE(watch_.Changed()) << "another one";
  fs::rename(folder_ / "a.tmp", folder_ / "a.brd");
  EXPECT_TRUE(watch_.Changed());
  fs::remove(folder_ / "a.brd");
  EXPECT_TRUE(watch_.Changed());
}

TEST_F(FileWatchTest, AFileThatIsStillToComeIsWaitedForInAnyLetterCase) {
  watch_.Follow({Path("Late.PNG")});
  Write("late.png", "1");
  EXPECT_TRUE(watch_.Changed());
}

TEST_F(FileWatchTest, AFileStillBeingWrittenHasNotYetChanged) {
  watch_.Follow({Path("a.brd")});
  std::ofstream file(folder_ / "a.brd", std::ios::app);
  file << "2" << std::flush;
  EXPECT_FALSE(watch_.Changed());
  file.close();
  EXPECT_TRUE(watch_.Changed());
}

TEST_F(FileWatchTest, ALinkIsFollowedToItsFile) {
  fs::create_directories(folder_ / "far");
  Write("far/real.brd", "1");
  fs::create_symlink(folder_ / "far/real.brd", folder_ / "link.brd");
  watch_.Follow({Path("link.brd")});
  Write("far/real.brd", "2");
  EXPECT_TRUE(watch_.Changed());
}

TEST_F(FileWatchTest, FilesBeforeAreForgotten) {
  watch_.Follow({Path("a.brd")});
  watch_.Follow({Path("sub/p.bmp")});
  Write("a.brd", "2");
  EXPECT_FALSE(watch_.Changed());
  Write("sub/p.bmp", "2");
  EXPECT_TRUE(watch_.Changed());
}

TEST_F(FileWatchTest, AFolderThatIsNotThereIsPassedOver) {
  watch_.Follow({Path("none/x.brd"), Path("a.brd")});
  Write("a.brd", "2");
  EXPECT_TRUE(watch_.Changed());
}

}  // namespace
}  // namespace platform
