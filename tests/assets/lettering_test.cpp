// Faces of whole pixels, and drawings whose text is set in them.
#include "assets/maker/lettering.h"

#include <gtest/gtest.h>

#include <map>
#include <optional>
#include <string>

namespace assetmaker {
namespace {

// Two letters, three wide and two high, in cells of 4 by 4 that begin at (1, 1).
constexpr const char* kFace =
    "// a comment\n"
    "cell 4 4\n"
    "from 1 1\n"
    "drawn 3 2\n"
    "\n"
    "= A b\n"
    "##. ...\n"
    "#.# .#.\n";

Face TestFace() {
  LetteringError error;
  return ReadFace(kFace, error).value_or(Face{});
}

TEST(Lettering, ReadsAFaceBandByBand) {
  const Face face = TestFace();
  EXPECT_EQ(face.cellWidth, 4);
  EXPECT_EQ(face.cellHeight, 4);
  ASSERT_EQ(face.letters.size(), 2u);
  EXPECT_EQ(face.letters.at('A'), (std::vector<std::string>{"##.", "#.#"}));
  EXPECT_EQ(face.letters.at('b'), (std::vector<std::string>{"...", ".#."}));
}

TEST(Lettering, TellsOfABandThatIsTooShort) {
  LetteringError error;
  EXPECT_FALSE(ReadFace("cell 4 4\ndrawn 3 2\n= A b\n##. ...\n#.#\n", error));
  EXPECT_EQ(error.message, "row 2 of the band A b is too short");
}

TEST(Lettering, TellsOfALineThatIsNone) {
  LetteringError error;
  EXPECT_FALSE(ReadFace("cells 4 4\n", error));
  EXPECT_EQ(error.message, "not understood: \"cells 4 4\"");
}

TEST(Lettering, DrawsEachRunOfInkAsOneBar) {
  EXPECT_EQ(PathOf(TestFace(), "A", 10, 20), "M11 21h2v1h-2zM11 22h1v1h-1zM13 22h1v1h-1z");
}

TEST(Lettering, GivesEveryLetterACell) {
  // The blank and the letter that the face lacks take their room and show nothing.
  EXPECT_EQ(PathOf(TestFace(), " ?b", 0, 0), "M10 2h1v1h-1z");
}

TEST(Lettering, ReplacesTextAndKeepsItsOtherAttributes) {
  const std::map<std::string, Face> faces = {{"test", TestFace()}};
  LetteringError error;
  const std::optional<std::string> drawing =
      SetLettering("<g><text face=\"test\" x=\"1\" y=\"-1\" fill=\"red\">b</text></g>", faces, error);
  ASSERT_TRUE(drawing);
  EXPECT_EQ(*drawing, "<g><path shape-rendering=\"crispEdges\" fill=\"red\" d=\"M3 1h1v1h-1z\"/></g>");
}

TEST(Lettering, ReadsEntitiesAsTheirLetters) {
  Face face = TestFace();
  face.letters['<'] = {"#..", "..."};
  face.letters['&'] = {"..#", "..."};
  LetteringError error;
  const std::optional<std::string> drawing =
      SetLettering("<text face=\"f\" x=\"0\" y=\"0\">&lt;&amp;lt;</text>", {{"f", face}}, error);
  ASSERT_TRUE(drawing);
  EXPECT_NE(drawing->find("M1 1h1v1h-1zM7 1h1v1h-1z"), std::string::npos) << *drawing;
}

TEST(Lettering, TellsOfAFaceThatThereIsNot) {
  LetteringError error;
  EXPECT_FALSE(SetLettering("<text face=\"gone\">A</text>", {}, error));
  EXPECT_EQ(error.message, "there is no face \"gone\"");
}

}  // namespace
}  // namespace assetmaker
