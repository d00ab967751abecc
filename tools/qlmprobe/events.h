// Events files: keys pressed and let go, by the clock of the chart.
#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <vector>

namespace probe {

struct KeyEvent {
  int64_t time = 0;  // ms on the chart's clock
  bool down = false;
  int32_t key = 0;  // 0 to 400
};

// One event a line, "MS down KEY" or "MS up KEY", in the order of the file; blank lines are passed over.
// Nothing, and `wrong` tells of the first line that is none, when there is one.
std::optional<std::vector<KeyEvent>> ParseEvents(const std::string& text, std::string& wrong);

// The turn that serves an event of this time: the first one at or behind it, 0 for a negative time.
int64_t ServingTurn(int64_t time, int32_t turnsPerSecond);

// A file need not be in the order of its times: each turn serves what is due by then, as the file has it.
void OrderByTurns(std::vector<KeyEvent>& events, int32_t turnsPerSecond);

}  // namespace probe
