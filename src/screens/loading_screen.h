// The loading screen, behind which a chart is loaded.
#pragma once

namespace qlm {

// One frame of it, drawn and presented.
void Loading();

}  // namespace qlm
