// The script of a battle: its charts, its players, and what each of them does.
#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace probe {

// What a player does, one step behind the other.
struct BattleStep {
  enum class Kind {
    kAwait,   // until `number` players have been in the table at once
    kShow,    // moves the cursor to row `number`
    kDecide,  // decides row `number`, as soon as the list takes keys
    kAttack,  // presses the key of an attack on place `number`, in the next play
    kDie,     // from here on: ends without a word as soon as a log line begins with `text`
    kLeave    // takes leave and ends
  };
  Kind kind = Kind::kAwait;
  int32_t number = 0;
  std::string text = {};
};

struct BattlePlayer {
  std::string name;
  // Comes when this one's log has a line that begins with the text; without it when the one before is in.
  std::string afterPlayer;
  std::string afterLine;
  std::vector<BattleStep> steps;
};

struct BattleScript {
  double speed = 1;                   // of the players' clocks
  int32_t seconds = 120;              // after which the battle is given up
  std::vector<std::string> charts;    // the rows of everybody's list
  std::vector<BattlePlayer> players;  // the first opens the session
};

// Lines end with LF or CR LF; empty ones are passed over, and so is what stands behind a "#" that begins the
// line or follows two blanks. Nothing, and `wrong` says why, when a line is not understood or charts or
// players are missing.
std::optional<BattleScript> ParseBattleScript(std::string_view text, std::string& wrong);

}  // namespace probe
