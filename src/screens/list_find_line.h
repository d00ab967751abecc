// The line of the search within a list: what was typed, and how many rows hold it.
#pragma once

namespace qlm {

// Nothing while no search is on.
void DrawFindLine();

}  // namespace qlm
