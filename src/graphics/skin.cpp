// Skins.
#include "graphics/skin.h"

#include "base/log.h"
#include "base/paths.h"
#include "state/skin.h"

namespace qlm {

void loadSkin(TextView path, bool) {
  DebugLog(Join(u"[loadSkin] : ", GetFileName(path)));
  if (!FileExists(path)) {
    DebugLog(u"SKIN NOT EXIST!");
    return;
  }
  // The lines of the file are still to be read.
  SkinPath = path;
}

void PlaceNotes() {}
void UpdateSkinList() {}

void PickOptionMarks() {
  // The marks come with the skin's tables.
}

}  // namespace qlm
