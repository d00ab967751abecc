// The score table of one chart, and the name that the player entered last.
#pragma once

#include <array>
#include <cstdint>

#include "base/table.h"
#include "base/text.h"

namespace qlm {

// One row, in the widths that its file has.
struct ScoreEntry {
  int16_t clear = 0;           // 0 no, -1 yes: the gauge of side 0 ended at 80 or more
  std::array<char, 8> name{};  // code page 932, filled up with blanks; zero bytes in a row never filled
  float score = 0;
  float jpts = 0;
  float hiSpeed = 0;  // -1 when it followed the combo, 0 when it was random
  float realHiSpeed = 0;
  int16_t maxCombo = 0;
  uint8_t classIndex = 0;  // of RankLetters: 0 "SS" to 6 "E"
  uint8_t options1 = 0;    // bit 0 Hidden, bit 1 Sudden, bit 2 Stealth
  uint8_t options2 = 0;    // bit 0 Random, bit 1 ExRandom
  uint8_t options3 = 0;    // bit 0 Accel, bit 1 Quil, bit 2 Pressure
  int16_t reserved = 0;
  std::array<int16_t, 5> counts{};  // PERFECT to POOR

  friend bool operator==(const ScoreEntry&, const ScoreEntry&) = default;
};

struct Scores {
  Table<ScoreEntry, 9> ScoreTable;  // best first
  int32_t playCount = 0;
  int16_t cleared = 0;  // 0 no, -1 yes: the chart has been cleared once
  // Kept as long as the program runs.
  Text PlayerName = u"QuIl :-";
};
inline Scores scores;

}  // namespace qlm
