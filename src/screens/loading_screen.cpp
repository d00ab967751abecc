// The loading screen: what was on the screen falls in tiles before the title picture, or before the dim desk.
#include "screens/loading_screen.h"

#include <algorithm>
#include <cstdint>

#include "base/text.h"
#include "graphics/draw.h"
#include "graphics/fades.h"
#include "graphics/inks.h"
#include "graphics/present.h"
#include "platform/clock.h"
#include "platform/font.h"
#include "screens/boot_screen.h"
#include "state/chart.h"
#include "state/courses.h"
#include "state/surfaces.h"

namespace qlm {
namespace {

constexpr int32_t kLeft = 32;
constexpr platform::Rect kWordsPlace = {0, 408, kScreen.right, 462};

// On a dark strip, since a title picture may be bright there.
void DrawWords() {
  DrawStrip(kWordsPlace);
  const uint32_t dots = platform::Now() / 200 % 4;
  const Text words = Join(u"NOW LOADING", Text(dots, u'.'));
  platform::DrawFontText(*DDBack, kLeft, 416, words, 16, inks::kPaper, true);
}

// The song of the course that is being read.
void DrawSong() {
  if (CourseSong < 0 || CourseSong >= static_cast<int32_t>(CourseSongs.size())) return;
  const SongEntry& song = CourseSongs[static_cast<size_t>(CourseSong)];
  const Text line = Join(u"[", song.genre, u"] ", song.title, u" / ", song.artist);
  platform::DrawFontText(*DDBack, kLeft, 440, line, 12, inks::kTeal);
}

// A bar along the lower edge of the strip, and for a single chart the figures.
void DrawProgress() {
  constexpr int32_t kBar = 3;
  const int32_t done = std::min(loadProgress.done, loadProgress.all);
  const auto width = static_cast<int32_t>(int64_t{kScreen.right} * done / loadProgress.all);
  DDBack->Fill({0, kWordsPlace.bottom - kBar, width, kWordsPlace.bottom}, inks::kTeal);
  if (CourseMode) return;
  platform::DrawFontText(*DDBack, kLeft, 440, Join(done, u" / ", loadProgress.all), 12, inks::kTeal);
}

}  // namespace

void Loading() {
  const bool tells = loadProgress.all > 0;
  if (DDBack) {
    if (DDStage) {
      DrawTitle();
    } else {
      DrawDesk();
    }
    DrawFadeTiles(30);
    if (CourseMode || tells) DrawWords();
    if (CourseMode) DrawSong();
    if (tells) DrawProgress();
  }
  PresentFrame();
}

void PumpLoad() {
  constexpr int32_t kFrameInterval = 100;  // ms
  const uint32_t now = platform::Now();
  if (!LoadRunning || loadProgress.all == 0 || platform::Elapsed(now, loadProgress.shown) < kFrameInterval) {
    DoEvents();
    return;
  }
  loadProgress.shown = now;
  Loading();
}

}  // namespace qlm
