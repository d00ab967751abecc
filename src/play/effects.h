// The effects that strike a running play: tempo down, speed up, tempo up, shuffle, and the stall.
#pragma once

namespace qlm {

// Starts the stall: sounds and position stand still until the turn that is more than a second later. Behind a
// stall that no attack asked for, the play has failed.
void BreakPlay();
// Ends a stall that has run for a second, and lets sounds and position go on.
void EndStall();

// One tick of the effect in AttackKind, which runs since AttackStart. It acts, and is then tested for its
// end.
void WorkEffect();

}  // namespace qlm
