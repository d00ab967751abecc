// What sounds in the song of the blueprint: a synthesiser, drums without a room, and a record under a hand.
// Heights are not matched here: who uses a sound brings it to its loudness.
#pragma once

#include "pitch.h"
#include "sound.h"

namespace assetmaker {

// Two saws behind a filter that closes at once; `edge` 0 is round, 1 sharp.
Sound Pluck(Pitch pitch, double edge);

// A hollow tone that is held: odd harmonics alone.
Sound Reed(Pitch pitch, double seconds);

// A chord's tone, cut off short.
Sound SawStab(Pitch pitch, double seconds);

// Five saws a little apart, far behind.
Sound SawPad(Pitch pitch, double seconds);

Sound SynthBass(Pitch pitch);

Sound DryKick();
Sound DrySnare();

// A cymbal of noise that dies away within so many seconds.
Sound Hat(double seconds);

// The record is pushed, `lift` above 0, or pulled back, below 0.
Sound Scratch(double lift);

}  // namespace assetmaker
