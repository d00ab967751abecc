// The picture of the course editor: lines of text on blueprint paper.
#include "screens/course_editor_frame.h"

#include <algorithm>
#include <cstddef>
#include <cstdint>

#include "base/text.h"
#include "graphics/draw.h"
#include "graphics/inks.h"
#include "graphics/present.h"
#include "platform/clock.h"
#include "platform/text.h"
#include "screens/list_text.h"
#include "screens/words.h"
#include "sound/play.h"
#include "state/courses.h"
#include "state/session.h"
#include "state/song_select.h"
#include "state/sounds.h"
#include "state/surfaces.h"

namespace qlm {
namespace {

using platform::Colour;
using platform::Rgb;

constexpr int32_t kPitch = 15;  // pixels from line to line
constexpr int32_t kLeft = 30;
constexpr int32_t kArtistLeft = 330;
constexpr int32_t kSongsTop = 90;
constexpr int32_t kHelpTop = 430;

constexpr Colour kPaper = Rgb(0x0D, 0x25, 0x4A);
constexpr Colour kSquares = platform::Mix(kPaper, Rgb(0xFF, 0xFF, 0xFF), 20);
constexpr Colour kMargin = Rgb(0x3F, 0x6F, 0xA8);
constexpr Colour kHelpInk = Rgb(0xB9, 0xD2, 0xEE);

// The paper.

void DrawPaper() {
  constexpr Rect kMarginLine = {27, 29, 28, 420};
  DDBack->Fill(kScreen, kPaper);
  for (int32_t x = kPitch; x < kScreen.right; x += kPitch)
    DDBack->Fill({x, 0, x + 1, kScreen.bottom}, kSquares);
  for (int32_t y = kPitch - 1; y < kScreen.bottom; y += kPitch) {
    DDBack->Fill({0, y, kScreen.right, y + 1}, kSquares);
  }
  DDBack->Fill(kMarginLine, kMargin);
}

// Text on the grid of the bitmap font.

bool HasCell(char16_t unit) { return unit < 128; }

// Cells that a letter takes: a byte of the code page each, as a kanji is twice as wide as a letter.
int32_t CellsOf(TextView letter) {
  return HasCell(letter[0]) ? 1 : static_cast<int32_t>(platform::EncodeCp932(letter).size());
}

// The head of the text that has room in so many cells.
TextView Fitting(TextView text, int32_t cells) {
  for (size_t at = 0; at < text.size(); ++at) {
    cells -= CellsOf(text.substr(at, 1));
    if (cells < 0) return text.substr(0, at);
  }
  return text;
}

// The letters from `at` on that the bitmap font all has, or all lacks.
TextView RunFrom(TextView text, size_t at) {
  size_t end = at + 1;
  while (end < text.size() && HasCell(text[end]) == HasCell(text[at])) ++end;
  return text.substr(at, end - at);
}

// Letters that the bitmap font lacks stand in the outline font; those behind them go on in the next cell.
void Write(int32_t x, int32_t y, TextView text) {
  if (SysFontW == 0) return;
  const platform::FontLook look{.height = 2 * SysFontW - 1};
  text = Fitting(text, (kScreen.right - x) / SysFontW);
  for (size_t at = 0; at < text.size();) {
    const TextView run = RunFrom(text, at);
    if (HasCell(run[0])) {
      DrawText(x, y, run, 0);
      x += SysFontW * static_cast<int32_t>(run.size());
    } else {
      DrawLine({x, y, kScreen.right, y + SysFontH}, run, look, inks::kPaper);
      x += (LineWidth(run, look) + SysFontW - 1) / SysFontW * SysFontW;
    }
    at += run.size();
  }
}

// The lines.

// The line in hand blinks: a tenth of a second in every half it is left out.
bool Shows(int32_t line) { return line != songSelect.courseCursor || platform::Now() % 500 > 100; }

constexpr int32_t TopOfSong(int32_t index) { return kSongsTop + kPitch * index; }

// Quirk: the lines do not scroll. The 23rd song runs into the help, and from the 26th on they stand below the
// screen.
int32_t TopOf(int32_t line) { return line < 0 ? 60 + kPitch * line : TopOfSong(line); }

void WriteLabel(int32_t line, TextView label) {
  if (Shows(line)) Write(kLeft, TopOf(line), label);
}

bool MarkOfTypingShows() { return GameState == kStateEnterCourse && platform::Now() % 1000 >= 500; }

void WriteHead() {
  const int32_t values = 13 * SysFontW + kLeft;
  Write(0, 10, u"quillmarch COURSE EDITOR");
  WriteLabel(kCourseNameLine, u"COURSE NAME: ");
  Write(values, TopOf(kCourseNameLine), Join(songSelect.courseName, MarkOfTypingShows() ? u"_" : u""));
  WriteLabel(kCourseStarsLine, u"STARS : ");
  Write(values, TopOf(kCourseStarsLine), Text(songSelect.courseLevel, u'*'));
}

void WriteSong(int32_t index, const SongEntry& song) {
  if (!Shows(index)) return;
  const int32_t y = TopOfSong(index);
  const TextView title = Fitting(song.title, (kArtistLeft - kLeft) / SysFontW - 10);
  Write(kLeft, y, Join(Padded(index + 1, 3), u". [", song.playLevel, u"] ", title));
  Write(kArtistLeft, y, Join(u"/ ", song.artist));
}

void WriteSongs() {
  const int32_t count = songSelect.courseNumSongs;
  if (SysFontW == 0) return;
  for (int32_t index = 0; index < count && TopOfSong(index) < kScreen.bottom; ++index) {
    WriteSong(index, CourseSongs[static_cast<size_t>(index)]);
  }
  WriteLabel(count, u"[ A D D   N E W   S O N G ]");
}

TextView HelpOf(int32_t line) {
  if (line == kCourseNameLine && GameState == kStateEnterCourse) {
    return u"コース名を入力してください. Enterで決定.";
  }
  if (line == kCourseNameLine) return u"Enterでコース名入力. ";
  if (line == kCourseStarsLine) return u"←→キーで☆の数を決めてください. 表示のみで難易度には影響しません.";
  if (line == songSelect.courseNumSongs) return u"Enterキーを押すと新規に曲を追加します.";
  return u"Enterキーを押すと曲の変更. Delキーで曲を削除.";
}

void WriteHelp() {
  DrawLine({0, kHelpTop, kScreen.right, kHelpTop + kRowFont.height}, Words(HelpOf(songSelect.courseCursor)),
           kRowFont, kHelpInk);
  const auto wobble = static_cast<int32_t>(platform::Now() / 100 % 4);
  Write(400 + wobble, 10, u"[ESC]Exit [F10]Save");
}

void ComposeFrame() {
  DrawPaper();
  WriteHead();
  WriteSongs();
  Write(10, TopOf(songSelect.courseCursor), u">>");
  WriteHelp();
}

// The list's music, which a preview had made soft, comes back.
void RaiseMusic() {
  constexpr int32_t kStep = 50;  // a frame
  if (previewRunning || SelectVolume >= 0) return;
  SelectVolume = std::min(SelectVolume + kStep, 0);
  SetSEVolume(SE::kSelectMusic, SelectVolume);
}

}  // namespace

void mEditCourse() {
  songSelect.courseCursor =
      std::clamp<int32_t>(songSelect.courseCursor, kCourseNameLine, songSelect.courseNumSongs);
  if (DDBack) ComposeFrame();
  RaiseMusic();
  PresentFrame();
}

}  // namespace qlm
