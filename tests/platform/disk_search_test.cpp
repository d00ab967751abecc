// Reading of folders and texts for a search.
#include "platform/disk_search.h"

#include <gtest/gtest.h>
#include <sys/stat.h>

#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <string>

#include "platform/files.h"

namespace platform {
namespace {

namespace fs = std::filesystem;
using Names = std::vector<std::u16string>;

class DiskSearchTest : public testing::Test {
 protected:
  DiskSearchTest() {
    std::string name = (fs::temp_directory_path() / "quillmarch-search-XXXXXX").string();
    folder_ = mkdtemp(name.data()) == nullptr ? std::string() : name;
  }
  ~DiskSearchTest() override {
    std::error_code error;
    fs::remove_all(folder_, error);
  }

  void Write(const std::string& name, const std::string& bytes) const {
    std::ofstream(folder_ + "/" + name, std::ios::binary) << bytes;
  }
  std::u16string Path(const std::string& name = "") const { return InnerPath(folder_ + "/" + name); }

  std::string folder_;
};

TEST_F(DiskSearchTest, NamesComeByTheirLettersAndByKind) {
  for (const char* name : {"b", "C", "a", "B"}) Write(name, "");
  fs::create_directory(folder_ + "/f");
  fs::create_symlink("a", folder_ + "/file link");
  fs::create_directory_symlink("f", folder_ + "/folder link");
  fs::create_symlink("none", folder_ + "/dead link");
  ASSERT_EQ(mkfifo((folder_ + "/pipe").c_str(), 0600), 0);
  const FolderContents contents = ReadFolder(Path());
  EXPECT_EQ(contents.files, (Names{u"a", u"B", u"b", u"C", u"file link"}));
  EXPECT_EQ(contents.folders, (Names{u"f", u"folder link"}));
  EXPECT_EQ(contents.others, (Names{u"dead link", u"pipe"}));
  EXPECT_EQ(contents.why, u"");
}

TEST_F(DiskSearchTest, FolderIsTheSameByEachOfItsPaths) {
  fs::create_directory(folder_ + "/f");
  fs::create_directory_symlink("f", folder_ + "/l");
  EXPECT_EQ(ReadFolder(Path("f")).id, ReadFolder(Path("l")).id);
  EXPECT_NE(ReadFolder(Path("f")).id, ReadFolder(Path()).id);
}

TEST_F(DiskSearchTest, WhatIsNoFolderHasItsReason) {
  Write("a", "");
  EXPECT_EQ(ReadFolder(Path("a")).why, u"Not a directory");
  EXPECT_EQ(ReadFolder(Path("none")).why, u"No such file or directory");
}

TEST_F(DiskSearchTest, TextEndsAtItsFirstZeroByte) {
  Write("a", std::string("one\0two", 7));
  EXPECT_EQ(ReadText(Path("a"), 7).bytes, "one");
  Write("b", "");
  EXPECT_EQ(ReadText(Path("b"), 0).bytes, "");
  EXPECT_EQ(ReadText(Path("b"), 0).why, u"");
}

TEST_F(DiskSearchTest, LongTextIsReadWhole) {
  std::string text;
  for (int i = 0; i < 500'000; ++i) text += std::to_string(i);  // 2.9 MB: more than one block
  Write("a", text);
  EXPECT_TRUE(ReadText(Path("a"), INT64_MAX).bytes == text);
  text[2'500'000] = '\0';
  Write("a", text);
  EXPECT_TRUE(ReadText(Path("a"), INT64_MAX).bytes == text.substr(0, 2'500'000));
}

TEST_F(DiskSearchTest, HugeFileThatIsNoTextCostsLittle) {
  Write("a", "x");
  fs::resize_file(folder_ + "/a", uintmax_t{1} << 40);  // a hole of zero bytes
  EXPECT_EQ(ReadText(Path("a"), INT64_MAX).bytes, "x");
}

TEST_F(DiskSearchTest, WhatIsNoTextHasItsReason) {
  Write("a", "ab");
  EXPECT_EQ(ReadText(Path("a"), 1).why, u"This is too long");
  EXPECT_EQ(ReadText(Path(), 1).why, u"This is no file");
  EXPECT_EQ(ReadText(Path("none"), 1).why, u"No such file or directory");
  ASSERT_EQ(mkfifo((folder_ + "/pipe").c_str(), 0600), 0);
  EXPECT_EQ(ReadText(Path("pipe"), 1).why, u"This is no file");
}

}  // namespace
}  // namespace platform
