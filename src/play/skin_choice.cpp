// The skin of each play mode.
#include "play/skin_choice.h"

#include <cstddef>

#include "base/log.h"
#include "graphics/skin.h"
#include "state/chart.h"
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

}  // namespace qlm
