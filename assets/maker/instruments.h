// The pitched instruments of the stock sounds, each one note at a time, recorded in the room. Heights are not
// matched here: who uses a note brings it to its loudness.
#pragma once

#include "pitch.h"
#include "sound.h"

namespace assetmaker {

// A piano with a strip of felt between hammers and strings; `touch` 0 is a whisper, 1 a firm stroke. The
// damper falls after `seconds`.
Sound FeltPiano(Pitch pitch, double seconds, double touch);

// A double bass, plucked with the finger and left to ring for at most `seconds`.
Sound PluckedBass(Pitch pitch, double seconds);

// Three horns on one note; `force` 0 is mellow, 1 bright.
Sound Brass(Pitch pitch, double seconds, double force);

// A small wooden flute, as it is played before a drum.
Sound Fife(Pitch pitch, double seconds);

// A small string section that swells a little and sinks away again.
Sound Strings(Pitch pitch, double seconds);

// Steel bars, sounding as written.
Sound Glockenspiel(Pitch pitch);

Sound Timpani(Pitch pitch);

// A deep bell, struck softly.
Sound Bell(Pitch pitch, double seconds);

}  // namespace assetmaker
