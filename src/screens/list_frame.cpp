// The frame of the list screens, step by step in the order of the drawing.
#include "screens/list_frame.h"

#include "graphics/present.h"

namespace qlm {

void DrawList() { PresentFrame(); }

}  // namespace qlm
