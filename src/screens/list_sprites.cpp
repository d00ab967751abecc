// The sprites of the list screens.
#include "screens/list_sprites.h"

#include "graphics/draw.h"

namespace qlm {

void DrawSprite(int32_t x, int32_t y, const Rect& sprite, const Rect& clip) {
  if (DDBack && SSObj) ClippedBlt(*DDBack, clip, x, y, *SSObj, sprite, platform::Keyed::kYes);
}

}  // namespace qlm
