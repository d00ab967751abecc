// Checks of header lines.
#include <array>

#include "base/numbers.h"
#include "chart/lines.h"
#include "tools/qlmprobe/check_facts.h"

namespace probe {
namespace {

using qlm::Join;
using qlm::Text;
using qlm::TextView;

TextView Value(const ChartLine& line, int64_t from) { return qlm::Trim(qlm::Mid(line.command, from)); }

// The first word, for messages.
Text Word(const ChartLine& line) { return line.command.substr(0, line.command.find_first_of(u" \t")); }

// A whole-number field. The value as the game takes it, nothing when it is passed over.
std::optional<int32_t> CheckWhole(ChartFacts& facts, const ChartLine& line, int64_t from, TextView name) {
  const TextView text = Value(line, from);
  const std::optional<int32_t> value = qlm::ToWhole(text);
  if (!value) {
    facts.Find(line.number, "number",
               Join(u"\"", text, u"\" is no number: ", name, u" keeps the value it had"));
  }
  return value;
}

// The slot that the two characters behind the word name.
int32_t CheckIndex(ChartFacts& facts, const ChartLine& line) {
  const TextView digits = qlm::Mid(line.command, 4, 2);
  const auto index = static_cast<int32_t>(qlm::ValHex(digits) & 255);
  if (digits.size() < 2 || !qlm::IsHexDigit(digits[0]) || !qlm::IsHexDigit(digits[1])) {
    facts.Find(line.number, "index",
               Join(u"\"", digits, u"\" is not two hexadecimal digits: the game takes slot ",
                    index < 16 ? u"0" : u"", qlm::Hex(static_cast<uint32_t>(index))));
  }
  return index;
}

void Define(ChartFacts& facts, std::map<int32_t, Definition>& table, const ChartLine& line, TextView word) {
  const int32_t index = CheckIndex(facts, line);
  const auto known = table.find(index);
  if (known != table.end() && !line.conditional) {
    facts.Find(line.number, "redefined",
               Join(u"#", word, qlm::Mid(line.command, 4, 2), u" stands in line ", known->second.line,
                    u" already: this one wins"));
  }
  table[index] = {line.number, Text(Value(line, 7))};
}

void CheckTempo(ChartFacts& facts, const ChartLine& line) {
  const bool table = qlm::Mid(line.command, 4, 1) != u" ";
  const TextView text = Value(line, table ? 7 : 5);
  const std::optional<float> tempo = qlm::ToSingle(text);
  if (!tempo) {
    facts.Find(line.number, "number",
               Join(u"\"", text, u"\" is no number: ",
                    table ? u"the tempo of the table keeps the value it had; a blank must follow #BPM alone"
                          : u"the tempo keeps the value it had"));
  } else if (!(*tempo > 0)) {
    facts.Find(line.number, "tempo",
               table ? u"a table tempo of 0 or below changes nothing" : u"with this tempo nothing moves");
  }
  if (table) facts.bpm[CheckIndex(facts, line)] = tempo.value_or(0);
}

// Fields and commands by their first three letters, as the reader looks at them.
void CheckCommand(ChartFacts& facts, const ChartLine& line) {
  const Text head = qlm::UCase(qlm::Left(line.command, 3));
  const Text longHead = qlm::UCase(qlm::Left(line.command, 6));
  if (head == u"WAV") {
    Define(facts, facts.wav, line, u"WAV");
    if (facts.wav.contains(0) && facts.wav[0].line == line.number) {
      facts.Find(line.number, "slot-0", u"slot 00 is never loaded: its sound stays silent");
    }
  } else if (head == u"BMP") {
    Define(facts, facts.bmp, line, u"BMP");
  } else if (head == u"STA") {
    facts.stage = Definition{line.number, Text(Value(line, 11))};
  } else if (head == u"BPM") {
    CheckTempo(facts, line);
  } else if (longHead.starts_with(u"RANK")) {
    const std::optional<int32_t> rank = CheckWhole(facts, line, 6, u"the rank");
    if (rank && (*rank < 0 || *rank > 3)) {
      facts.Find(line.number, "rank",
                 u"a rank outside 0 to 3 leaves the windows of the chart played before in force");
    }
  } else if (head == u"TOT") {
    CheckWhole(facts, line, 7, u"the total");
  } else if (head == u"VOL") {
    CheckWhole(facts, line, 8, u"the volume");
  } else if (longHead == u"PLAYER") {
    if (const auto player = CheckWhole(facts, line, 8, u"the play mode")) {
      facts.player = player;
      if (*player < 1 || *player > 3) {
        facts.Find(line.number, "player", u"the play mode is 1, 2 or 3");
      }
    }
  } else if (longHead == u"PLAYLE") {
    CheckWhole(facts, line, 11, u"the level");
  } else {
    constexpr std::array<TextView, 9> kKnown = {u"TIT", u"ART", u"GEN", u"MID", u"IF ",
                                                u"END", u"RAN", u"IF",  u""};
    for (const TextView known : kKnown) {
      if (head == known && (head != u"RAN" || longHead.starts_with(u"RAND"))) return;
    }
    facts.Find(line.number, "command", Join(u"the game does not know #", Word(line)));
  }
}

void CheckMissing(ChartFacts& facts) {
  const std::array<std::pair<TextView, TextView>, 3> fields = {
      {{u"TIT", u"#TITLE"}, {u"ART", u"#ARTIST"}, {u"GEN", u"#GENRE"}}};
  for (const auto& [head, name] : fields) {
    bool there = false;
    for (const ChartLine& line : facts.lines) there = there || qlm::BeginsWith(line.command, head);
    if (!there) {
      facts.Find(0, "missing-field",
                 Join(u"there is no ", name, u": the one of the chart played before stays on the screen"));
    }
  }
}

struct Level {
  int64_t line = 0;
  int64_t most = 0;  // blocks that the line announces
  int64_t blocks = 0;
};

void CloseLevel(ChartFacts& facts, const Level& level) {
  if (level.blocks < level.most) {
    facts.Find(level.line, "random",
               Join(u"#RANDOM ", level.most, u" has ", level.blocks,
                    u" #IF blocks: everything behind the chosen one is skipped to the end of the file"));
  } else if (level.blocks > level.most) {
    facts.Find(level.line, "random",
               Join(u"#RANDOM ", level.most, u" has ", level.blocks,
                    u" #IF blocks: those past the announced number are not chosen by it"));
  }
}

// The reader counts #IF lines and does not match blocks.
void CheckRandom(ChartFacts& facts) {
  std::optional<Level> level;
  bool inBlock = false;
  for (const ChartLine& line : facts.lines) {
    if (qlm::BeginsWith(line.command, u"RAND")) {
      if (inBlock) {
        facts.Find(line.number, "random",
                   u"a #RANDOM inside an #IF block is not seen when the block is skipped, and its #IF lines "
                   u"then count for the outer one");
      }
      if (level) CloseLevel(facts, *level);
      const std::optional<int32_t> most = qlm::RoundTo<int16_t>(qlm::Val(qlm::Mid(line.command, 8)));
      level = Level{line.number, most.value_or(0)};
      inBlock = false;
    } else if (qlm::BeginsWith(line.command, u"IF")) {
      if (!level) {
        facts.Find(
            line.number, "random",
            u"an #IF without a #RANDOM always holds and takes the level down, so that a later #RANDOM may "
            u"let every #IF block through");
      } else {
        ++level->blocks;
      }
      inBlock = true;
    } else if (qlm::BeginsWith(line.command, u"ENDRANDOM")) {
      facts.Find(line.number, "random",
                 u"#ENDRANDOM is not needed and takes the level down once more, so that a later #RANDOM may "
                 u"let every #IF block through");
    } else if (qlm::BeginsWith(line.command, u"END")) {
      inBlock = false;
    }
  }
  if (level) CloseLevel(facts, *level);
}

}  // namespace

void CheckHeader(ChartFacts& facts) {
  for (const ChartLine& line : facts.lines) {
    if (!qlm::IsNumbered(line.command)) CheckCommand(facts, line);
  }
  CheckMissing(facts);
  CheckRandom(facts);
}

}  // namespace probe
