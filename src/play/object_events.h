// What the play position passes: key sound changes, objects, and the sounds that are soon needed.
#pragma once

#include "state/chart.h"

namespace qlm {

// Whether the object names a sound of its own: a background sound or a note.
bool Sounds(const ChartObj& obj);

// Lane sounds of the entries before the play position.
void FollowKeySounds();
// Lets every object up to and including the play position happen, once and in table order.
void PassObjects();
// Loads what sounds within the next 120 units, where it is not loaded yet. Walks on loopCounter.
void LoadSoundsAhead();

}  // namespace qlm
