// The loading of a skin, step by step.
#include "graphics/skin.h"

#include <optional>
#include <string>

#include "base/log.h"
#include "base/numbers.h"
#include "base/paths.h"
#include "graphics/display.h"
#include "graphics/skin_directives.h"
#include "graphics/skin_lines.h"
#include "graphics/skin_list.h"
#include "graphics/skin_watch.h"
#include "platform/files.h"
#include "state/chart.h"
#include "state/settings.h"
#include "state/skin.h"
#include "state/surfaces.h"

namespace qlm {
namespace {

// Where the BGA stands as long as no skin says where.
constexpr Rect kBootBga = {192, 128, 256, 256};  // x, y, width, height

// The sheets stay until others take their numbers.
void ClearSkin() {
  ClearSkinTables();
  SysFont.Clear();
  SysFontW = SysFontH = 0;
  MessageRect = {};
  FullRect = kScreen;
  DDSkinBack.reset();
}

void ReadSkinFile(TextView path, SkinReport* report) {
  const std::optional<std::string> bytes = platform::ReadFilePart(path, 0, kLongestSkin);
  if (bytes) ReadSkin(*bytes, report);
}

// Quirk: which lines are drawn is asked of the left placement alone, so that a line which stands for the
// right one only is never drawn.
void ListLines() {
  for (uint8_t line = 0; line < 16; ++line) {
    for (size_t side = 0; side < 2; ++side) {
      if (LinePos[side][0][line].id == 0) continue;
      Append(LineList[side], line);
      DebugLog(Join(u"linesadd:", line, u",", static_cast<int64_t>(side)));
    }
  }
}

void CountTitleChars() {
  if (SysFontW != 0) Assign(TitleChars, Round(static_cast<double>(TitleRect.right) / SysFontW));
}

// Quirk: a BGA surface that stands keeps its size, whatever size the skin asks for.
void PlaceBga() {
  const Rect& given = BgaRect[SideCount == 2 ? 1 : 0];
  const Rect& place = given == Rect{} ? kBootBga : given;
  BgaX = place.left;
  BgaY = place.top;
  BgaW = place.right;
  BgaH = place.bottom;
  BgaTarget = {0, 0, BgaW, BgaH};
  if (DDBga == nullptr && displayOpen) CreateBgaSurface();
}

}  // namespace

void loadSkin(TextView path, bool keep, SkinReport* report) {
  DebugLog(Join(u"[loadSkin] : ", GetFileName(path)));
  if (!keep) ClearSkin();
  if (!FileExists(path)) {
    DebugLog(u"SKIN NOT EXIST!");
    return;
  }
  ReadSkinFile(path, report == nullptr && WatchSkins ? NewWatchedReport() : report);
  ListLines();
  CountTitleChars();
  SkinPath = path;
  SkinIndex = FindSkin(SkinPath);
  PlaceNotes();
  PlaceBga();
}

void PlaceNotes() {
  for (int64_t row = 0; row < 20; ++row) {
    LaneSkin& note = NoteSkin[row];
    const bool right = row < 10 ? SCRATCH1P : SCRATCH2P;
    note.x = right ? note.xRight : note.xLeft;
  }
}

}  // namespace qlm
