// The ground of the tests of the list screens.
#include "tests/screens/list_screen_test.h"

#include <algorithm>

#include "base/hooks.h"
#include "platform/clock.h"
#include "screens/list_frame.h"
#include "screens/list_text.h"
#include "state/session.h"
#include "state/settings.h"
#include "state/song_select.h"

namespace qlm {
namespace {

constexpr Colour kLetter = 0x0040F0;  // red tells the byte

SurfacePtr presented;

SurfacePtr LetterSheet() {
  auto sheet = std::make_shared<Surface>(256, 64);
  for (int32_t byte = 33; byte < 127; ++byte) {
    const int32_t cell = byte - 32;
    const int32_t x = cell % 32 * 8;
    const int32_t y = cell / 32 * 16;
    SysFont[cell] = {x, y, x + 8, y + 16};
    sheet->Fill(SysFont[cell], kLetter | static_cast<Colour>(byte) << 16);
  }
  sheet->SetColourKey(0, 0);
  return sheet;
}

}  // namespace

ListScreen::ListScreen() {
  presented = Solid(640, 480, 0);
  hooks.framePresented = [] { presented->Copy(0, 0, *DDBack, kScreen); };
  SkinFile[1] = LetterSheet();
  SysFontW = 8;
  SysFontH = 16;
  GameState = kStateLists;
  DRAWLIMIT = 1;
  songSelect.listSettle = 1;
  songSelect.listFadeIn = 0;
  SetTime(kNow);
  songSelect.rowCursorTime = kNow;
}

ListScreen::~ListScreen() {
  presented.reset();
  ForgetLines();
}

void ListScreen::SetTime(uint32_t now) {
  platform::UseVirtualClock(now);
  songSelect.listFadeTime = now;
}

void ListScreen::Rows(std::initializer_list<TextView> titles) {
  songList.clear();
  for (const TextView title : titles) {
    SongEntry row;
    row.title = title;
    songList.push_back(row);
  }
  lastSong = static_cast<int32_t>(songList.size()) - 1;
  songCleared.assign(songList.size(), false);
  songHasRecord.assign(songList.size(), false);
  listCursor = 0;
}

void ListScreen::PaintSprite(const Rect& sprite) {
  SSObj = Solid(560, 480, 0);
  SSObj->Fill(sprite, kSpriteRed);
  SSObj->SetColourKey(0, 0);
}

void ListScreen::Draw() { DrawList(); }

Colour ListScreen::Pixel(int32_t x, int32_t y) { return presented->Pixel(x, y); }

std::string ListScreen::SystemText(int32_t x, int32_t y) {
  std::string text;
  for (int32_t at = x; at < kScreen.right; at += SysFontW) {
    const Colour colour = Pixel(at + 4, y + 8);
    if ((colour & 0xFFFF) != kLetter) break;
    text += static_cast<char>(colour >> 16);
  }
  return text;
}

Rect ListScreen::Around(Colour colour, const Rect& part) {
  Rect around{part.right, part.bottom, 0, 0};
  for (int32_t y = part.top; y < part.bottom; ++y) {
    for (int32_t x = part.left; x < part.right; ++x) {
      if (Pixel(x, y) != colour) continue;
      around = {std::min(around.left, x), std::min(around.top, y), std::max(around.right, x + 1),
                std::max(around.bottom, y + 1)};
    }
  }
  return around.right == 0 ? Rect{} : around;
}

int64_t ListScreen::Count(Colour colour, const Rect& part) {
  int64_t count = 0;
  for (int32_t y = part.top; y < part.bottom; ++y) {
    for (int32_t x = part.left; x < part.right; ++x) count += Pixel(x, y) == colour ? 1 : 0;
  }
  return count;
}

testing::AssertionResult ListScreen::ShowsText(const Rect& part, int32_t x, int32_t y, TextView text,
                                               const platform::FontLook& look, Colour colour) {
  Surface expected(640, 480);
  platform::DrawMask(expected, part, x, y, platform::RenderText(text, look), colour);
  for (int32_t row = part.top; row < part.bottom; ++row) {
    for (int32_t column = part.left; column < part.right; ++column) {
      if (Pixel(column, row) == expected.Pixel(column, row)) continue;
      return testing::AssertionFailure() << "pixel " << column << "," << row << " is " << std::hex
                                         << Pixel(column, row) << " and not " << expected.Pixel(column, row);
    }
  }
  return testing::AssertionSuccess();
}

}  // namespace qlm
