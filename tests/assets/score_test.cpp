// Songs as composers write them down.
#include "assets/maker/score.h"

#include <gtest/gtest.h>

#include "tests/support/whole_file.h"

namespace assetmaker {
namespace {

std::string TheMarch() { return qlm::WholeFile(QLM_SOURCE_DIR "/assets/songs/march.score"); }

// "LINE: message" of a score that is refused.
std::string WhyRefused(const std::string& text) {
  ScoreError error;
  if (ReadScore(text, error)) return "taken";
  return std::to_string(error.line) + ": " + error.message;
}

// A section of one bar, behind which the lines of `rest` begin with line 4.
std::string OneBar(const std::string& rest) { return "section coda\nbeats 4\ntempo 120\n" + rest; }

TEST(Score, MarchAddsUp) {
  ScoreError error;
  const auto score = ReadScore(TheMarch(), error);
  ASSERT_TRUE(score) << error.line << ": " << error.message;
  EXPECT_EQ(score->measures.size(), 50U);
  EXPECT_EQ(EndTick(*score), 49 * 48 + 36);  // one bar has three beats
}

TEST(Score, SectionsFollowOneAnother) {
  ScoreError error;
  const auto score = ReadScore(
      "# A remark.\n"
      "section bridge\r\n"
      "beats 3 4\n"
      "tempo 90\n"
      "tempo 100.5 at 2 3\n"
      "section coda\n"
      "beats 4\n"
      "tempo 120\n",
      error);
  ASSERT_TRUE(score) << error.message;
  ASSERT_EQ(score->measures.size(), 3U);
  EXPECT_EQ(score->measures[0].length, 36);
  EXPECT_EQ(score->measures[1].tick, 36);
  EXPECT_EQ(score->measures[1].inSection, 1);
  EXPECT_EQ(score->measures[2].tick, 84);
  EXPECT_EQ(score->measures[2].section, "coda");
  ASSERT_EQ(score->tempi.size(), 3U);
  EXPECT_EQ(score->tempi[1].tick, 36 + 24);
  EXPECT_EQ(score->tempi[1].tempo, 100.5);
  EXPECT_EQ(score->tempi[2].tick, 84);
}

TEST(Score, PartsPlayTheirMusicOrALineAbove) {
  ScoreError error;
  const auto score = ReadScore(
      "line tune\n"
      "  D5/2\n"
      "\n"
      "  # in two halves\n"
      "  E5/2 |\n" +
          OneBar("part melody piano notes tune up 2\n"
                 "part low-drum timpani notes\n"
                 "  R/2 D2/2 |\n"
                 "part chords stab struck .......x\n"
                 "  C/1 |\n"),
      error);
  ASSERT_TRUE(score) << error.line << ": " << error.message;
  ASSERT_EQ(score->events.size(), 4U);
  EXPECT_EQ(score->events[0].role, Role::melody);
  EXPECT_EQ(score->events[0].sample.voice, Voice::leadPiano);
  EXPECT_EQ(score->events[0].sample.pitches, std::vector<Pitch>{76});
  EXPECT_EQ(score->events[0].sample.centiseconds, 100);  // a half note, 120 quarters a minute
  EXPECT_EQ(score->events[1].tick, 24);
  EXPECT_EQ(score->events[1].sample.pitches, std::vector<Pitch>{78});
  EXPECT_EQ(score->events[2].role, Role::lowDrum);
  EXPECT_EQ(score->events[2].sample.pitches, std::vector<Pitch>{38});
  EXPECT_EQ(score->events[3].tick, 42);  // the last eighth
  EXPECT_EQ(score->events[3].sample.pitches, (std::vector<Pitch>{55, 60, 64}));
}

TEST(Score, StrokesBeginAnewAndShortBarsTakeTheirBeginning) {
  ScoreError error;
  const auto score =
      ReadScore("section turn\nbeats 4 3 4\ntempo 120\nstrokes\n X... .... .... B... |\n", error);
  ASSERT_TRUE(score) << error.line << ": " << error.message;
  std::vector<int> ticks;
  for (const Event& event : score->events) ticks.push_back(event.tick);
  EXPECT_EQ(ticks, (std::vector<int>{0, 36, 48, 84, 120}));
  EXPECT_EQ(score->events[1].sample.voice, Voice::bassDrum);
}

TEST(Score, WrongOrdersAreToldWithTheirLine) {
  EXPECT_EQ(WhyRefused(""), "0: there is no section");
  EXPECT_EQ(WhyRefused("# remark\n\nmelody C4/1 |\n"), "3: no order is called \"melody\"");
  EXPECT_EQ(WhyRefused("tempo 120\n"), "1: \"tempo\" stands before the first section");
  EXPECT_EQ(WhyRefused(" C4/1 |\n"), "1: this music belongs to no line, part or strokes");
  EXPECT_EQ(WhyRefused("section coda\ntempo 120\n"), "1: this section has no beats");
  EXPECT_EQ(WhyRefused("section coda\nbeats 4\n\nsection turn\n"), "1: this section has no tempo");
  EXPECT_EQ(WhyRefused("section coda\nbeats 4 17\n"), "2: \"17\" is no number of beats from 1 to 16");
  EXPECT_EQ(WhyRefused("section coda\nbeats 4\ntempo 256\n"), "3: \"256\" is no tempo from 1 to 255");
  EXPECT_EQ(WhyRefused("section coda\nbeats 4\ntempo nan\n"), "3: \"nan\" is no tempo from 1 to 255");
  EXPECT_EQ(WhyRefused(OneBar("tempo 90 at 2 1\n")), "4: the section has no bar 2");
  EXPECT_EQ(WhyRefused(OneBar("tempo 90 at 1 5\n")), "4: bar 1 has no beat 5");
  EXPECT_EQ(WhyRefused("line a\nline a\n"), "2: there is a line \"a\" already");
  EXPECT_EQ(WhyRefused(OneBar("part melody piano notes a\n")), "4: no line above is called \"a\"");
  EXPECT_EQ(WhyRefused(OneBar("part tune piano notes\n")), "4: no role is called \"tune\"");
  EXPECT_EQ(WhyRefused(OneBar("part melody field-accent notes\n")), "4: no voice is called \"field-accent\"");
  EXPECT_EQ(WhyRefused(OneBar("part melody piano loudly\n")),
            "4: \"loudly\" is none of notes, chords, struck and broken");
  EXPECT_EQ(WhyRefused(OneBar("part melody piano struck\n")),
            "4: behind struck stands a rhythm of dots and x, as in ..x...x.");
  EXPECT_EQ(WhyRefused(OneBar("part melody piano notes up\n")),
            "4: behind up stands a number of semitones from 1 to 48");
  EXPECT_EQ(WhyRefused("section\n"), "1: it is written: section NAME");
}

TEST(Score, SongsOfMoreBarsThanMeasureNumbersAreRefused) {
  std::string beats = "beats";
  for (int bar = 0; bar < 1000; ++bar) beats += " 4";
  EXPECT_EQ(WhyRefused("section coda\n" + beats + "\ntempo 120\n"),
            "1: with this section the song is longer than 999 bars");
}

TEST(Score, WrongMusicIsToldWithItsOwnLine) {
  EXPECT_EQ(WhyRefused(OneBar("part melody piano notes\n  C4/2\n\n  X4/2 |\n")),
            "7: cannot read \"X4/2\" (in the part of line 4)");
  EXPECT_EQ(WhyRefused(OneBar("part melody piano notes\n  C4/2\n  C4/4 |\n")),
            "6: bar 1 does not end at its bar line (in the part of line 4)");
  EXPECT_EQ(WhyRefused(OneBar("part melody piano notes\n")),
            "4: the line ends after bar 0 (in the part of line 4)");
  EXPECT_EQ(WhyRefused("line a\n  C4/3 |\n" + OneBar("part melody piano notes a\n")),
            "2: cannot read \"C4/3\" (in the part of line 6)");
  EXPECT_EQ(WhyRefused(OneBar("part melody piano notes down 48\n  C3/1 |\n")),
            "4: moved by so many semitones, the part leaves the keyboard");
}

TEST(Score, WrongStrokesAreToldWithTheirOwnLine) {
  EXPECT_EQ(WhyRefused(OneBar("strokes\n  X... .... ....\n  ..Q. |\n")), "6: no stroke is called 'Q'");
  EXPECT_EQ(WhyRefused(OneBar("strokes\n  X... .... .... |\n")), "5: a bar has 12 strokes, not 16");
  EXPECT_EQ(WhyRefused(OneBar("strokes\n  X... .... .... .... . |\n")), "5: a bar has 17 strokes, not 16");
  EXPECT_EQ(WhyRefused(OneBar("strokes\n  .... .... .... .... |\n  .... .... .... ....\n")),
            "6: the last bar of strokes lacks its bar line");
  EXPECT_EQ(WhyRefused(OneBar("strokes\n")), "1: there is no bar of strokes");
}

}  // namespace
}  // namespace assetmaker
