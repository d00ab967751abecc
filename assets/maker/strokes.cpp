// One character for each way of striking, scratching or drawing.
#include "strokes.h"

namespace assetmaker {

std::optional<Stroke> StrokeNamed(char name, int step) {
  switch (name) {
    case 'X': return Stroke{Role::field, Voice::fieldAccent};
    case 'x': return Stroke{Role::field, step % 2 == 0 ? Voice::fieldRight : Voice::fieldLeft};
    case 'f': return Stroke{Role::field, Voice::fieldFlam};
    case 'r': return Stroke{Role::field, Voice::shortRoll};
    case 'R': return Stroke{Role::field, Voice::longRoll};
    case 'B': return Stroke{Role::lowDrum, Voice::bassDrum};
    case 'C': return Stroke{Role::metal, Voice::cymbals};
    case 't': return Stroke{Role::metal, Voice::triangle};
    case 'b': return Stroke{Role::brush, Voice::brushTap};
    case 's': return Stroke{Role::brush, Voice::brushSweep};
    case 'u': return Stroke{Role::pen, Voice::penUp};
    case 'd': return Stroke{Role::pen, Voice::penDown};
    case 'l': return Stroke{Role::pen, Voice::penLong};
    case 'U': return Stroke{Role::pen, Voice::broadUp};
    case 'D': return Stroke{Role::pen, Voice::broadDown};
    case 'n': return Stroke{Role::tap, Voice::nibTap};
    case 'i': return Stroke{Role::tap, Voice::inkDrop};
    case 'w': return Stroke{Role::scratch, Voice::swirl};
    case 'K': return Stroke{Role::lowDrum, Voice::dryKick};
    case 'S': return Stroke{Role::field, Voice::drySnare};
    case 'h': return Stroke{Role::metal, Voice::closedHat};
    case 'H': return Stroke{Role::metal, Voice::openHat};
    case 'z': return Stroke{Role::scratch, Voice::scratchForth};
    case 'Z': return Stroke{Role::scratch, Voice::scratchBack};
    default: return std::nullopt;
  }
}

}  // namespace assetmaker
