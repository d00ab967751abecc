// The late blocks of the last play. They have a file of their own, so that a play leaves the settings as they
// are.
#include "files/late_blocks.h"

#include <string>

#include "base/numbers.h"
#include "base/paths.h"
#include "files/data_folder.h"
#include "platform/files.h"
#include "platform/text.h"
#include "state/last_play.h"

namespace qlm {
namespace {

Text LateBlocksPath() { return DataPath(u"late_blocks.txt"); }

}  // namespace

int32_t SavedLateBlocks() {
  constexpr int64_t kMostDigits = 10;
  const std::string digits = platform::ReadFilePart(LateBlocksPath(), 0, kMostDigits).value_or(std::string());
  return MaxI32(ToWhole(platform::DecodeCp932(digits)).value_or(0), 0);
}

void SaveLateBlocks() {
  if (!keepsDataFolder || !lateBlocks) return;
  if (*lateBlocks > 0) {
    platform::WriteFile(LateBlocksPath(), platform::EncodeCp932(ToText(*lateBlocks)));
  } else {
    platform::DeleteFile(LateBlocksPath());
  }
}

}  // namespace qlm
