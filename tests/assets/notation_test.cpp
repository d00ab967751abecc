// Music written as text.
#include "assets/maker/notation.h"

#include <gtest/gtest.h>

namespace assetmaker {
namespace {

using Pitches = std::vector<Pitch>;

const std::vector<int> oneBar = {48};

TEST(Pitch, NamesFollowThePiano) {
  EXPECT_EQ(PitchNamed("C4"), 60);
  EXPECT_EQ(PitchNamed("A4"), 69);
  EXPECT_EQ(PitchNamed("Bb5"), 82);
  EXPECT_EQ(PitchNamed("C#2"), 37);
}

TEST(Pitch, OtherNamesAreRefused) {
  for (const char* name : {"", "H4", "A", "4", "A44", "A#", " 4", "a4"})
    EXPECT_FALSE(PitchNamed(name)) << name;
}

TEST(Pitch, TuningIsEqualTemperamentAt440) {
  EXPECT_DOUBLE_EQ(Frequency(69), 440);
  EXPECT_DOUBLE_EQ(Frequency(57), 220);
  EXPECT_NEAR(Frequency(60), 261.6256, 0.0001);
}

TEST(Notation, NotesFollowOneAnother) {
  NotationError error;
  const auto notes = ReadNotes("D5/4 R/8. E5/16 F5/2 |", oneBar, error);
  ASSERT_TRUE(notes);
  ASSERT_EQ(notes->size(), 3u);
  EXPECT_EQ((*notes)[0].tick, 0);
  EXPECT_EQ((*notes)[0].length, 12);
  EXPECT_EQ((*notes)[0].pitches, Pitches{74});
  EXPECT_EQ((*notes)[1].tick, 21);
  EXPECT_EQ((*notes)[1].length, 3);
  EXPECT_EQ((*notes)[2].tick, 24);
  EXPECT_EQ((*notes)[2].length, 24);
}

TEST(Notation, ChordsLieFromGUpwards) {
  NotationError error;
  const auto chords = ReadChords("Dm/2 Bbmaj7/2 |", oneBar, error);
  ASSERT_TRUE(chords);
  EXPECT_EQ((*chords)[0].pitches, (Pitches{57, 62, 65}));      // A3 D4 F4
  EXPECT_EQ((*chords)[1].pitches, (Pitches{57, 58, 62, 65}));  // A3 Bb3 D4 F4
}

TEST(Notation, BarsThatDoNotAddUpAreRefused) {
  NotationError error;
  EXPECT_FALSE(ReadNotes("D5/4 E5/4 |", oneBar, error));
  EXPECT_EQ(error.message, "bar 1 does not end at its bar line");
  EXPECT_FALSE(ReadNotes("D5/1 | D5/2 |", {48, 48}, error));
  EXPECT_EQ(error.message, "bar 2 does not end at its bar line");
  EXPECT_EQ(error.at, 12U);
  EXPECT_FALSE(ReadNotes("D5/1 |", {48, 48}, error));
  EXPECT_EQ(error.message, "the line ends after bar 1");
  EXPECT_FALSE(ReadNotes("D5/1 | |", oneBar, error));
  EXPECT_FALSE(ReadNotes("D5/1", oneBar, error));
}

TEST(Notation, UnknownWordsAreRefused) {
  NotationError error;
  for (const char* word : {"X5/4", "D5/3", "D5", "D5/", "/4", "Dm/4"}) {
    EXPECT_FALSE(ReadNotes(word, oneBar, error)) << word;
    EXPECT_EQ(error.message, "cannot read \"" + std::string(word) + '"');
  }
  EXPECT_FALSE(ReadChords("Dmm/4", oneBar, error));
}

TEST(Notation, StruckChordsFollowTheirRhythm) {
  const std::vector<Note> struck = Struck({{0, 24, {57}}, {24, 24, {60}}}, "..x...x.", oneBar);
  ASSERT_EQ(struck.size(), 2u);
  EXPECT_EQ(struck[0].tick, 12);
  EXPECT_EQ(struck[0].pitches, Pitches{57});
  EXPECT_EQ(struck[1].tick, 36);
  EXPECT_EQ(struck[1].pitches, Pitches{60});
}

TEST(Notation, BrokenChordsRunUpAndDown) {
  const std::vector<Note> broken = Broken({{0, 36, {57, 62, 65}}});
  Pitches run;
  for (const Note& note : broken) run.push_back(note.pitches.front());
  EXPECT_EQ(run, (Pitches{57, 62, 65, 62, 57, 62}));
}

}  // namespace
}  // namespace assetmaker
