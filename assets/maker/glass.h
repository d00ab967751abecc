// What sounds in the song of the inkwell: a muted piano at night, glass that is bowed or struck, a slow bass,
// ink. Heights are not matched here: who uses a sound brings it to its loudness.
#pragma once

#include "pitch.h"
#include "sound.h"

namespace assetmaker {

// A piano played with the soft pedal, each note with the string an octave above sounding along; `touch` 0 is
// a whisper, 1 firm.
Sound NightPiano(Pitch pitch, double seconds, double touch);

// A wet finger around the rim of a glass. Beats slowly, as no glass is quite round.
Sound BowedGlass(Pitch pitch, double seconds);

// The same glass, struck with a nib.
Sound StruckGlass(Pitch pitch);

// A low string drawn slowly, without a beginning that is heard.
Sound SlowBass(Pitch pitch, double seconds);

// A drop that falls into ink.
Sound InkDrop();

// A rod stirred once around the bottle.
Sound Swirl();

}  // namespace assetmaker
