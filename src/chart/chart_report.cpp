// What the reading of a chart notes down for its author.
#include "chart/chart_report.h"

#include <algorithm>
#include <tuple>
#include <utility>

#include "base/numbers.h"
#include "chart/random_blocks.h"

namespace qlm {
namespace {

constexpr int64_t kMostOfAFault = 10'000;
constexpr size_t kShownPiece = 100;    // characters of a line that a message quotes
constexpr size_t kLongestName = 1024;  // no file's name is longer

bool AllDigits(TextView text) { return std::all_of(text.begin(), text.end(), IsDigit); }
bool AllHexDigits(TextView text) { return std::all_of(text.begin(), text.end(), IsHexDigit); }

Text Shortened(TextView piece, size_t most) {
  return piece.size() <= most ? Text(piece) : Join(piece.substr(0, most), u"…");
}

// Ends of lines as an editor counts them: CR LF is one, and each CR and LF of its own.
int64_t CountLineEnds(TextView text) {
  int64_t ends = 0;
  for (size_t i = 0; i < text.size(); ++i) {
    if (text[i] == kLf || (text[i] == kCr && text.substr(i, 2) != kCrLf)) ++ends;
  }
  return ends;
}

}  // namespace

void ChartReport::Begin(TextView text, size_t place, TextView command) {
  line_ += CountLineEnds(text.substr(counted_, place - counted_));
  counted_ = place;
  switch (Word(command)) {
    case Word(u"STA"): stage = Definition{line_, Shortened(StageFile(command), kLongestName)}; break;
    case Word(u"TIT"): hasTitle = true; break;
    case Word(u"ART"): hasArtist = true; break;
    case Word(u"GEN"): hasGenre = true; break;
    default: TakeBlocks(command);
  }
}

void ChartReport::EndOfLines() { EndLevel(); }

// The reader counts #IF lines and does not match blocks.
void ChartReport::TakeBlocks(TextView command) {
  if (BeginsWith(command, u"RAND")) {
    if (inBlock_) Find(ChartFault::kRandomInside);
    EndLevel();
    level_ = Level{line_, NamedBlocks(command).value_or(0), 0};
    inBlock_ = false;
  } else if (BeginsWith(command, u"IF")) {
    if (level_) {
      ++level_->blocks;
    } else {
      Find(ChartFault::kIfAlone);
    }
    inBlock_ = true;
  } else if (BeginsWith(command, u"ENDRANDOM")) {
    Find(ChartFault::kEndRandom);
  } else if (BeginsWith(command, u"END")) {
    inBlock_ = false;
  }
}

void ChartReport::EndLevel() {
  if (!level_ || level_->blocks == level_->named) return;
  const ChartFault fault = level_->blocks < level_->named ? ChartFault::kFewBlocks : ChartFault::kManyBlocks;
  Add({level_->line, fault, {}, level_->named, level_->blocks});
}

void ChartReport::Whole(HeaderField field, TextView text, std::optional<int32_t> number) {
  if (!number) return Find(ChartFault::kNumber, text, static_cast<int64_t>(field));
  if (field == HeaderField::kRank && (*number < 0 || *number > 3)) Find(ChartFault::kRank);
  if (field == HeaderField::kPlayMode && (*number < 1 || *number > 3)) Find(ChartFault::kPlayMode);
}

void ChartReport::Tempo(HeaderField field, TextView text, std::optional<float> tempo) {
  if (!tempo) return Find(ChartFault::kNumber, text, static_cast<int64_t>(field));
  if (!(*tempo > 0)) Find(field == HeaderField::kTempo ? ChartFault::kTempo : ChartFault::kTableTempo);
}

void ChartReport::Unknown(TextView command) {
  // What a # alone swallows is no command, and an #IF without a number may count in a skipped block.
  if (command.empty() || command.starts_with(kCr) || EqualsAnyCase(command, u"IF")) return;
  Find(ChartFault::kCommand, command.substr(0, command.find_first_of(u" \t")));
}

void ChartReport::Find(ChartFault fault, TextView text, int64_t value, int64_t other) {
  Add({line_, fault, Shortened(text, kShownPiece), value, other});
}

void ChartReport::Add(ChartFinding finding) {
  const auto fault = static_cast<size_t>(finding.fault);
  if (counts_[fault] == kMostOfAFault) {
    ++dropped[fault];
    return;
  }
  ++counts_[fault];
  findings.push_back(std::move(finding));
}

void ChartReport::Define(std::map<int32_t, Definition>& table, TextView word, TextView line, int32_t slot) {
  const TextView digits = SlotDigits(line);
  if (digits.size() < 2 || !AllHexDigits(digits)) Find(ChartFault::kSlotDigits, digits, slot);
  const auto [known, fresh] = table.try_emplace(slot);
  if (!fresh && !inBlock_ && &table != &tempi) {
    Find(ChartFault::kRedefined, Join(word, digits), 0, known->second.line);
  }
  known->second = {line_, Shortened(Argument(line, 7), kLongestName)};
  if (&table == &sounds && slot == 0) Find(ChartFault::kSlotZero);
}

void ChartReport::Columns(TextView line, int32_t measure, int32_t channel) {
  const TextView measureDigits = Left(line, 3);
  const TextView channelDigits = Mid(line, 4, 2);
  if (measureDigits.size() < 3 || !AllDigits(measureDigits)) {
    Find(ChartFault::kMeasureDigits, measureDigits, measure);
  }
  if (channelDigits.size() < 2 || !AllDigits(channelDigits)) {
    Find(ChartFault::kChannelDigits, channelDigits, channel);
  }
  if (Mid(line, 6, 1) != u":") Find(ChartFault::kColon);
  if (channel != 2 && !MakesObjects(channel)) Find(ChartFault::kNoObjects, channelDigits, channel);
}

void ChartReport::Length(std::optional<float> length) {
  if (!length) {
    Find(ChartFault::kLengthOutOfRange);
  } else if (*length == 0) {
    Find(ChartFault::kLengthZero);
  } else if (*length < 0) {
    Find(ChartFault::kLengthNegative);
  }
}

void ChartReport::Data(TextView line, int32_t measure, int32_t channel, int64_t firstObject) {
  const Cells cells(line);
  if (cells.OddEnd()) Find(ChartFault::kOddCells);
  for (int64_t j = 0; j < cells.Count(); ++j) {
    if (cells.IsRest(j)) continue;
    const TextView letters = cells.Letters(j);
    const int32_t value = cells.Value(j);
    if (!AllHexDigits(letters)) Find(ChartFault::kCell, letters, value);
    TakeValue(value, channel);
    lastObject = MaxI32(lastObject, measure);
  }
  objLines.resize(objs.size());
  const int64_t end = std::min<int64_t>(objCount, static_cast<int64_t>(objs.size()));
  for (int64_t i = firstObject; i < end; ++i) objLines[static_cast<size_t>(i)] = inBlock_ ? 0 : line_;
}

void ChartReport::TakeValue(int32_t value, int32_t channel) {
  const auto use = [&](Uses& uses) {
    Use& entry = uses[static_cast<size_t>(value)];
    if (entry.count++ == 0) entry.line = line_;
  };
  switch (channel) {
    case 3: return;
    case 8: return use(tempoUses);
    case 4:
    case 7: use(coverUses); [[fallthrough]];
    case 6: return use(pictureUses);
    default: use(soundUses);
  }
  if (IsNoteChannel(channel)) ++notes[channel >= 20 ? 1 : 0];
}

void ChartReport::Note(int64_t index, const ChartObj& note) {
  const int64_t line =
      index < static_cast<int64_t>(objLines.size()) ? objLines[static_cast<size_t>(index)] : 0;
  if (line > 0) notes_.push_back({note.channel, note.pos, line, note.measure, note.tick});
}

void ChartReport::EndOfNotes() {
  const auto place = [](const PlacedNote& note) { return std::tie(note.channel, note.pos); };
  const auto whole = [](const PlacedNote& note) {
    return std::tie(note.channel, note.pos, note.line, note.measure, note.tick);
  };
  std::sort(notes_.begin(), notes_.end(),
            [&](const PlacedNote& a, const PlacedNote& b) { return whole(a) < whole(b); });
  const PlacedNote* first = nullptr;
  const PlacedNote* last = nullptr;
  for (const PlacedNote& note : notes_) {
    if (first == nullptr || place(*first) != place(note)) {
      first = &note;
    } else if (last == nullptr || last == first || whole(*last) != whole(note)) {
      Add({note.line, ChartFault::kDuplicate, {}, note.measure, first->line, note.tick, note.channel});
    }
    last = &note;
  }
}

}  // namespace qlm
