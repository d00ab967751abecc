// Any bytes as a key file: they are kept as far as they go, and no key that they map leads astray.
#include <cstddef>
#include <cstdint>
#include <cstdlib>
#include <string>
#include <string_view>

#include "base/log.h"
#include "files/key_table.h"
#include "shell/main_form.h"
#include "state/keys.h"
#include "state/session.h"
#include "state/timeline.h"

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size) {
  qlm::logOutput.file = false;
  const std::string_view bytes(reinterpret_cast<const char*>(data), size);
  qlm::TakeKeyTable(bytes);
  std::string kept(bytes.substr(0, 802));
  kept.resize(802, '\0');
  if (qlm::KeyTableBytes() != kept) std::abort();

  qlm::LaneNote.fill(-1);
  qlm::LaneSound.fill(-1);
  for (const int32_t state : {qlm::kStatePlay, qlm::kStateResults, qlm::kStateAutoLanes}) {
    for (int32_t key = qlm::kKeyJoy; key <= qlm::KeyMap.kLast; ++key) {
      qlm::GameState = state;
      qlm::ButtonDown(key);
      qlm::ButtonUp(key);
    }
  }
  return 0;
}
