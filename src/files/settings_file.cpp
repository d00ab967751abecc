// Settings between memory and file.
#include "files/settings_file.h"

#include <algorithm>
#include <string>
#include <utility>

#include "base/paths.h"
#include "files/data_folder.h"
#include "files/settings_keys.h"
#include "platform/files.h"
#include "platform/window.h"
#include "state/options.h"
#include "state/settings.h"

namespace qlm {
namespace {

constexpr int32_t kLongestValue = 127;

constexpr TextView kSettingsName = u"qlm_conf.ini";

Text SettingsPath() { return DataPath(kSettingsName); }

}  // namespace

Text GetIniValue(const IniText& file, TextView section, TextView key, TextView absent) {
  Text value = file.Find(section, key).value_or(Text(absent));
  value.resize(std::min(value.size(), value.find(u'\0')));
  // Quirk: longer values are cut, defaults too, so that skins below a very long path are not found again.
  return Text(Left(value, kLongestValue));
}

void SetDefaultSettings() {
  for (const auto& rows : {SettingKeys(), OwnSettingKeys()}) {
    for (const SettingKey& row : rows) {
      if (row.noFile) StoreSetting(row.variable, DefaultText(row.variable, *row.noFile));
    }
  }
}

void LoadSettings() {
  numObjs = 65535;
  if (const std::optional<std::string> bytes = platform::ReadFile(SettingsPath())) {
    const IniText file(*bytes);
    for (const auto& rows : {SettingKeys(), OwnSettingKeys()}) {
      for (const SettingKey& row : rows) {
        StoreSetting(row.variable,
                     GetIniValue(file, row.section, row.key, DefaultText(row.variable, row.absent)));
      }
    }
  } else {
    SetDefaultSettings();
  }
  if (HiSpeed == 0) RandomHiSpeed = true;
}

bool SaveSettings() {
  IniText file(platform::ReadFile(SettingsPath()).value_or(std::string()));
  const platform::WindowPlacement form = platform::NormalizeWindow();
  const std::pair<TextView, int32_t> geometry[] = {{u"Left", form.left},
                                                   {u"Top", form.top},
                                                   {u"Width", form.width},
                                                   {u"Height", form.height},
                                                   {u"WindowState", form.state}};
  for (const auto& [key, value] : geometry) file.Put(u"MainForm", key, ToText(value));
  for (const SettingKey& row : SettingKeys()) file.Put(row.section, row.key, SettingText(row.variable));
  for (const SettingKey& row : OwnSettingKeys()) {
    const Text value = SettingText(row.variable);
    if (file.Find(row.section, row.key) || value != row.noFile) file.Put(row.section, row.key, value);
  }
  return SaveDataFile(kSettingsName, file.Bytes());
}

}  // namespace qlm
