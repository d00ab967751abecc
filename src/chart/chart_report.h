// What the reading of a chart notes down for its author. The game reads without a report and pays nothing for
// it.
//
// A read for a report is not one for a play: it takes every block of #RANDOM, where a play takes one, since
// an author wants to hear of each line; and it names the chart's files without loading them.
#pragma once

#include <array>
#include <cstdint>
#include <map>
#include <optional>
#include <vector>

#include "base/text.h"
#include "chart/lines.h"
#include "state/chart.h"

namespace qlm {

// What a chart says that the game does not play so. Behind each: what the fields of its finding hold.
enum class ChartFault : uint8_t {
  kNumber,            // text is none: the field `value`, a HeaderField, keeps what it had
  kTempo,             // 0 or below
  kTableTempo,        // the same in the table
  kRank,              // outside 0 to 3
  kPlayMode,          // outside 1 to 3
  kCommand,           // unknown word: text
  kSlotDigits,        // text is not two hexadecimal digits, slot `value` is taken
  kSlotZero,          // a sound that is never loaded
  kRedefined,         // the slot of the word and digits `text` is defined in line `other`
  kMeasureDigits,     // text is not three digits, measure `value` is taken
  kChannelDigits,     // text is not two digits, channel `value` is taken
  kNoObjects,         // of the channel `value`, written as text
  kColon,             // missing
  kLengthOutOfRange,  // of a measure
  kLengthZero,
  kLengthNegative,
  kOddCells,   // the last character belongs to no cell
  kCell,       // text is not two hexadecimal digits, `value` is taken; so it is with `other` more of the line
  kDuplicate,  // a note at measure `value`, `tick` and `channel`, where one of line `other` is already
  kRandomInside,  // a #RANDOM inside an #IF block
  kFewBlocks,     // #RANDOM names `value` and has `other`, fewer
  kManyBlocks,    // more
  kIfAlone,       // an #IF without a #RANDOM
  kEndRandom,     // #ENDRANDOM
};
constexpr size_t kChartFaults = static_cast<size_t>(ChartFault::kEndRandom) + 1;

// Header fields that are numbers.
enum class HeaderField : uint8_t { kRank, kTotal, kVolume, kPlayMode, kLevel, kTempo, kTableTempo };

struct ChartFinding {
  int64_t line = 0;  // counted from 1
  ChartFault fault{};
  Text text;  // a piece of the line, shortened where it is long
  int64_t value = 0;
  int64_t other = 0;
  int32_t tick = 0;
  int32_t channel = 0;
};

class ChartReport {
 public:
  // `firstLine` is the number of the text's first line.
  explicit ChartReport(int64_t firstLine = 1) : line_(firstLine) {}

  struct Definition {
    int64_t line = 0;  // of the last one
    Text name;         // of a file, shortened where it is longer than names of files are
  };
  struct Use {
    int64_t line = 0;  // of the first one
    int64_t count = 0;
  };
  using Uses = std::array<Use, 256>;  // by slot

  // By the order of the lines, except for duplicates, which come last. Of each fault 10,000 are kept, and
  // those behind them counted in `dropped`.
  std::vector<ChartFinding> findings;
  std::array<int64_t, kChartFaults> dropped{};

  std::map<int32_t, Definition> sounds;
  std::map<int32_t, Definition> pictures;
  std::map<int32_t, Definition> tempi;
  std::optional<Definition> stage;
  bool hasTitle = false;
  bool hasArtist = false;
  bool hasGenre = false;

  Uses soundUses;
  Uses pictureUses;  // on every channel of pictures
  Uses coverUses;    // on the channels of base and layer
  Uses tempoUses;
  std::array<int64_t, 2> notes{};  // by side, those of every block
  int32_t lastObject = 0;          // the last measure that holds one

  // What follows is for the reader.

  // Turns to the command that begins at `place` of the chart's text.
  void Begin(TextView text, size_t place, TextView command);
  void EndOfLines();

  // The number of a header field, nothing where its text is none.
  void Whole(HeaderField field, TextView text, std::optional<int32_t> number);
  void Tempo(HeaderField field, TextView text, std::optional<float> tempo);
  // A command that the reader does not know.
  void Unknown(TextView command);
  // A slot that the command defines, in one of the tables above; `word` is the command's.
  void Define(std::map<int32_t, Definition>& table, TextView word, TextView line, int32_t slot);
  // A numbered line as the reader takes it, and the length that it gives.
  void Columns(TextView line, int32_t measure, int32_t channel);
  void Length(std::optional<float> length);
  // The cells of a line, and the place in the table of the first object that they made.
  void Data(TextView line, int32_t measure, int32_t channel, int64_t firstObject);

  // And for preparation.

  // The lines that the objects of the table come from, 0 for none and inside an #IF block. They must be moved
  // along with the objects.
  std::vector<int64_t> objLines;
  // A note on the scaled axis, before a second one at its place becomes a background sound.
  void Note(int64_t index, const ChartObj& note);
  void EndOfNotes();

 private:
  struct Level {  // of a #RANDOM
    int64_t line = 0;
    int64_t named = 0;
    int64_t blocks = 0;
  };
  struct PlacedNote {
    int32_t channel = 0;
    int32_t pos = 0;
    int64_t line = 0;
    int32_t measure = 0;
    int32_t tick = 0;
  };

  void TakeBlocks(TextView command);
  void TakeValue(int32_t value, int32_t channel);
  void EndLevel();
  void Find(ChartFault fault, TextView text = {}, int64_t value = 0, int64_t other = 0);
  void Add(ChartFinding finding);

  int64_t line_;
  size_t counted_ = 0;  // how far into the text line ends are counted
  bool inBlock_ = false;
  std::optional<Level> level_;
  std::array<int64_t, kChartFaults> counts_{};
  std::vector<PlacedNote> notes_;
};

}  // namespace qlm
