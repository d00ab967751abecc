// The panel beside the wheel.
#include "screens/list_panel.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <cstddef>
#include <cstdlib>
#include <memory>
#include <numbers>

#include "base/numbers.h"
#include "base/rnd.h"
#include "base/text.h"
#include "graphics/draw.h"
#include "graphics/inks.h"
#include "platform/clock.h"
#include "screens/list_rows.h"
#include "screens/list_sprites.h"
#include "screens/list_text.h"
#include "screens/song_find.h"
#include "state/chart.h"
#include "state/courses.h"
#include "state/lists.h"
#include "state/session.h"
#include "state/song_find.h"
#include "state/song_select.h"
#include "state/timeline.h"

namespace qlm {
namespace {

using platform::Colour;
using platform::Rgb;

constexpr Colour kQuiet = Rgb(0xA8, 0xAC, 0xC0);
constexpr Colour kShade = Rgb(0, 0, 8);
constexpr Colour kWhite = Rgb(255, 255, 255);

constexpr Rect kSheet = {300, 230, 620, 370};
constexpr int32_t kLeft = 308;
constexpr int32_t kRight = 608;
constexpr Rect kGenre = {kLeft, 235, kRight, 249};
constexpr Rect kTitle = {kLeft, 247, kRight, 273};
constexpr Rect kPictureBox = {304, 78, 496, 222};
constexpr Rect kPicture = {0, 0, 192, 144};

// One drop of gold for each level, each of them bouncing a little later than the one before. Many of them
// stand closer, so that all are seen.
void DrawStars(int32_t y, int32_t level) {
  constexpr int32_t kWidth = 176;
  constexpr int32_t kApart = 13;
  constexpr double kBounce = 2.5;
  if (level <= 0) return;
  const int32_t apart = std::clamp(kWidth / level, 1, kApart);
  const int32_t seen = std::min(level, kWidth / apart);
  const uint32_t now = platform::Now();
  for (int32_t k = 0; k < seen; ++k) {
    const double phase = (now % 360 + 360'000 - 30.0 * k) * std::numbers::pi / 180;
    const auto lift = static_cast<int32_t>(RoundHalfEven(kBounce * std::sin(phase)));
    DrawSprite(kLeft + k * apart, y + lift, kStarSprite, kSheet);
  }
}

Text MinutesAndSeconds(int32_t ms) {
  const int32_t seconds = std::max(ms, 0) / 1000;
  return Join(Padded(seconds / 60, 2), u":", Padded(seconds % 60, 2));
}

// Quirk: until a preview has loaded the chart, its count of notes is unknown and flickers through random
// numbers.
Text NoteCount(int32_t notes) { return ToText(notes != 0 ? notes : static_cast<int32_t>(DrawRnd() * 1000)); }

void DrawNoteCounts(const SongEntry& song) {
  constexpr int32_t kTwoPlayers = 2;
  Text counts = NoteCount(TotalNotes[0]);
  if (song.player == kTwoPlayers) counts += Join(u" / ", NoteCount(TotalNotes[1]));
  DrawText(360, 340, counts, 0);
}

void DrawTitles(const SongEntry& song) {
  constexpr Rect kSubTitle = {kLeft, 269, kRight, 283};
  constexpr Rect kSubTitleShade = {kLeft + 1, 270, kRight + 1, 284};
  constexpr Rect kArtist = {kLeft + 68, 281, kRight, 295};
  DrawLine(kGenre, song.genre, kRowFont, inks::kFreshTeal);
  DrawLine(kTitle, songSelect.titleMain, kLargeFont, kWhite);
  DrawLine(kSubTitleShade, songSelect.titleSub, kSmallFont, kShade, Align::kRight);
  DrawLine(kSubTitle, songSelect.titleSub, kSmallFont, inks::kPaper, Align::kRight);
  DrawLine(kArtist, song.artist, kRowFont, inks::kPaper, Align::kRight);
}

void DrawSong() {
  const SongEntry* const song = PanelRow();
  if (song == nullptr) return;
  DrawTitles(*song);
  DrawStars(300, song->playLevel);
  DrawSprite(kLeft, 320, kRankLabel);
  if (song->rank >= 0 && song->rank < kRanks) DrawSprite(360, 320, RankSprite(song->rank));
  DrawSprite(kLeft, 340, kNotesLabel);
  DrawNoteCounts(*song);
  DrawSprite(490, 300, kTempoLabel);
  DrawText(540, 300, ToText(curBPM != 0 ? curBPM : song->bpm), 0);
  DrawSprite(490, 320, kTimeLabel);
  DrawText(540, 320, MinutesAndSeconds(song->lengthMs), 0);
  const int64_t kind = int64_t{song->player} - 1;
  if (kind >= 0 && kind < kPlayers) DrawSprite(308, 281, PlayerSprite(static_cast<int32_t>(kind)));
}

// The songs of the course in pages of five, a second each. The song that is being picked for the editor
// blinks.
void DrawCourseSongs() {
  constexpr int32_t kLines = 5;
  constexpr Rect kLinesBox = {310, 300, 609, 358};
  const uint32_t now = platform::Now();
  const int32_t songs = songSelect.courseMaking ? songSelect.courseNumSongs : numsongs;
  // Quirk: behind a multiple of five songs comes an empty page.
  const int32_t pages = songs / kLines + 1;
  const int32_t page =
      std::max(platform::Elapsed(now, songSelect.rowCursorTime), 0) / 1000 % (songs > kLines ? pages : 1);
  for (int32_t line = 0; line < kLines; ++line) {
    const int32_t index = page * kLines + line;
    if (index >= songs || static_cast<size_t>(index) >= CourseSongs.size()) return;
    if (songSelect.courseMaking && index == songSelect.courseSlot && now % 200 >= 100) continue;
    const SongEntry& song = CourseSongs[static_cast<size_t>(index)];
    const int32_t top = kLinesBox.top + 12 * line;
    const Rect box = {kLinesBox.left, top, kLinesBox.right, std::min(top + 14, kLinesBox.bottom)};
    DrawLine(box, Join(u"[", index + 1, u"] ", song.title, u" / ", song.artist), kRowFont, inks::kPaper);
  }
}

// While the wheel turns the course's name shakes.
int32_t NameShake() {
  if (songSelect.courseMaking) return 0;
  const double reach = std::min(std::abs(double{songSelect.listScroll}) * 100, 250.0);
  return static_cast<int32_t>(DrawRnd() * reach);
}

void DrawCourse() {
  const SongEntry* const course = PanelRow();
  const auto line = [](int32_t left, int32_t top) { return Rect{left, top, kRight, top + 14}; };
  DrawLine(line(310, 240), u"[COURSE MODE]", kSmallFont, inks::kFreshTeal);
  DrawLine(line(310, 255), u"TITLE: ", kRowFont, kQuiet);
  DrawLine(line(355 + NameShake(), 255), songSelect.courseName, kRowFont, kWhite);
  if (course == nullptr) return;
  DrawStars(282, course->playLevel);
  DrawText(540, 282, MinutesAndSeconds(course->lengthMs), 0);
}

// How to get charts into the lists.
void DrawHint() {
  constexpr int32_t kTop = 306;
  constexpr int32_t kLineHeight = 18;
  constexpr std::array<TextView, 2> kLines = {u"To add charts, drop a folder on the window,",
                                              u"or name it in the startup menu."};
  int32_t top = kTop;
  for (const TextView line : kLines) {
    DrawLine({kLeft, top, kRight, top + kLineHeight}, line, kRowFont, inks::kQuiet);
    top += kLineHeight;
  }
}

void DrawJukebox() {
  const SongEntry* const row = PanelRow();
  DrawLine(kGenre, u"SELECT JUKEBOX", kRowFont, inks::kFreshTeal);
  if (row != nullptr) DrawLine(kTitle, row->title, kLargeFont, kWhite);
}

// Each pixel of the small picture is the mean of those that it stands for.
void Shrink(Surface& small, const Surface& large) {
  const int64_t width = small.Width();
  const int64_t height = small.Height();
  for (int64_t y = 0; y < height; ++y) {
    const auto top = static_cast<int32_t>(y * large.Height() / height);
    const auto bottom = std::max(top + 1, static_cast<int32_t>((y + 1) * large.Height() / height));
    for (int64_t x = 0; x < width; ++x) {
      const auto left = static_cast<size_t>(x * large.Width() / width);
      const auto right = std::max(left + 1, static_cast<size_t>((x + 1) * large.Width() / width));
      uint32_t red = 0;
      uint32_t green = 0;
      uint32_t blue = 0;
      for (int32_t row = top; row < bottom; ++row) {
        for (const Colour colour : large.Row(row).subspan(left, right - left)) {
          red += colour >> 16;
          green += colour >> 8 & 255;
          blue += colour & 255;
        }
      }
      const auto count = static_cast<uint32_t>(bottom - top) * static_cast<uint32_t>(right - left);
      small.Row(static_cast<int32_t>(y))[static_cast<size_t>(x)] =
          Rgb(red / count, green / count, blue / count);
    }
  }
}

// The picture is brought to the box's size once, and not in each frame.
void PrepareStage() {
  static std::weak_ptr<Surface> shrunk;
  static std::weak_ptr<Surface> into;
  if (shrunk.lock() == DDStage && into.lock() == DDPreview) return;
  Shrink(*DDPreview, *DDStage);
  shrunk = DDStage;
  into = DDPreview;
}

}  // namespace

void DrawPanel() {
  DrawSprite(kSheet.left, kSheet.top, kSheetSprite);
  if (GameState == kStateSongSelect) DrawSong();
  if (GameState == kStateLists) DrawJukebox();
  if (GameState == kStateLists || RowsOfWholeList() == 0) DrawHint();

  if (GameState == kStateCourses) DrawCourse();
  if (CourseMode && GameState != kStateSongSelect) DrawCourseSongs();
}

void DrawPictureBox() {
  if (!DDBack) return;
  if (DDStage && DDPreview) {
    PrepareStage();
    DDBack->Copy(kPictureBox.left, kPictureBox.top, *DDPreview, kPicture);
  } else if (SSNoStage) {
    constexpr int32_t kFrameMs = 150;
    const auto frame = static_cast<int32_t>(platform::Now() / kFrameMs % kDemoFrames);
    DDBack->Copy(kPictureBox.left, kPictureBox.top, *SSNoStage, DemoSprite(frame), platform::Keyed::kYes);
  }
  DrawSprite(kPictureBox.left - 6, kPictureBox.top - 6, kFrameSprite);
}

void DrawListPosition() {
  constexpr Rect kPlace = {440, 12, 632, 28};
  if (lastSong < 0 && songFind.filtered) return;
  DrawLine(kPlace, Join(listCursor, u" / ", lastSong), kRowFont, kQuiet, Align::kRight);
}

}  // namespace qlm
