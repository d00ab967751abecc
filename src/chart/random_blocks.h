// The parts of a chart that a random number chooses: #RANDOM, #IF and #ENDIF of one read.
#pragma once

#include <cstdint>
#include <optional>

#include "base/table.h"
#include "base/text.h"

namespace qlm {

// How many blocks a #RANDOM names. Fails out of range.
std::optional<int16_t> NamedBlocks(TextView line);

// Blocks are told apart by counting #IF lines, not by matching #ENDIF to #IF: a level ends when as many #IF
// as its #RANDOM named have been counted. Quirk: with fewer #IF than that the rest of the file is skipped.
// Quirk: #ENDRANDOM counts as #ENDIF and takes the level one further down, and nothing brings it back: the
// next #RANDOM works on level 0, the one after it below. On a level outside the tables nothing is stored or
// drawn, and each test counts as passed, so that every #IF opens its block.
class RandomBlocks {
 public:
  // With `takeAll` nothing is drawn, and no block is ever skipped.
  explicit RandomBlocks(bool takeAll = false) : takeAll_(takeAll) {}

  bool Skipping() const { return skip_; }

  // Each line while skipping; only #IF and #ENDIF do anything.
  void SkippedLine(TextView line);

  // These three while not skipping.
  void Random(TextView line);
  void If(TextView line);
  void End(TextView line);

 private:
  struct Level {
    int16_t rndMax = 0;
    int16_t rndVal = 0;
    int16_t ifCount = 0;
  };

  bool LevelIsCounted() const;
  void CountIf();
  void LeaveLevel();

  bool takeAll_;
  Table<Level, 100> levels_;
  int16_t nest_ = 0;
  int32_t block_ = 0;  // number of the #IF read last
  bool skip_ = false;
};

}  // namespace qlm
