// The wide reading of charts: what is written today and unknown to the reader, or taken otherwise by it. The
// reader and preparation ask this at the few places where the two readings part, and never with WideCharts
// off.
//
//   step                 classic                           wide
//   text                 Shift-JIS, CR LF, not line 1      UTF-8 where it is, every line end, line 1 too
//   slots                two hexadecimal digits            two of base 36, or of base 62 behind #BASE 62
//   channels             decimal                           and 51 to 69 long notes, D1 to E9 mines, 09 stops
//   keymap               again at each note of a line      once a line
//   blocks               #RANDOM, #IF, #ENDIF, by count    and the rest of them, by nesting
//   header words         those of the reader               and those of kWords in wide_reading.cpp
//   title, artist, genre stay from the chart before        empty at first
//   length, tempo table  without tempi by table; stays     with them; empty at first
#pragma once

#include <array>
#include <cstdint>
#include <optional>
#include <string_view>
#include <vector>

#include "base/text.h"
#include "chart/lines.h"
#include "state/chart.h"

namespace qlm {

// Blocks that a number chooses, properly nested: #RANDOM and #SETRANDOM with #IF, #ELSEIF, #ELSE, #ENDIF and
// #ENDRANDOM; #SWITCH and #SETSWITCH with #CASE, #SKIP, #DEF and #ENDSW. What is left open is closed by what
// comes behind it: an #IF by the next #IF, a #RANDOM by the next #RANDOM outside its #IFs. What closes
// nothing does nothing.
class WideBlocks {
 public:
  bool Skipping() const { return closed_ > 0; }
  // True when the line is a word of blocks, whether it stands in a block that is skipped or not.
  bool Take(TextView line);

 private:
  enum class Kind : uint8_t { kRandom, kIf, kSwitch };
  struct Block {
    Kind kind;
    bool open;       // its lines are read
    bool done;       // one of its parts was taken, so that #ELSE and #DEF are not
    bool left;       // of a #SWITCH: #SKIP was met
    int32_t number;  // drawn for the #SWITCH, or for the #RANDOM that an #IF belongs to
  };

  void Push(Kind kind, bool open, int32_t number);
  void Pop();
  void SetOpen(Block& block, bool open);
  bool TopIs(Kind kind) const { return !blocks_.empty() && blocks_.back().kind == kind; }
  int32_t Drawn(TextView text) const;
  // Closes what is still open inside the #SWITCH that is open last; null when none is.
  Block* SwitchInHand();

  void Random(int32_t number);
  void EndInnerRandom();
  void If(int32_t number);
  void Else(std::optional<int32_t> number);
  void EndIf();
  void EndRandom();
  void Switch(int32_t number);
  void Case(int32_t number);
  void Skip();
  void Default();
  void EndSwitch();

  std::vector<Block> blocks_;
  int64_t closed_ = 0;    // blocks whose lines are not read
  int64_t switches_ = 0;  // blocks that are a #SWITCH
};

// The header words that the wide reading adds, as a chart or a list entry needs them.
struct WideHeader {
  Text subtitle;
  Text subartist;
  Text preview;
  int32_t difficulty = 0;  // 1 to 5, 0 not given

  // True when the line was one of them.
  bool Take(TextView line);
  // Title and artist with what belongs to them: "Song [Remix] [ANOTHER]".
  void Complete(Text& title, Text& artist) const;
};

// Has the slots of a text read in its digits, those of a chart in memory apart, for as long as it lives.
class SlotDigitsOf {
 public:
  explicit SlotDigitsOf(TextView text);
  ~SlotDigitsOf();
  SlotDigitsOf(const SlotDigitsOf&) = delete;
  SlotDigitsOf& operator=(const SlotDigitsOf&) = delete;

 private:
  int32_t before_;
};

class WideReading {
 public:
  // Text with CR LF before its first line and at the end of each.
  static ChartText Decode(std::string_view bytes);
  // The channel of a line of data, 0 for what makes nothing.
  static int32_t ChannelOf(TextView line);

  // Takes the slots' digits from the header of the text, and empties what a chart of today does not share
  // with the one before.
  explicit WideReading(TextView text);

  // True when nothing is left to do with the line: it is skipped, or a word of blocks.
  bool Passes(TextView line);
  // The objects of a line of data whose channel makes any.
  void ReadCells(TextView line, int32_t measure, int32_t channel);
  // True when the line was a header word of the wide reading.
  bool ReadHeader(TextView line);
  // Behind the last line, with the file's first object.
  void End(TextView folder, int32_t firstObj);

 private:
  void Count(int32_t kind);
  void Settle(ChartObj& obj);

  WideBlocks blocks_;
  WideHeader header_;
  std::optional<int32_t> longNoteEnd_;           // the slot that ends a long note
  std::array<int32_t, kLanes> longNoteCells_{};  // by lane: ends and beginnings so far
};

// Preparation's share, over the objects in order of their positions: stops move what is behind them, and long
// notes find their ends.
class WideWalk {
 public:
  WideWalk() { Forget(); }
  // `obj`, at `index` in the table, on the axis without stops.
  void Pass(ChartObj& obj, int32_t index);
  // Behind the last one.
  void End();

 private:
  void MoveByStops(ChartObj& obj);
  void PairLongNotes(ChartObj& obj, int32_t index);
  void Forget();

  int64_t moved_ = 0;                   // by the stops so far
  int64_t stopAt_ = 0;                  // unmoved position of the last stop
  int64_t stopUnits_ = 0;               // of the stops there, which move only what is behind it
  std::array<int32_t, kLanes> note_{};  // last note of a lane on its own channel, -1 none
  std::array<int32_t, kLanes> head_{};  // the long note of a lane that has no end yet, -1 none
};

// The volume of #VOLWAV in hundredths of a decibel; 0 percent and below is silence.
int32_t VolumeOf(int32_t percent);

// A slot of BpmTable of its own for a tempo of a course, whose songs would share the slots otherwise.
int32_t AddCourseTempo(float tempo);

// Whether the wide reading would let a chart sound that the classic one has loaded: of up to 16 of the sounds
// that its notes and its background use, spread over all of them, more than half have no file, and the wide
// reading finds one for at least one of those. Nothing is decoded for it.
bool WideWouldSound();

// Turns the chart that was loaded into its #PREVIEW: the one sound and a bar line at its end. False when it
// has none that can be loaded; the chart then stays.
bool TakeWidePreview();

}  // namespace qlm
