// Choosing and skipping of #RANDOM blocks.
#include "chart/random_blocks.h"

#include <cmath>

#include "base/log.h"
#include "base/numbers.h"
#include "base/rnd.h"
#include "chart/lines.h"

namespace qlm {

std::optional<int16_t> NamedBlocks(TextView line) { return RoundTo<int16_t>(Val(Argument(line, 8))); }

void RandomBlocks::SkippedLine(TextView line) {
  if (BeginsWith(line, u"IF")) {
    Assign(block_, Round(Val(Argument(line, 4))));
    CountIf();
    const Level* level = levels_.Find(nest_);
    if (level == nullptr || block_ == level->rndVal) skip_ = false;
  } else if (BeginsWith(line, u"ENDIF") && LevelIsCounted()) {
    LeaveLevel();
    skip_ = false;
  }
}

void RandomBlocks::Random(TextView line) {
  if (takeAll_) return;
  if (nest_ < INT16_MAX) ++nest_;
  if (Level* level = levels_.Find(nest_)) {
    Assign(level->rndMax, NamedBlocks(line));
    Assign(level->rndVal, RoundTo<int16_t>(std::floor(Rnd() * static_cast<float>(level->rndMax)) + 1));
    level->ifCount = 0;
    DebugLog(Join(u"RANDOM: ", level->rndVal, u"/", level->rndMax));
  }
  skip_ = true;
}

void RandomBlocks::If(TextView line) {
  if (takeAll_) return;
  DebugLog(Join(u"RANDOM END: ", line));
  if (LevelIsCounted()) {
    LeaveLevel();
  } else {
    CountIf();
    skip_ = true;
  }
}

void RandomBlocks::End(TextView line) {
  if (takeAll_) return;
  DebugLog(Join(u"RANDOM END: ", line));
  if (LevelIsCounted()) {
    LeaveLevel();
  } else {
    skip_ = true;
  }
}

bool RandomBlocks::LevelIsCounted() const {
  const Level* level = levels_.Find(nest_);
  return level == nullptr || level->ifCount >= level->rndMax;
}

void RandomBlocks::CountIf() {
  Level* level = levels_.Find(nest_);
  if (level != nullptr && level->ifCount < INT16_MAX) ++level->ifCount;
}

void RandomBlocks::LeaveLevel() {
  if (nest_ > INT16_MIN) --nest_;
}

}  // namespace qlm
