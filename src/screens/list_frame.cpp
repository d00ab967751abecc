// The frame of the list screens, step by step in the order of the drawing.
#include "screens/list_frame.h"

#include <algorithm>
#include <cmath>

#include "base/numbers.h"
#include "graphics/draw.h"
#include "graphics/fades.h"
#include "graphics/present.h"
#include "platform/clock.h"
#include "play_screen/net_status.h"
#include "screens/clear_check.h"
#include "screens/list_find_line.h"
#include "screens/list_help.h"
#include "screens/list_panel.h"
#include "screens/list_scores.h"
#include "screens/list_sprites.h"
#include "screens/list_status.h"
#include "screens/list_wheel.h"
#include "state/chart.h"
#include "state/lists.h"
#include "state/session.h"
#include "state/settings.h"
#include "state/song_select.h"
#include "state/surfaces.h"

namespace qlm {
namespace {

void Settle() {
  float& settle = songSelect.listSettle;
  const auto goal = static_cast<float>(songSelect.listSettleGoal);
  settle -= (settle - goal) * 0.2F;
  if (std::abs(settle - goal) <= 0.01F) settle = goal;
}

void DrawSongsGround() {
  constexpr uint8_t kStillGround = 3;
  if (DRAWLIMIT >= kStillGround) {
    if (SSBack) DDBack->Copy(0, 0, *SSBack, kScreen);
  } else {
    DrawMovingBack();
  }
}

void DrawCoursesGround(const Rect& part = kScreen) {
  if (SSBackDim) DDBack->Copy(part.left, part.top, *SSBackDim, part);
}

// One ground leaves as two combs, to the left and to the right, and bares the other. `stays` percent of what
// was there is still seen.
void DrawGroundsCrossing(int32_t stays) {
  DrawSongsGround();
  const bool coursesCome = FadeState == kFadeToCourses;
  const int32_t width = std::clamp(Round(stays * 6.4).value_or(0), 0, kScreen.right);
  const int32_t rest = kScreen.right - width;
  for (int32_t y = 0; y < kScreen.bottom; y += 4) {
    if (coursesCome) {
      DrawCoursesGround({width, y, kScreen.right, y + 2});
      DrawCoursesGround({0, y + 2, rest, y + 4});
    } else {
      DrawCoursesGround({0, y, width, y + 2});
      DrawCoursesGround({rest, y + 2, kScreen.right, y + 4});
    }
  }
}

void DrawGround() {
  constexpr int32_t kCrossingMs = 200;
  if (FadeState == kFadeToCourses || FadeState == kFadeFromCourses) {
    const int32_t ms = std::max(platform::Elapsed(platform::Now(), FadeStart), 0);
    DrawGroundsCrossing(100 - std::min(ms, kCrossingMs) / 2);
    if (ms > kCrossingMs) FadeState = kFadeNone;
  } else if (CourseMode) {
    DrawCoursesGround();
  } else {
    DrawSongsGround();
  }
}

void DrawNib() {
  if (lastSong < 0) return;
  const Rect row = RowPlace(0);
  DrawSprite(row.left - 42 + HeldRowPulse(), row.top - 3, kNibSprite);
}

void DrawListFades() {
  if (FadeState == kFadeIn || FadeState == kFadeEnd) DrawFades();
}

void ComposeFrame() {
  DrawGround();
  DrawPanel();
  if (GameState != kStateLists) DrawScores();
  DrawStatusLines();
  DrawOptions();
  DrawForcedPlayer();
  DrawPictureBox();
  DrawWheel();
  DrawListPosition();
  DrawFindLine();
  DrawHelp();
  DrawRecordWords();
  DrawNib();
  DrawListFades();
  DrawNetStatus();
}

}  // namespace

void DrawList() {
  CheckNextRow();
  Settle();
  MoveFadeIn();
  if (DDBack) ComposeFrame();
  PresentFrame();
}

}  // namespace qlm
