// The frames of the skin's clips, and what becomes of copies that the skin places badly.
#include "graphics/clips.h"

#include "state/timeline.h"
#include "tests/play_screen/play_screen_ground.h"

namespace qlm {
namespace {

constexpr Colour kRed = 0xFF0000;

class Clips : public PlayScreenTest {
 protected:
  // Clip 1 has three frames of 10 pixels and moves.
  Clips() { ListClip(LayFrames(1, 10, 10, kRed, 3), 1); }
  static void ListClip(SkinClip& clip, uint8_t number) {
    clip.animMode = kClipByClock;
    clip.speed = 50;
    ClipList.entries[static_cast<size_t>(++ClipList.last)] = number;
  }
  // The frame in use, by its left edge.
  static int32_t Frame() {
    UpdateClips();
    return Clip[1].rect.left / 10;
  }
  static int32_t FrameAt(int32_t ms) {
    playClock = ms;
    return Frame();
  }
  static int32_t FrameAtPlace(double place) {
    playPos = place;
    return Frame();
  }
};

TEST_F(Clips, GoByTheClock) {
  EXPECT_EQ(FrameAt(0), 0);
  EXPECT_EQ(FrameAt(49), 0);
  EXPECT_EQ(FrameAt(50), 1);
  EXPECT_EQ(FrameAt(149), 2);
  EXPECT_EQ(FrameAt(150), 0);
  EXPECT_EQ(FrameAt(60'000), 0);
  EXPECT_EQ(FrameAt(60'050), 1);
}

TEST_F(Clips, TheSpeedByTheClockIsRounded) {
  Clip[1].speed = 49.5F;  // 50
  EXPECT_EQ(FrameAt(49), 0);
  Clip[1].speed = 48.5F;  // 48
  EXPECT_EQ(FrameAt(48), 1);
}

TEST_F(Clips, GoByThePositionInTheMeasure) {
  Clip[1].animMode = kClipByPosition;
  Clip[1].speed = 24;
  curMeasurePos = 192;
  EXPECT_EQ(FrameAtPlace(192), 0);
  EXPECT_EQ(FrameAtPlace(204), 0);  // 0.5 rounds to 0
  EXPECT_EQ(FrameAtPlace(204.5), 1);
  EXPECT_EQ(FrameAtPlace(228), 2);  // 1.5 rounds to 2
  EXPECT_EQ(FrameAtPlace(264), 0);
  playClock = 5000;  // and stand while nothing scrolls
  EXPECT_EQ(FrameAtPlace(264), 0);
}

TEST_F(Clips, OfSpeed0StandStill) {
  EXPECT_EQ(FrameAt(50), 1);
  Clip[1].speed = 0;
  EXPECT_EQ(FrameAt(100), 1);
  Clip[1].speed = 0.5F;  // rounds to 0
  EXPECT_EQ(FrameAt(100), 1);
  Clip[1].animMode = kClipByPosition;
  Clip[1].speed = 0;
  EXPECT_EQ(FrameAtPlace(100), 1);
}

TEST_F(Clips, AreLeftAloneWhenStill) {
  Clip[1].animMode = kClipStill;
  Clip[1].rect.left = 20;
  EXPECT_EQ(FrameAt(50), 2);
}

TEST_F(Clips, AreLeftAloneWhenNotListed) {
  ClipList.last = -1;
  EXPECT_EQ(FrameAt(50), 0);
}

TEST_F(Clips, KeepTheirFrameBeforeTheStart) {
  EXPECT_EQ(FrameAt(100), 2);
  EXPECT_EQ(FrameAt(-50), 2);
}

TEST_F(Clips, KeepTheirFrameWhereTheyHaveNone) {
  EXPECT_EQ(FrameAt(100), 2);
  Clip[1].frames = 0;
  EXPECT_EQ(FrameAt(50), 2);
}

TEST_F(Clips, AllOfAFullListMove) {
  ClipList.last = -1;
  for (int32_t n = 0; n < 256; ++n) ListClip(LayFrames(n, 10, 10, kRed, 2), static_cast<uint8_t>(n));
  playClock = 50;
  UpdateClips();
  for (int32_t n = 0; n < 256; ++n) EXPECT_EQ(Clip[n].rect.left, 10) << n;
}

TEST_F(Clips, MoveInTheFrame) {
  KeyPos[0] = {1, 20, 30, 0, 0};
  playClock = 50;
  Draw();
  EXPECT_TRUE(Only({20, 30, 30, 40}, kRed + 1));
}

TEST_F(Clips, ACopyBesideTheScreenIsRefused) {
  CopyClip(1, -1, 0);
  CopyClip(1, 631, 0);
  CopyClip(1, 0, 471);
  EXPECT_TRUE(Only({}, 0));
  CopyClip(1, 630, 470);
  EXPECT_TRUE(Only({630, 470, 640, 480}, kRed));
}

TEST_F(Clips, ADrawnClipIsCutAtTheScreensEdge) {
  DrawClip(1, -4, 475);
  EXPECT_TRUE(Only({0, 475, 6, 480}, kRed));
}

TEST_F(Clips, TheKeyOfTheSheetIsTransparent) {
  SkinFile[1]->Fill({0, 0, 5, 10}, 0);
  DDBack->Fill(kScreen, 7);
  DrawClip(1, 0, 0);
  CopyClip(1, 0, 20);
  EXPECT_EQ(At(4, 0), 7U);
  EXPECT_EQ(At(5, 0), kRed);
  EXPECT_EQ(At(4, 20), 7U);
  EXPECT_EQ(At(5, 20), kRed);
}

TEST_F(Clips, WhatIsMissingDrawsNothing) {
  for (const int64_t number : {int64_t{-1}, int64_t{2}, int64_t{256}, INT64_MAX}) {
    DrawClip(number, 0, 0);
    CopyClip(number, 0, 0);
  }
  Clip[2].rect = {0, 0, 5, 5};  // on sheet 0, which is not there
  DrawClip(2, 0, 0);
  Clip[1].rect = {25, 0, 35, 10};  // beyond the sheet
  DrawClip(1, 0, 0);
  StretchFromSheet(1, Clip[1].rect, {0, 0, 5, 5});
  EXPECT_TRUE(Only({}, 0));
  DDBack.reset();
  DrawClip(1, 0, 0);
  CopyClip(1, 0, 0);
}

TEST_F(Clips, FarPlacesDrawNothing) {
  for (const int64_t far : {INT64_MIN, int64_t{INT32_MIN} - 1, int64_t{INT32_MAX} + 1, INT64_MAX}) {
    DrawClip(1, far, 0);
    DrawClip(1, 0, far);
    CopyClip(1, far, 0);
    CopyClip(1, 0, far);
  }
  EXPECT_TRUE(Only({}, 0));
  EXPECT_EQ(RectOf(0, 0, int64_t{INT32_MAX} + 1, 1), Rect{});
  EXPECT_EQ(RectOf(1, 2, 3, 4), (Rect{1, 2, 3, 4}));
}

TEST_F(Clips, Clip0ShowsAtTheCornerForAPlaceThatIsNotGiven) {
  LayClip(0, 3, 3, kRed);
  Draw();
  EXPECT_TRUE(Only({0, 0, 3, 3}, kRed));
}

}  // namespace
}  // namespace qlm
