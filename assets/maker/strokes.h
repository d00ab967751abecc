// What the characters of a stroke line mean.
#pragma once

#include <optional>

#include "plan.h"
#include "voices.h"

namespace assetmaker {

struct Stroke {
  Role role;
  Voice voice;
};

// The stroke of a character, `step` being its sixteenth in the bar. Nothing for a character without a
// meaning, and for '.', which is none.
std::optional<Stroke> StrokeNamed(char name, int step = 0);

}  // namespace assetmaker
