// The skin of each play mode.
#include "play/skin_choice.h"

#include <cstddef>

#include "base/log.h"
#include "graphics/skin.h"
#include "state/chart.h"
#include "state/message.h"
#include "state/skin.h"

namespace qlm {
namespace {

// 0 one player, 1 two players, 2 double play; outside for a chart that is none of them. A chart without a
// player counts as one player's, and a mode of 4 as two players'.
int32_t PlayMode() {
  if (HdrPlayer == 0) return 0;
  return HdrPlayer == 4 ? 1 : HdrPlayer - 1;
}

// Null for a mode that no skin is kept for.
Text* ChosenSkin() {
  const auto mode = static_cast<size_t>(PlayMode());
  return mode < SkinMapPath.size() ? &SkinMapPath[mode] : nullptr;
}

bool Fits(const SkinEntry& skin) {
  switch (PlayMode()) {
    case 0: return skin.forAny || skin.for1P;
    case 1: return skin.forAny || skin.for2P;
    case 2: return skin.forAny || skin.forDP;
    default: return skin.forAny;
  }
}

}  // namespace

void LoadSkinChoice() {
  const Text* skin = ChosenSkin();
  if (skin == nullptr) return;
  DebugLog(Join(u"Load SkinMap(", PlayMode(), u") :", *skin));
  // Quirk: it is loaded twice in a row, and the log shows both.
  loadSkin(*skin, false);
  loadSkin(*skin, false);
}

void StoreSkinChoice() {
  Text* skin = ChosenSkin();
  if (skin == nullptr) return;
  DebugLog(Join(u"Restore SkinMap(", PlayMode(), u") :", SkinPath));
  // Where no skin was ever loaded there is none to keep.
  if (SkinPath.empty()) return;
  *skin = SkinPath;
  SkinMapIndex[static_cast<size_t>(PlayMode())] = SkinIndex;
}

void NextSkin() {
  int32_t index = SkinIndex;
  for (size_t tried = 0; tried < skinList.size(); ++tried) {
    ++index;
    if (index < 0 || static_cast<size_t>(index) >= skinList.size()) index = 0;
    const SkinEntry& skin = skinList[static_cast<size_t>(index)];
    if (!Fits(skin)) continue;
    SkinIndex = static_cast<int16_t>(index);
    DebugLog(Join(u"SKINCHANGE:", skin.title));
    loadSkin(skin.path, false);
    ShowMessage(Join(u"Skin Change: ", skin.title));
    return;
  }
}

}  // namespace qlm
