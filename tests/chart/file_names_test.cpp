// Files that a chart names, as they lie on a disk that another system packed.
#include <filesystem>
#include <fstream>

#include "base/paths.h"
#include "chart/loading.h"
#include "state/chart.h"
#include "tests/chart/chart_test.h"

namespace qlm {
namespace {

class FileNamesTest : public ChartTest {
 protected:
  // Makes a file whose name is these bytes, beside the chart.
  void MakeFile(const std::string& name) const {
    const std::filesystem::path path = std::filesystem::path(SystemFolder()) / "song" / name;
    std::filesystem::create_directories(path.parent_path());
    std::ofstream(path) << "x";
  }
};

TEST_F(FileNamesTest, JapaneseNameStoredInUnicode) {
  MakeFile("太鼓.wav");
  EXPECT_EQ(BMSLoad(WriteChart({u"#WAV01 太鼓.wav"})), 1);
  EXPECT_TRUE(FileExists(WavFile[1]));
}

// 太鼓 in code page 932.
TEST_F(FileNamesTest, JapaneseNameStoredAsRawBytes) {
  MakeFile("\x91\xBE\x8C\xDB.wav");
  EXPECT_EQ(BMSLoad(WriteChart({u"#WAV01 太鼓.wav"})), 1);
  EXPECT_TRUE(FileExists(WavFile[1]));
}

// The second byte of 表 is that of a backslash, but not a separator.
TEST_F(FileNamesTest, SecondByteThatLooksLikeABackslash) {
  MakeFile("\x95\x5C.wav");
  EXPECT_EQ(BMSLoad(WriteChart({u"#WAV01 表.wav"})), 1);
  EXPECT_TRUE(FileExists(WavFile[1]));
  EXPECT_EQ(GetFileName(WavFile[1]), u"表.wav");
}

TEST_F(FileNamesTest, WrongLetterCase) {
  MakeFile("KICK.WAV");
  MakeFile("Sounds/Snare.wav");
  EXPECT_EQ(BMSLoad(WriteChart({u"#WAV01 kick.wav", u"#WAV02 sounds\\snare.WAV"})), 1);
  EXPECT_TRUE(FileExists(WavFile[1]));
  EXPECT_TRUE(FileExists(WavFile[2]));
}

TEST_F(FileNamesTest, FolderStoredAsRawBytesAndWrongLetterCaseTogether) {
  MakeFile("\x91\xBE\x8C\xDB/KICK.wav");
  EXPECT_EQ(BMSLoad(WriteChart({u"#WAV01 太鼓\\kick.WAV"})), 1);
  EXPECT_TRUE(FileExists(WavFile[1]));
}

TEST_F(FileNamesTest, MissingFileStaysMissing) {
  EXPECT_EQ(BMSLoad(WriteChart({u"#WAV01 none.wav"})), 1);
  EXPECT_FALSE(FileExists(WavFile[1]));
}

TEST_F(FileNamesTest, ChartInAJapaneseFolder) {
  EXPECT_EQ(BMSLoad(WriteChart({u"#00111:01"}, u"曲\\春.bms")), 1);
  EXPECT_TRUE(Logged(u"[BMSLoad] 春.bms"));
}

}  // namespace
}  // namespace qlm
