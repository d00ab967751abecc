// Every header's reset, in order.
#include "state/reset.h"

#include "state/chart.h"
#include "state/courses.h"
#include "state/gauge.h"
#include "state/judgement.h"
#include "state/keys.h"
#include "state/last_play.h"
#include "state/lists.h"
#include "state/message.h"
#include "state/network.h"
#include "state/options.h"
#include "state/records.h"
#include "state/scores.h"
#include "state/session.h"
#include "state/settings.h"
#include "state/skin.h"
#include "state/slots.h"
#include "state/song_find.h"
#include "state/song_select.h"
#include "state/sounds.h"
#include "state/surfaces.h"
#include "state/timeline.h"
#include "state/titles.h"
#include "state/transcript.h"
#include "state/wide_chart.h"

namespace qlm {

void ResetState() {
  ResetSettings();
  ResetOptions();
  ResetSlots();
  ResetChart();
  ResetWideChart();
  ResetLists();
  ResetSongSelect();
  ResetSongFind();
  ResetCourses();
  ResetTimeline();
  ResetSession();
  ResetJudgement();
  ResetGauge();
  ResetRecords();
  scores = {};
  lastPlay.reset();
  lateBlocks.reset();
  ResetNetwork();
  ResetKeys();
  ResetSkin();
  ResetSounds();
  ResetSurfaces();
  ResetMessage();
  ResetTitles();
  transcript = nullptr;
}

}  // namespace qlm
