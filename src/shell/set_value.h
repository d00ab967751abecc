// Setting of a setting or a play option by its name, as tools take them.
#pragma once

#include <optional>

#include "base/text.h"

namespace qlm {

// Takes the keys of the settings file and the play options, in any letter case: HalfField, Random, ExRandom,
// FourDMode, Pressure, HazardGauge, RandomHiSpeed, ComboHiSpeed, EchoEnabled, PlayerForce (0 to 3) and
// AutoLane (channels joined by "+"). Gives what is wrong, or nothing when the value was stored.
std::optional<Text> SetValue(TextView name, TextView value);

}  // namespace qlm
