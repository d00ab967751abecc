// The row that a play comes to.
#include "play/score_entry.h"

#include <algorithm>
#include <optional>
#include <string>

#include "base/numbers.h"
#include "platform/text.h"
#include "state/gauge.h"
#include "state/judgement.h"
#include "state/options.h"

namespace qlm {
namespace {

constexpr float kFollowsCombo = -1;

// What the scroll factor is told as.
float StoredHiSpeed() {
  if (ComboHiSpeed) return kFollowsCombo;
  return RandomHiSpeed ? 0 : HiSpeed;
}

uint8_t Bits(bool bit0, bool bit1, bool bit2 = false) {
  return static_cast<uint8_t>((bit0 ? 1 : 0) | (bit1 ? 2 : 0) | (bit2 ? 4 : 0));
}

}  // namespace

std::array<char, 8> NameOfRow(TextView name) {
  std::array<char, 8> row{};
  std::string bytes = platform::EncodeCp932(name);
  bytes.resize(row.size(), ' ');
  std::ranges::copy(bytes, row.begin());
  return row;
}

void FillEntry(ScoreEntry& entry) {
  entry.clear = Gauge[0] >= kClearGauge ? int16_t{-1} : int16_t{0};
  entry.name = NameOfRow(scores.PlayerName);
  Assign(entry.score, Narrow(Score[0]));
  entry.jpts = JPts[0];
  entry.hiSpeed = StoredHiSpeed();
  entry.realHiSpeed = RealHiSpeed;
  Assign(entry.maxCombo, RoundTo<int16_t>(MaxCombo[0]));
  entry.classIndex = static_cast<uint8_t>(ClassOf(JPts[0], JPtsMax[0]));
  entry.options1 = Bits(Hidden, Sudden, Stealth);
  entry.options2 = Bits(Random, ExRandom);
  entry.options3 = Bits(Accel, Quil, Pressure);
  for (size_t grade = 0; grade < entry.counts.size(); ++grade) {
    Assign(entry.counts[grade], RoundTo<int16_t>(JudgeCount[0][grade]));
  }
}

}  // namespace qlm
