// The play screen, in the order in which it is drawn.
#include "play_screen/play_screen.h"

#include "graphics/bga.h"
#include "graphics/clips.h"
#include "graphics/fades.h"
#include "play_screen/field.h"
#include "play_screen/figures.h"
#include "play_screen/gauge_bar.h"
#include "play_screen/judgement_word.h"
#include "play_screen/key_legend.h"
#include "play_screen/long_notes.h"
#include "play_screen/marks.h"
#include "play_screen/message_strip.h"
#include "play_screen/net_status.h"
#include "play_screen/objects.h"
#include "play_screen/sides.h"
#include "sound/play.h"
#include "state/judgement.h"
#include "state/surfaces.h"

namespace qlm {
namespace {

void DrawBackground() {
  if (DDBack && DDSkinBack) DDBack->Copy(0, 0, *DDSkinBack, FullRect);
}

template <typename Draw>
void ForScoredSides(Draw draw) {
  for (size_t side = 0; side < ScoredSides(); ++side) draw(side);
}

void DrawStanding(size_t side) {
  // Quirk: it turns with every side and not with every frame. With one player the combo flickers; with two,
  // that of the first stands still and that of the second is never seen.
  BlinkToggle = !BlinkToggle;
  DrawJudgement(side, BlinkToggle);
  DrawSideFigures(side);
  DrawFan(side);
}

}  // namespace

void DrawPlayFrame() {
  DrawBackground();
  UpdateClips();
  if (!DrawBga()) DrawKeyLegend();
  DrawLinesAndKeys();
  DrawLanes();
  DrawProgressBars();
  DrawLayers();
  DrawJudgeLines();
  DrawLongNotes();
  DrawObjects();
  DrawChartFigures();
  DrawMarquee();
  DrawBombs();
  ForScoredSides(DrawStanding);
  ForScoredSides(DrawGaugeBar);
  ForScoredSides(DrawClassMark);
  ForScoredSides(DrawOptionMarks);
  DrawFades();
  DrawNetStatus();
  DrawTroubleStrip();
  DrawMessageStrip();
  VoicePurge();
}

}  // namespace qlm
