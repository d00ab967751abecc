// Key files, for the commands that read one.
#pragma once

#include <string>

#include "base/json.h"

namespace probe {

using qlm::Json;

// Takes a key file into KeyMap. False when it cannot be read: standard error then says so.
bool ReadKeyFile(const std::string& file);

// The keys `functions` ({code, inputs, text} in the order of the game's list) and `unknown` ([input, code] of
// codes that mean nothing) of what KeyMap holds.
void PutKeys(Json& json);

}  // namespace probe
