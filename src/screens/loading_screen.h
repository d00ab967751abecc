// The loading screen, behind which a chart is loaded.
#pragma once

namespace qlm {

// One frame of it, drawn and presented.
void Loading();

// Lets events run while a chart is loaded, as DoEvents does. Where the load tells how far it is, a frame of
// the loading screen that shows it does so now and then.
void PumpLoad();

}  // namespace qlm
