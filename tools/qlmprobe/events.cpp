// Reading of events, word by word.
#include "tools/qlmprobe/events.h"

#include <algorithm>
#include <sstream>

namespace probe {
namespace {

constexpr int32_t kKeyNumbers = 401;

}  // namespace

std::optional<std::vector<KeyEvent>> ParseEvents(const std::string& text, std::string& wrong) {
  std::vector<KeyEvent> events;
  std::istringstream lines(text);
  int64_t number = 0;
  for (std::string line; std::getline(lines, line);) {
    ++number;
    std::istringstream words(line);
    KeyEvent event;
    std::string way;
    std::string rest;
    if (line.find_first_not_of(" \t\r") == std::string::npos) continue;
    if (!(words >> event.time >> way >> event.key) || (way != "down" && way != "up") || words >> rest ||
        event.key < 0 || event.key >= kKeyNumbers) {
      wrong = "line " + std::to_string(number) + " is not \"MS down KEY\" or \"MS up KEY\"";
      return std::nullopt;
    }
    event.down = way == "down";
    events.push_back(event);
  }
  return events;
}

int64_t ServingTurn(int64_t time, int32_t turnsPerSecond) {
  constexpr int64_t kNever = INT64_MAX / 2000;
  return (std::clamp<int64_t>(time, 0, kNever) * turnsPerSecond + 999) / 1000;
}

void OrderByTurns(std::vector<KeyEvent>& events, int32_t turnsPerSecond) {
  std::stable_sort(events.begin(), events.end(), [&](const KeyEvent& a, const KeyEvent& b) {
    return ServingTurn(a.time, turnsPerSecond) < ServingTurn(b.time, turnsPerSecond);
  });
}

}  // namespace probe
