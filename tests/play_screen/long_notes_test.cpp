// What the wide reading adds to the notes: bodies, mines, and stops, which take no way on the screen.
#include "play_screen/long_notes.h"

#include "play_screen/shown_place.h"
#include "state/options.h"
#include "state/timeline.h"
#include "state/wide_chart.h"
#include "tests/play_screen/play_screen_ground.h"

namespace qlm {
namespace {

constexpr Colour kNote = 0x806020;
constexpr Colour kBody = 0x403010;  // half of each channel
constexpr Colour kMine = 0x800000;  // as bright as the brightest channel

// A note clip of 20 by 10 for channels 11 and 12; the line is at 400.
class LongNotesTest : public PlayScreenTest {
 protected:
  LongNotesTest() {
    LayClip(1, 20, 10, kNote);
    LayLane(11, 1, 100);
    LayLane(12, 1, 130);
  }
  ~LongNotesTest() override { ResetWideChart(); }

  static void LayLongNote(int32_t channel, int32_t pos, int32_t end) {
    LongNotes.push_back({objCount, end});
    LayObj(channel, pos);
  }
};

TEST_F(LongNotesTest, ABodyReachesFromTheEndToTheHead) {
  LayLongNote(11, 100, 250);
  Draw();
  // The head's picture covers 290 to 300; the end's would stand on 150.
  EXPECT_EQ(Extent(kNote), (Rect{100, 290, 120, 300}));
  EXPECT_EQ(Extent(kBody), (Rect{100, 140, 120, 290}));
}

TEST_F(LongNotesTest, ABodyHasTheMiddleRowOfItsNoteAndNotItsEdges) {
  SkinFile[1]->Fill({0, 0, 20, 5}, 0xFF0000);
  SkinFile[1]->Fill({0, 6, 20, 10}, 0x0000FF);
  LayLongNote(11, 100, 250);
  Draw();
  EXPECT_EQ(Extent(kBody), (Rect{100, 140, 120, 290}));
  EXPECT_EQ(Find(0x7F0000), (Corner{-1, -1}));
  EXPECT_EQ(Find(0x00007F), (Corner{-1, -1}));
}

TEST_F(LongNotesTest, ABodyIsCutAtTheLineAndAtTheUpperEdge) {
  LayLongNote(11, 100, 900);
  objCursor = 1;
  playPos = 200;
  Draw();
  EXPECT_EQ(Find(kNote), (Corner{-1, -1}));
  EXPECT_EQ(Extent(kBody), (Rect{100, 0, 120, 400}));
}

TEST_F(LongNotesTest, ABodyThatIsOverIsGone) {
  LayLongNote(11, 100, 250);
  objCursor = 1;
  playPos = 251;
  Draw();
  EXPECT_EQ(Find(kBody), (Corner{-1, -1}));
}

TEST_F(LongNotesTest, ABodyGoesAlongWhereItsNoteIsThrown) {
  LayLongNote(11, 100, 250);
  objs[0].channel = 12;
  Draw();
  EXPECT_EQ(Extent(kBody), (Rect{130, 140, 150, 290}));
}

TEST_F(LongNotesTest, AHeadThatBecameABackgroundSoundHasNoBody) {
  LayLongNote(11, 100, 250);
  objs[0].channel = 1;
  Draw();
  EXPECT_EQ(Find(kBody), (Corner{-1, -1}));
}

TEST_F(LongNotesTest, OptionsHideBodiesToo) {
  LayLongNote(11, 100, 250);
  Stealth = true;
  Draw();
  EXPECT_EQ(Find(kBody), (Corner{-1, -1}));
  Stealth = false;
  Sudden = true;
  Draw();
  EXPECT_EQ(Extent(kBody), (Rect{100, 400 - 124 - 10, 120, 290}));
  Sudden = false;
  Hidden = true;
  Draw();
  EXPECT_EQ(Extent(kBody), (Rect{100, 140, 120, 400 - 120}));
  Hidden = false;
}

TEST_F(LongNotesTest, UnderHalfFieldEvenLanesRunDown) {
  HalfField = true;
  LayLongNote(12, 50, 100);
  Draw();
  EXPECT_EQ(Extent(kNote), (Rect{130, 250, 150, 260}));
  EXPECT_EQ(Extent(kBody), (Rect{130, 260, 150, 310}));
  HalfField = false;
}

TEST_F(LongNotesTest, AMineIsRed) {
  LayObj(kMineKinds + 11, 100);
  Draw();
  EXPECT_TRUE(Only({100, 290, 120, 300}, kMine));
  EXPECT_EQ(LaneNote[0], -1);
}

TEST_F(LongNotesTest, NothingMovesInAStop) {
  Stops = {{100, 48, 0}, {300, 10, 48}};
  EXPECT_EQ(ShownPlace(50), 50);
  EXPECT_EQ(ShownPlace(100), 100);
  EXPECT_EQ(ShownPlace(120.5), 100);
  EXPECT_EQ(ShownPlace(148), 100);
  EXPECT_EQ(ShownPlace(200), 152);
  EXPECT_EQ(ShownPlace(305), 252);
  EXPECT_EQ(ShownPlace(400), 342);
  LayObj(11, 200);
  for (const double pos : {100.0, 120.0, 148.0}) {
    playPos = pos;
    Draw();
    EXPECT_TRUE(Only({100, 338, 120, 348}, kNote)) << pos;  // 52 units ahead
  }
}

}  // namespace
}  // namespace qlm
