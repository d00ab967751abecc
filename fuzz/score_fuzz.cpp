// Any bytes as a score table: they are kept as far as they go, and a play ranks among whatever they say.
#include <cstddef>
#include <cstdint>
#include <cstdlib>
#include <memory>
#include <string>
#include <string_view>

#include "base/hooks.h"
#include "base/log.h"
#include "files/scores.h"
#include "screens/name_entry.h"
#include "state/gauge.h"
#include "state/session.h"
#include "state/settings.h"
#include "state/surfaces.h"

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size) {
  qlm::logOutput.file = false;
  const std::string_view bytes(reinterpret_cast<const char*>(data), size);
  qlm::TakeScores(bytes);
  if (size >= qlm::kScoreFileBytes && qlm::ScoreBytes() != bytes.substr(0, qlm::kScoreFileBytes))
    std::abort();

  static const auto back = std::make_shared<qlm::Surface>(640, 480);
  static const auto front = std::make_shared<qlm::Surface>(640, 480);
  qlm::DDBack = back;
  qlm::DDPrimary = front;
  qlm::SkinFile[1] = front;
  qlm::SysFont.Fill({0, 0, 8, 16});
  qlm::SysFontW = 8;
  qlm::NOVSync = true;
  qlm::Score[0] = 100;
  qlm::hooks.pumped = [] {
    if (qlm::GameState == qlm::kStateEnterName) qlm::ProcessKey_EnterName(13);
  };
  const int32_t rank = qlm::AddScoreDat();
  if (rank < 0 || rank > 10) std::abort();
  if (rank > 0 && qlm::scores.ScoreTable[rank - 1].score != 100) std::abort();
  return 0;
}
