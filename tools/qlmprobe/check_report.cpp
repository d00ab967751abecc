// The words of what the reading of a chart reports.
#include "chart/chart_report.h"

#include "base/numbers.h"
#include "tools/qlmprobe/check_facts.h"

namespace probe {
namespace {

using qlm::ChartFault;
using qlm::ChartFinding;
using qlm::HeaderField;
using qlm::Join;
using qlm::Text;
using qlm::TextView;

std::string_view KindOf(ChartFault fault) {
  switch (fault) {
    case ChartFault::kNumber: return "number";
    case ChartFault::kTempo:
    case ChartFault::kTableTempo: return "tempo";
    case ChartFault::kRank: return "rank";
    case ChartFault::kPlayMode: return "player";
    case ChartFault::kCommand: return "command";
    case ChartFault::kSlotDigits: return "index";
    case ChartFault::kSlotZero: return "slot-0";
    case ChartFault::kRedefined: return "redefined";
    case ChartFault::kMeasureDigits: return "measure";
    case ChartFault::kChannelDigits:
    case ChartFault::kNoObjects: return "channel";
    case ChartFault::kColon: return "colon";
    case ChartFault::kLengthOutOfRange:
    case ChartFault::kLengthZero:
    case ChartFault::kLengthNegative: return "length";
    case ChartFault::kOddCells: return "odd";
    case ChartFault::kCell: return "cell";
    case ChartFault::kDuplicate: return "duplicate";
    default: return "random";
  }
}

TextView Keeps(int64_t field) {
  switch (static_cast<HeaderField>(field)) {
    case HeaderField::kRank: return u"the rank keeps the value it had";
    case HeaderField::kTotal: return u"the total keeps the value it had";
    case HeaderField::kVolume: return u"the volume keeps the value it had";
    case HeaderField::kPlayMode: return u"the play mode keeps the value it had";
    case HeaderField::kLevel: return u"the level keeps the value it had";
    case HeaderField::kTempo: return u"the tempo keeps the value it had";
    default: return u"the tempo of the table keeps the value it had; a blank must follow #BPM alone";
  }
}

TextView WhyDropped(int64_t channel) {
  if (channel == 9) return u"the game knows no stops";
  if (channel == 17 || channel == 27) return u"the game has no free zone";
  if (channel >= 51 && channel <= 69) return u"the game has no long notes";
  if (channel == 5) return u"the game has no object that is only seen in other programs";
  return u"the game does not know it";
}

Text TwoDigits(int64_t value) {
  return Join(value < 16 ? u"0" : u"", qlm::Hex(static_cast<uint32_t>(value)));
}

Text BlockWords(const ChartFinding& found, TextView effect) {
  return Join(u"#RANDOM ", found.value, u" has ", found.other, u" #IF blocks: ", effect);
}

Text WordsOf(const ChartFinding& found) {
  switch (found.fault) {
    case ChartFault::kNumber: return Join(u"\"", found.text, u"\" is no number: ", Keeps(found.value));
    case ChartFault::kTempo: return u"with this tempo nothing moves";
    case ChartFault::kTableTempo: return u"a table tempo of 0 or below changes nothing";
    case ChartFault::kRank:
      return u"a rank outside 0 to 3 leaves the windows of the chart played before in force";
    case ChartFault::kPlayMode: return u"the play mode is 1, 2 or 3";
    case ChartFault::kCommand: return Join(u"the game does not know #", found.text);
    case ChartFault::kSlotDigits:
      return Join(u"\"", found.text, u"\" is not two hexadecimal digits: the game takes slot ",
                  TwoDigits(found.value));
    case ChartFault::kSlotZero: return u"slot 00 is never loaded: its sound stays silent";
    case ChartFault::kRedefined:
      return Join(u"#", found.text, u" stands in line ", found.other, u" already: this one wins");
    case ChartFault::kMeasureDigits:
      return Join(u"\"", found.text, u"\" is not three digits: the game takes measure ", found.value);
    case ChartFault::kChannelDigits:
      return Join(u"channels are two decimal digits: \"", found.text, u"\" is read as channel ", found.value);
    case ChartFault::kNoObjects:
      return Join(u"channel ", found.text, u" makes no objects: ", WhyDropped(found.value));
    case ChartFault::kColon: return u"the sixth character is passed over: a colon is missing";
    case ChartFault::kLengthOutOfRange: return u"a length so large is dropped";
    case ChartFault::kLengthZero: return u"a measure of length 0 gets the length 1";
    case ChartFault::kLengthNegative: return u"a measure of negative length moves what follows backwards";
    case ChartFault::kOddCells: return u"an odd number of characters: the last one is passed over";
    case ChartFault::kCell:
      return Join(u"\"", found.text, u"\" is not two hexadecimal digits: the game makes an object with ",
                  TwoDigits(found.value));
    case ChartFault::kDuplicate:
      return Join(u"measure ", found.value, u", tick ", found.tick, u" of channel ", found.channel,
                  u" holds a note of line ", found.other,
                  u" already: one of the two becomes a background sound");
    case ChartFault::kRandomInside:
      return u"a #RANDOM inside an #IF block is not seen when the block is skipped, and its #IF lines then "
             u"count for the outer one";
    case ChartFault::kFewBlocks:
      return BlockWords(found, u"everything behind the chosen one is skipped to the end of the file");
    case ChartFault::kManyBlocks:
      return BlockWords(found, u"those past the announced number are not chosen by it");
    case ChartFault::kIfAlone:
      return u"an #IF without a #RANDOM always holds and takes the level down, so that a later #RANDOM may "
             u"let every #IF block through";
    case ChartFault::kEndRandom:
      return u"#ENDRANDOM is not needed and takes the level down once more, so that a later #RANDOM may let "
             u"every #IF block through";
  }
  return {};
}

}  // namespace

void TellReport(Findings& findings, const qlm::ChartReport& report) {
  for (const ChartFinding& found : report.findings) {
    findings.Add(found.line, KindOf(found.fault), WordsOf(found));
  }
  for (size_t fault = 0; fault < report.dropped.size(); ++fault) {
    if (report.dropped[fault] > 0) {
      findings.LeaveOut(KindOf(static_cast<ChartFault>(fault)), report.dropped[fault]);
    }
  }
}

}  // namespace probe
