// Every key of the settings file, in the order in which it is read and written.
#pragma once

#include <cstdint>
#include <optional>
#include <span>
#include <variant>

#include "base/text.h"

namespace qlm {

// A text whose default lies below the program's folder.
struct ProgramPath {
  Text* path;
};
// A turntable's side: read as a number that is 0 or not, written as 0 or 1.
struct TurntableSide {
  bool* right;
};
using SettingVariable = std::variant<bool*, int32_t*, uint8_t*, float*, Text*, ProgramPath, TurntableSide>;

struct SettingKey {
  TextView section;
  TextView key;
  SettingVariable variable;
  TextView absent;  // read in place of a key that the file lacks; kNothing converts to no value
  std::optional<TextView> noFile;  // value when the file is missing; kStays leaves the start value
};

constexpr TextView kNothing;
constexpr std::nullopt_t kStays = std::nullopt;

std::span<const SettingKey> SettingKeys();
// Keys that came later, in a section of their own. They are written only where the file has them already or
// their value is not that of a new installation, so that files which do without them stay as they are.
std::span<const SettingKey> OwnSettingKeys();

// Stores the value that a text of the file stands for. False when it does not convert: the variable then
// stays as it is.
bool StoreSetting(const SettingVariable& variable, TextView text);
// The text that the file holds for the variable's value.
Text SettingText(const SettingVariable& variable);
// A default of the table as the file would hold it.
Text DefaultText(const SettingVariable& variable, TextView text);

}  // namespace qlm
