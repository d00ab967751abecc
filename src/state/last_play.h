// What the last play came to.
#pragma once

#include <array>
#include <cstdint>
#include <optional>

#include "base/text.h"

namespace qlm {

enum class Outcome {
  kLeft,     // still runs, or the program was ended inside it: nothing of it is kept
  kStopped,  // by the player, with notes still to come
  kFailed,   // or ended below the mark
  kCleared,
};

struct LastPlay {
  Text title;
  Text artist;
  Text path;
  bool troubled = false;  // empty, silent or without an end
  int32_t playLevel = 0;
  Outcome outcome = Outcome::kStopped;
  bool machine = false;  // it played, or a record was shown
  double score = 0;
  int32_t classIndex = 0;           // of RankLetters
  std::array<int32_t, 5> counts{};  // 0 PERFECT … 4 POOR
};
// Nothing before the first play.
inline std::optional<LastPlay> lastPlay;

// Blocks that the sound device got too late in it; nothing before the first play.
inline std::optional<int32_t> lateBlocks;

}  // namespace qlm
