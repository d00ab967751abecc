// The join of two songs of a course.
#include "play/song_change.h"

#include <optional>

#include "base/numbers.h"
#include "base/paths.h"
#include "chart/preparation.h"
#include "chart/wide_reading.h"
#include "graphics/bga.h"
#include "graphics/present.h"
#include "platform/clock.h"
#include "play/gauge.h"
#include "play/gauge_history.h"
#include "play_screen/gauge_graph.h"
#include "sound/slots.h"
#include "state/chart.h"
#include "state/courses.h"
#include "state/gauge.h"
#include "state/message.h"
#include "state/session.h"
#include "state/settings.h"
#include "state/slots.h"
#include "state/sounds.h"
#include "state/surfaces.h"
#include "state/timeline.h"
#include "state/wide_chart.h"

namespace qlm {
namespace {

// Null past the course's songs.
const SongEntry* SongInPlay() {
  const auto index = static_cast<size_t>(CourseSong);
  return CourseSong >= 0 && index < CourseSongs.size() ? &CourseSongs[index] : nullptr;
}

void TakeHeader(const SongEntry& song) {
  HdrTitle = song.title;
  HdrArtist = song.artist;
  HdrGenre = song.genre;
  HdrBPM = song.bpm;
  HdrPlayer = song.player;
  HdrPlayLevel = song.playLevel;
  HdrMidiFile = song.midiFile;
  HdrRank = song.rank;
  HdrVolWav = song.volWav;
  HdrTotal = song.total;
  // A course that was made by the classic reading has 0 where nothing is given.
  if (WideCharts) ChartVolume = song.volWav > 0 ? VolumeOf(song.volWav) : 0;
}

void ShowTitles() {
  SetCaption(ChartCaption());
  ShowMessage(Join(u"Song: [", int64_t{CourseSong} + 1, u"] ", HdrTitle, u" / ", HdrArtist));
}

void MarkOnGraph() {
  const std::optional<int32_t> from = HistorySlot();
  const std::optional<int32_t> to = Divide(int64_t{JPtsMax[0] / kJPtsANote} * 300, TotalNotes[0]);
  if (from && to) DrawSongMark(*from, 0, *to, 203);
}

void TakeLoadStates() {
  const SlotTable<bool>* sounds = CourseWavLoaded.Find(CourseSong);
  const SlotTable<uint8_t>* pictures = CourseBmpLoaded.Find(CourseSong);
  if (sounds == nullptr || pictures == nullptr) return;
  for (int32_t slot = 0; slot <= LastSlot; ++slot) {
    WavLoaded[slot] = (*sounds)[slot] ? 255 : 0;
    BmpLoaded[slot] = (*pictures)[slot];
  }
}

void LoadSongFiles() {
  SlotTable<bool>* sounds = CourseWavLoaded.Find(CourseSong);
  SlotTable<uint8_t>* pictures = CourseBmpLoaded.Find(CourseSong);
  for (int32_t slot = 0; slot <= LastSlot; ++slot) {
    loadwav(slot);
    if (sounds != nullptr) (*sounds)[slot] = true;
    BgaLoad(slot);
    if (pictures != nullptr) (*pictures)[slot] = 255;
    BmpLoaded[slot] = 255;
  }
}

void ShowTitlePicture(const SongEntry& song) {
  ReleaseStage();
  LoadStage(Join(GetFolder(song.path), song.stageFile));
  if (DDStage == nullptr) return;
  FadeState = kFadeTitle;
  FadeStart = platform::Now();
}

}  // namespace

void StoreExPts() {
  if (const std::optional<int16_t> stored = RoundTo<int16_t>(ExPts())) CourseExPts.Put(CourseSong, *stored);
}

void ChangeSong(int32_t song) {
  StoreExPts();
  CourseSong = song;
  const SongEntry* entry = SongInPlay();
  if (entry != nullptr) TakeHeader(*entry);
  ShowTitles();
  MarkOnGraph();
  SetSongMarquee();
  TakeLoadStates();
  SetJudgeWindow();
  curBaseBGA = curLayerBGA = -1;

  const uint32_t begin = platform::Now();
  if (CourseLoadMode == 1) LoadSongFiles();
  if (CourseEffect && entry != nullptr) ShowTitlePicture(*entry);
  // However long the disk took, the chart goes on from where it stood.
  playStart += static_cast<uint32_t>(platform::Elapsed(platform::Now(), begin));
}

}  // namespace qlm
