// What the keys do in a play, and what they do on every screen.
#pragma once

#include <cstdint>

namespace qlm {

// The channel of the lane that a key plays, 11 to 29, the turntable being 16 or 26 for either direction. 0
// for a key that plays none.
int32_t LaneChannel(int32_t key);

// A key of the play goes down: the hold of Esc, pause, turntables, lanes.
void ProcessKey_Play(int32_t key);

// A key of the lane with this channel goes up. Nothing is judged.
void ReleaseLane(int32_t channel);

// Speeds, volume, pictures, skins and the like. A key that does nothing here is passed over.
void ProcessKey_Settings(int32_t key);

}  // namespace qlm
