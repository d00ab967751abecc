// The pictures of the screens outside a play.
#include "screens/stills.h"

#include "graphics/skin.h"
#include "play/pause.h"
#include "state/session.h"
#include "state/skin.h"

namespace qlm {

// The stills of the song select and the results are still to come.
void LoadSS() {}

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
