// The skin of each play mode.
#pragma once

namespace qlm {

// Loads the skin that the chart's mode takes.
void LoadSkinChoice();
// The skin in use becomes the one that the chart's mode takes, so that a change in play stays.
void StoreSkinChoice();
// Loads the next skin of the list, from its start behind its end, that can show the chart's mode. Each is
// looked at once, the one in use last; nothing happens when none fits.
void NextSkin();

}  // namespace qlm
