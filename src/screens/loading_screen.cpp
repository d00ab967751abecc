// The loading screen: what was on the screen falls in tiles before the title picture, or before the dim desk.
#include "screens/loading_screen.h"

#include "base/text.h"
#include "graphics/draw.h"
#include "graphics/fades.h"
#include "graphics/present.h"
#include "platform/clock.h"
#include "platform/font.h"
#include "screens/boot_screen.h"
#include "state/chart.h"
#include "state/courses.h"
#include "state/surfaces.h"

namespace qlm {
namespace {

constexpr platform::Colour kPaper = platform::Rgb(0xF3, 0xEA, 0xD3);
constexpr platform::Colour kInk = platform::Rgb(0x3F, 0xB8, 0xAF);

// The words for a course, and the song that is being read, on a dark strip, since a title picture may be
// bright there.
void DrawCourseLoading() {
  constexpr int32_t kLeft = 32;
  DrawStrip({0, 408, kScreen.right, 462});
  const uint32_t dots = platform::Now() / 200 % 4;
  const Text words = Join(u"NOW LOADING", Text(dots, u'.'));
  platform::DrawFontText(*DDBack, kLeft, 416, words, 16, kPaper, true);
  if (CourseSong < 0 || CourseSong >= static_cast<int32_t>(CourseSongs.size())) return;
  const SongEntry& song = CourseSongs[static_cast<size_t>(CourseSong)];
  const Text line = Join(u"[", song.genre, u"] ", song.title, u" / ", song.artist);
  platform::DrawFontText(*DDBack, kLeft, 440, line, 12, kInk);
}

}  // namespace

void Loading() {
  if (DDBack) {
    if (DDStage) {
      DrawTitle();
    } else {
      DrawDesk();
    }
    DrawFadeTiles(30);
    if (CourseMode) DrawCourseLoading();
  }
  PresentFrame();
}

}  // namespace qlm
