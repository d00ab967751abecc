// The skin of each play mode.
#include "play/skin_choice.h"

#include <cstddef>

#include "base/log.h"
#include "graphics/skin.h"
#include "state/chart.h"
#include "state/skin.h"

namespace qlm {
namespace {

// 0 one player, 1 two players, 2 double play.
int32_t PlayMode() { return HdrPlayer - 1; }

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
  *skin = SkinPath;
}

}  // namespace qlm
