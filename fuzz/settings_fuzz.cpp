// Any bytes as a settings file: nothing is lost by reading, and what is put in is found again.
#include <cstddef>
#include <cstdint>
#include <cstdlib>
#include <string_view>

#include "files/ini_text.h"
#include "files/settings_file.h"
#include "files/settings_keys.h"

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size) {
  const std::string_view bytes(reinterpret_cast<const char*>(data), size);
  qlm::IniText file(bytes);
  if (file.Bytes() != bytes) std::abort();
  for (const qlm::SettingKey& row : qlm::SettingKeys()) {
    qlm::StoreSetting(row.variable, qlm::GetIniValue(file, row.section, row.key, row.absent));
  }
  for (const qlm::SettingKey& row : qlm::SettingKeys()) {
    file.Put(row.section, row.key, u"1 x");
    if (file.Find(row.section, row.key) != u"1 x") std::abort();
  }
  // What was written is read back as it stands in memory.
  if (qlm::IniText(file.Bytes()).Entries().size() != file.Entries().size()) std::abort();
  return 0;
}
