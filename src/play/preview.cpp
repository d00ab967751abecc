// The preview on the song select screen: the whole play, from the first note on, without a picture.
#include "play/preview.h"

#include <cstddef>
#include <optional>

#include "chart/loading.h"
#include "chart/wide_reading.h"
#include "files/course_files.h"
#include "platform/timers.h"
#include "play/object_events.h"
#include "play/position.h"
#include "play/reset.h"
#include "play/turn.h"
#include "sound/play.h"
#include "sound/slots.h"
#include "state/chart.h"
#include "state/courses.h"
#include "state/lists.h"
#include "state/message.h"
#include "state/session.h"
#include "state/settings.h"
#include "state/song_select.h"
#include "state/sounds.h"

namespace qlm {
namespace {

constexpr uint32_t kTickMs = 20;
constexpr int32_t kTicksUntilAsked = 25;  // half a second, so that it costs nothing to pass a row by
constexpr int32_t kLoadedUnits = 48;
constexpr int32_t kFadeStep = 50;
constexpr int32_t kSoftVolume = -1500;
constexpr TextView kOffer = u"MOST SOUNDS ARE MISSING: START WITH --wide, OR TICK IT IN THE MENU";

// Loads the chart without pictures; its sounds wait until they are asked for. Keys are taken meanwhile: a
// list that they bring up stays.
void LoadChart(TextView path) {
  const bool course = CourseMode;
  const int32_t mode = WAVLoadmode;
  const bool noBga = NoBGA;
  CourseMode = false;
  WAVLoadmode = 1;
  NoBGA = true;
  if (BMSLoad(path) < 1) LoadAbort = true;
  CourseMode = course || CourseMode;
  WAVLoadmode = mode;
  NoBGA = noBga;
}

// Whether the chart is the one in hand: keys may have moved on to another row, brought up another list or
// decided a play.
bool StillInHand(int32_t row, TextView path) {
  return GameState == kStateSongSelect && songSelect.deciding == 0 && listCursor == row &&
         static_cast<size_t>(row) < songList.size() && songList[static_cast<size_t>(row)].path == path;
}

// The place of the first sounding object, with the sounds there and just behind it loaded. Nothing when there
// is none, or when the list has moved on to another row meanwhile.
std::optional<int32_t> LoadFirstSounds(int32_t row) {
  if (TakeWidePreview()) return 0;
  std::optional<int32_t> first;
  for (int32_t index = 0; index < objCount; ++index) {
    const ChartObj* obj = FindObj(index);
    if (obj == nullptr || (first && obj->pos > *first + kLoadedUnits)) break;
    if (!Sounds(*obj)) continue;
    if (!first) first = obj->pos;
    loadwav(obj->value);
    if (LoadAbort || listCursor != row) return std::nullopt;
  }
  return first;
}

// The chart and its first sounds; gives the place of the first of them. Nothing when the load failed or was
// given up, or when the list moved on to another row meanwhile.
std::optional<int32_t> Load(TextView path, int32_t row) {
  previewLoading = true;
  LoadChart(path);
  std::optional<int32_t> first;
  if (!LoadAbort && StillInHand(row, path)) first = LoadFirstSounds(row);
  previewLoading = false;
  return first;
}

// A course is not heard: its songs are read for the panel.
void ReadCourseInHand() {
  if (listCursor <= 0) return CourseSongs.clear();
  if (static_cast<size_t>(listCursor) >= songList.size()) return;
  const SongEntry& row = songList[static_cast<size_t>(listCursor)];
  CourseLoad(row.path, false);
  songSelect.courseName = row.title;
}

void StopPreview() {
  platform::KillTimer(platform::kTimerPreview);
  previewRunning = false;
  ShowMessage(u"PLAY STOP");
  PlayAlive = false;
  PlayKeySound = false;
  UserPlay = true;
  UnloadBMS();
}

}  // namespace

void StartPreview() {
  if (previewLoading || (previewRunning && !previewStop && !PlayEnd)) return;
  // Events run during the load, and one that was told to stop would play what there is of the next chart.
  EndPreview();
  PreviewActive = true;
  if (BMSPreview == 0) return;
  if (GameState == kStateCourses) return ReadCourseInHand();
  if (GameState != kStateSongSelect) return;
  const int32_t row = listCursor;
  if (row < 0 || static_cast<size_t>(row) >= songList.size()) return;
  // A copy, since the list may change under a pump.
  const Text path = songList[static_cast<size_t>(row)].path;
  ShowMessage(Join(u"load:", path));
  const std::optional<int32_t> first = Load(path, row);
  if (!first) return;

  SeekChart(*first, true);
  PlayEnd = previewStop = false;
  PlayAlive = previewRunning = true;
  previewAsksIn = kTicksUntilAsked;
  UserPlay = false;
  PlayKeySound = true;
  platform::SetTimer(platform::kTimerPreview, kTickMs, PreviewTick);
}

void PreviewTick() {
  if (SelectVolume > kSoftVolume) SelectVolume -= kFadeStep;
  SetSEVolume(SE::kSelectMusic, SelectVolume);
  const bool offered = message.text == kOffer;
  PlayStep();
  // What is loaded meanwhile does not take the offer away.
  if (offered && message.text.starts_with(u"WAV LOAD")) ShowMessage(kOffer);
  if (previewAsksIn > 0 && --previewAsksIn == 0 && WideWouldSound()) ShowMessage(kOffer);
  if (PlayEnd || previewStop || !PlayAlive) StopPreview();
}

void EndPreview() {
  if (previewLoading) LoadAbort = true;
  if (previewRunning) StopPreview();
}

}  // namespace qlm
