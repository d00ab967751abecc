// The skin of each play mode.
#pragma once

namespace qlm {

// Loads the skin that the chart's mode takes.
void LoadSkinChoice();
// The skin in use becomes the one that the chart's mode takes, so that a change in play stays.
void StoreSkinChoice();

}  // namespace qlm
