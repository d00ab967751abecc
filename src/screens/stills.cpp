// The pictures of the screens outside a play.
#include "screens/stills.h"

#include <cstdint>

#include "base/log.h"
#include "base/paths.h"
#include "base/text.h"
#include "graphics/bitmaps.h"
#include "graphics/skin.h"
#include "play/pause.h"
#include "state/session.h"
#include "state/skin.h"
#include "state/surfaces.h"

namespace qlm {

namespace {

void Load(TextView name, SurfacePtr& surface) {
  Rect unused;
  LoadBitmap(DataPath(name), surface, unused);
}

void Report(TextView what) {
  DebugLog(Join(u"[LoadSS] ", what, u" Surface created. VRAM FREE:", FreeVideoMemory()));
}

// As a palette of greys shows a picture: the grey that is nearest to a colour is the mean of its channels.
void TurnGrey(Surface& picture) {
  for (int32_t y = 0; y < picture.Height(); ++y) {
    for (platform::Colour& pixel : picture.Row(y)) {
      const uint32_t grey = ((pixel >> 16) + (pixel >> 8 & 255) + (pixel & 255) + 1) / 3;
      pixel = platform::Rgb(grey, grey, grey);
    }
  }
}

}  // namespace

void LoadSS() {
  for (SurfacePtr* const surface : {&SSObj, &SSNoStage, &ResultObj}) surface->reset();
  Load(u"ssbg.bmp", SSBack);
  Load(u"ssbg.bmp", SSBackDim);
  if (SSBackDim) TurnGrey(*SSBackDim);
  Report(u"SongSelect");
  Load(u"ssobj.bmp", SSObj);
  Report(u"SSObj");
  Load(u"ssnostg.bmp", SSNoStage);
  Report(u"SSNOSTG");
  Load(u"resobj.bmp", ResultObj);
  Report(u"Result");
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
