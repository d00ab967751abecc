// The settings file \_qlmfiles\qlm_conf.ini: read once at the start, written once at the end.
#pragma once

#include "base/text.h"
#include "files/ini_text.h"

namespace qlm {

// The text of a key, or `absent` when the file has none; either is cut at its first NUL and at 127
// characters.
Text GetIniValue(const IniText& file, TextView section, TextView key, TextView absent);

// Takes over what the file holds. A value that does not convert leaves its variable as it stands. Without a
// file the variables get the values of a new installation.
void LoadSettings();
// The values of a new installation.
void SetDefaultSettings();
// Writes every key of the table, and leaves all else in the file as it is. False when the file could not be
// written.
bool SaveSettings();

}  // namespace qlm
