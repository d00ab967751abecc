// The data folder's one writer.
#include "files/data_folder.h"

#include <cstdint>
#include <optional>

#include "base/hooks.h"
#include "base/log.h"
#include "base/paths.h"
#include "platform/files.h"

namespace qlm {

bool TakeDataFolder() {
  keepsDataFolder = platform::LockFile(DataPath(u"debug.lock"));
  logOutput.file = keepsDataFolder;
  return keepsDataFolder;
}

bool SaveFile(TextView path, std::string_view bytes) {
  if (!keepsDataFolder && path.starts_with(DataPath(u""))) return true;
  if (platform::WriteFile(path, bytes)) return true;
  if (hooks.unwritten != nullptr) hooks.unwritten(path);
  return false;
}

std::string WrittenOver(TextView path, std::string bytes) {
  const auto end = static_cast<int64_t>(bytes.size());
  bytes += platform::ReadFilePart(path, end, INT64_MAX).value_or(std::string());
  return bytes;
}

bool SaveDataFile(TextView name, std::string_view bytes) { return SaveFile(DataPath(name), bytes); }

}  // namespace qlm
