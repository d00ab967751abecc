// Parsing of battle scripts.
#include "tools/qlmprobe/battle_script.h"

#include <algorithm>
#include <charconv>
#include <map>

namespace probe {
namespace {

constexpr size_t kMostPlayersOfAScript = 16;

std::string_view Trimmed(std::string_view text) {
  const size_t first = text.find_first_not_of(" \t\r");
  if (first == std::string_view::npos) return {};
  return text.substr(first, text.find_last_not_of(" \t\r") - first + 1);
}

// A comment begins the line, or stands behind two blanks.
std::string_view WithoutComment(std::string_view line) {
  line = Trimmed(line.substr(0, line.find("  #")));
  return line.starts_with('#') ? std::string_view() : line;
}

// The first word, which is taken off the line.
std::string_view TakeWord(std::string_view& line) {
  const size_t end = std::min(line.find(' '), line.size());
  const std::string_view word = line.substr(0, end);
  line = Trimmed(line.substr(end));
  return word;
}

template <typename Number>
bool ToNumber(std::string_view text, Number least, Number most, Number& number) {
  const auto [end, error] = std::from_chars(text.data(), text.data() + text.size(), number);
  return error == std::errc() && end == text.data() + text.size() && number >= least && number <= most;
}

// "NAME", or "NAME after OTHER: TEXT".
bool ReadPlayer(std::string_view rest, BattlePlayer& player) {
  constexpr std::string_view kAfter = " after ";
  const size_t after = rest.find(kAfter);
  player.name = Trimmed(rest.substr(0, after));
  if (after == std::string_view::npos) return !player.name.empty();
  const std::string_view condition = rest.substr(after + kAfter.size());
  const size_t colon = condition.find(':');
  if (colon == std::string_view::npos) return false;
  player.afterPlayer = Trimmed(condition.substr(0, colon));
  player.afterLine = Trimmed(condition.substr(colon + 1));
  return !player.name.empty() && !player.afterPlayer.empty() && !player.afterLine.empty();
}

bool ReadStep(std::string_view word, std::string_view rest, BattleStep& step) {
  using Kind = BattleStep::Kind;
  static const std::map<std::string_view, Kind> kinds = {{"await", Kind::kAwait},   {"show", Kind::kShow},
                                                         {"decide", Kind::kDecide}, {"attack", Kind::kAttack},
                                                         {"die", Kind::kDie},       {"leave", Kind::kLeave}};
  const auto kind = kinds.find(word);
  if (kind == kinds.end()) return false;
  step.kind = kind->second;
  if (step.kind == Kind::kLeave) return rest.empty();
  if (step.kind == Kind::kDie) {
    step.text = rest;
    return !rest.empty();
  }
  return ToNumber(rest, 0, 255, step.number);
}

bool ReadLine(std::string_view line, BattleScript& script) {
  std::string_view rest = line;
  const std::string_view word = TakeWord(rest);
  if (word == "speed") return ToNumber(rest, 0.1, 10.0, script.speed);
  if (word == "seconds") return ToNumber(rest, 1, 3600, script.seconds);
  if (word == "chart") {
    script.charts.emplace_back(rest);
    return !rest.empty();
  }
  if (word == "player") {
    script.players.emplace_back();
    return ReadPlayer(rest, script.players.back());
  }
  if (script.players.empty()) return false;
  script.players.back().steps.emplace_back();
  return ReadStep(word, rest, script.players.back().steps.back());
}

bool KnowsPlayersAndRows(const BattleScript& script, std::string& wrong) {
  for (const BattlePlayer& player : script.players) {
    const auto waitsFor = std::ranges::find(script.players, player.afterPlayer, &BattlePlayer::name);
    if (!player.afterPlayer.empty() && waitsFor == script.players.end()) {
      wrong = "there is no player " + player.afterPlayer;
      return false;
    }
    for (const BattleStep& step : player.steps) {
      const bool row = step.kind == BattleStep::Kind::kShow || step.kind == BattleStep::Kind::kDecide;
      if (row && static_cast<size_t>(step.number) >= script.charts.size()) {
        wrong = "there is no chart " + std::to_string(step.number) + "; the first is 0";
        return false;
      }
    }
  }
  return true;
}

}  // namespace

std::optional<BattleScript> ParseBattleScript(std::string_view text, std::string& wrong) {
  BattleScript script;
  for (int number = 1; !text.empty(); ++number) {
    const size_t end = std::min(text.find('\n'), text.size());
    const std::string_view line = WithoutComment(text.substr(0, end));
    text.remove_prefix(std::min(end + 1, text.size()));
    if (line.empty()) continue;
    if (!ReadLine(line, script)) {
      wrong = "line " + std::to_string(number) + " is not understood: " + std::string(line);
      return std::nullopt;
    }
  }
  if (script.charts.empty() || script.players.empty()) {
    wrong = "a script wants a chart and a player";
    return std::nullopt;
  }
  if (script.players.size() > kMostPlayersOfAScript) {
    wrong = "a script has at most 16 players";
    return std::nullopt;
  }
  if (!KnowsPlayersAndRows(script, wrong)) return std::nullopt;
  return script;
}

}  // namespace probe
