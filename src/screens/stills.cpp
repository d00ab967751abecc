// The pictures of the screens outside a play.
#include "screens/stills.h"

#include "base/log.h"
#include "base/paths.h"
#include "graphics/bitmaps.h"
#include "graphics/skin.h"
#include "play/pause.h"
#include "state/session.h"
#include "state/skin.h"
#include "state/surfaces.h"

namespace qlm {

// The stills of the song select are still to come.
void LoadSS() {
  Rect size;
  ResultObj.reset();
  LoadBitmap(DataPath(u"resobj.bmp"), ResultObj, size);
  DebugLog(Join(u"[LoadSS] Result Surface created. VRAM FREE:", FreeVideoMemory()));
}

void RestorePictures() {
  loadSkin(SkinPath, false);
  if (GameState != kStatePlay && GameState != kStateResults) {
    LoadSS();
  } else if (PlayAlive) {
    // Quirk: a play that its player had paused goes on too.
    BMSResume();
  }
}

}  // namespace qlm
