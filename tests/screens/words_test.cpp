// The game's lines in English.
#include "screens/words.h"

#include <filesystem>
#include <regex>

#include "platform/text.h"
#include "state/settings.h"
#include "tests/support/game_test.h"
#include "tests/support/whole_file.h"

namespace qlm {
namespace {

class WordsTest : public GameTest {};

TEST_F(WordsTest, AreJapaneseUntilEnglishIsChosenByName) {
  const TextView line = u"Enterキーを押すと新規に曲を追加します.";
  EXPECT_EQ(Words(line), line);
  MenuLanguage = u"ja";
  EXPECT_EQ(Words(line), line);
  MenuLanguage = u"en";
  EXPECT_EQ(Words(line), u"Enter: add a song.");
  EXPECT_EQ(Words(u"曲"), u"曲");
  EXPECT_EQ(Words(u""), u"");
}

// Every text in Japanese that a source of the screens shows.
TEST_F(WordsTest, NoLineOfAScreenLacksItsEnglish) {
  MenuLanguage = u"en";
  const std::regex literal("u\"([^\"]*[\xE3-\xE9][^\"]*)\"");
  int lines = 0;
  for (const auto& file : std::filesystem::directory_iterator(QLM_SOURCE_DIR "/src/screens")) {
    if (file.path().extension() != ".cpp" || file.path().filename() == "words.cpp") continue;
    const std::string source = WholeFile(file.path());
    for (std::sregex_iterator found(source.begin(), source.end(), literal), end; found != end; ++found) {
      const Text line = platform::DecodeUtf8((*found)[1].str());
      EXPECT_NE(Words(line), line) << Utf8(line);
      ++lines;
    }
  }
  EXPECT_EQ(lines, 20);
}

}  // namespace
}  // namespace qlm
