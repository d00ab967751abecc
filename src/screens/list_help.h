// The help of the list screens: which keys do what.
#pragma once

namespace qlm {

void DrawHelp();

}  // namespace qlm
