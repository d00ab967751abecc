// The terminal's last line.
#include "shell/last_words.h"

#include "state/lists.h"
#include "state/session.h"
#include "tests/support/game_test.h"

namespace qlm {
namespace {

class LastWordsTest : public GameTest {
 protected:
  LastPlay play_{.title = u"羽ペンの行進",
                 .artist = u"us",
                 .path = u"\\songs\\a.bms",
                 .playLevel = 3,
                 .outcome = Outcome::kCleared,
                 .score = 84210.9,
                 .classIndex = 2,
                 .counts = {100, 20, 3, 2, 1}};
  static void AddRow(TextView title, int32_t level) {
    SongEntry row;
    row.title = title;
    row.playLevel = level;
    songList.push_back(row);
    ++lastSong;
  }
  std::string Next() const {
    const std::string words = Utf8(LastWords(play_));
    return words.substr(words.find("Next: "));
  }
};

TEST_F(LastWordsTest, TellWhatWasPlayedAndWhatItCameTo) {
  EXPECT_EQ(
      Utf8(LastWords(play_)),
      "Played \"羽ペンの行進\" by us: cleared, score 84210, class A; PERFECT 100, GREAT 20, GOOD 3, BAD "
      "2, POOR 1. Next: the same with notes that vanish: F1 in the song list.");
  play_.outcome = Outcome::kFailed;
  play_.artist.clear();
  play_.title.clear();
  EXPECT_EQ(Utf8(LastWords(play_)).substr(0, 29), "Played \"a.bms\": failed, score");
}

TEST_F(LastWordsTest, TellOfASongThatTheProgramWasEndedInside) {
  play_.outcome = Outcome::kLeft;
  EXPECT_EQ(Utf8(LastWords(play_)),
            "Left \"羽ペンの行進\" by us before its end, so that nothing of it is kept. Next: play it to its "
            "end; F12 makes a pause.");
  play_.machine = true;
  EXPECT_EQ(Next(), "Next: play it yourself, with Z S X D C F V and left Shift.");
}

TEST_F(LastWordsTest, NameTheNextLevelOfTheOpenListBehindAClear) {
  GameState = kStateSongSelect;
  AddRow(u"hard", 9);
  AddRow(u"same", 3);
  AddRow(u"next", 5);
  AddRow(u"also next", 5);
  EXPECT_EQ(Next(), "Next: \"next\" of level 5.");
  // The rows of other lists are no charts.
  GameState = kStateLists;
  EXPECT_EQ(Next(), "Next: the same with notes that vanish: F1 in the song list.");
  GameState = kStateSongSelect;
  play_.playLevel = 9;
  EXPECT_EQ(Next(), "Next: the same with notes that vanish: F1 in the song list.");
}

TEST_F(LastWordsTest, GoByHowThePlayEnded) {
  play_.outcome = Outcome::kFailed;
  EXPECT_EQ(Next(), "Next: again with 4 held and 2 pressed, which spreads the notes.");
  play_.outcome = Outcome::kStopped;
  EXPECT_EQ(Next(), "Next: play it to its end; F12 makes a pause.");
  play_.machine = true;
  EXPECT_EQ(Next(), "Next: play it yourself, with Z S X D C F V and left Shift.");
  play_.troubled = true;
  EXPECT_EQ(Next(), "Next: '" QLM_BINARY_DIR "/qlmprobe' check '/songs/a.bms'.");
}

TEST_F(LastWordsTest, AreSaidBehindThePlaceOfTheLogAndOnlyWhenSomethingWasPlayed) {
  testing::internal::CaptureStdout();
  SayLastWords();
  EXPECT_EQ(testing::internal::GetCapturedStdout(), "");
  lastPlay = play_;
  testing::internal::CaptureStdout();
  SayLastWords();
  const std::string words = testing::internal::GetCapturedStdout();
  EXPECT_EQ(words.rfind("The log is " + SystemFolder() + "/_qlmfiles/debug.txt\nPlayed \"", 0), 0U) << words;
  EXPECT_EQ(words.back(), '\n');
}

}  // namespace
}  // namespace qlm
