// The data folder's one writer.
#include "files/data_folder.h"

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

bool SaveDataFile(TextView name, std::string_view bytes) {
  if (!keepsDataFolder) return true;
  const Text path = DataPath(name);
  if (platform::WriteFile(path, bytes)) return true;
  if (hooks.unwritten != nullptr) hooks.unwritten(path);
  return false;
}

}  // namespace qlm
