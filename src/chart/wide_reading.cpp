// The wide reading of charts.
#include "chart/wide_reading.h"

#include <algorithm>
#include <cmath>
#include <limits>
#include <utility>

#include "base/log.h"
#include "base/numbers.h"
#include "base/paths.h"
#include "base/rnd.h"
#include "chart/drawn_speed.h"
#include "platform/text.h"
#include "sound/buffers.h"
#include "sound/slots.h"
#include "state/session.h"
#include "state/settings.h"
#include "state/slots.h"
#include "state/sounds.h"
#include "state/timeline.h"
#include "state/wide_chart.h"

namespace qlm {
namespace {

// A number of blocks; texts that are none count as 0, which chooses none.
int32_t Number(TextView text) { return Round(Val(text)).value_or(0); }

// What stands behind the word.
TextView Behind(TextView line, TextView word) {
  return Argument(line, static_cast<int64_t>(word.size()) + 1);
}

constexpr std::array<TextView, 6> kDifficulties = {u"",      u"BEGINNER", u"NORMAL",
                                                   u"HYPER", u"ANOTHER",  u"INSANE"};

bool HoldsAnyCase(TextView text, TextView word) { return UCase(text).find(word) != Text::npos; }

Text WithRest(TextView start, TextView rest) {
  if (rest.empty()) return Text(start);
  return start.empty() ? Text(rest) : Join(start, u" ", rest);
}

bool BeyondAscii(std::string_view bytes) {
  return std::any_of(bytes.begin(), bytes.end(),
                     [](char byte) { return static_cast<unsigned char>(byte) > 127; });
}

void UseDigits(int32_t base) {
  SlotBase = base;
  SetLastSlot(MaxI32(LastSlot, base * base - 1));
}

// The digits stand in the header, before what they are used in.
int32_t BaseOf(TextView text) {
  for (size_t place = FindCommand(text, 0); place != TextView::npos;) {
    const TextView line = text.substr(place, FindLineEnd(text, place) - place);
    if (IsNumbered(line)) break;
    if (BeginsWith(line, u"BASE") && Number(Behind(line, u"BASE")) == 62) return 62;
    place = FindCommand(text, place + line.size());
  }
  return 36;
}

// Into a table by slot; `digits` is the place of its two digits, and the value stands behind them.
void TakeEntry(TextView line, int64_t digits, SlotTable<float>& table) {
  if (float* entry = table.Find(SlotValue(Mid(line, digits, 2)))) {
    Assign(*entry, ToSingle(Argument(line, digits + 2)));
  }
}

}  // namespace

// --- blocks ---

bool WideBlocks::Take(TextView line) {
  if (IsNumbered(line)) return false;
  const auto is = [line](TextView word) { return BeginsWith(line, word); };
  if (is(u"RANDOM")) {
    Random(Drawn(Behind(line, u"RANDOM")));
  } else if (is(u"SETRANDOM")) {
    Random(Number(Behind(line, u"SETRANDOM")));
  } else if (is(u"IF")) {
    If(Number(Behind(line, u"IF")));
  } else if (is(u"ELSEIF")) {
    Else(Number(Behind(line, u"ELSEIF")));
  } else if (is(u"ELSE")) {
    Else(std::nullopt);
  } else if (is(u"ENDIF") || is(u"END IF")) {
    EndIf();
  } else if (is(u"ENDRANDOM")) {
    EndRandom();
  } else if (is(u"SWITCH")) {
    Switch(Drawn(Behind(line, u"SWITCH")));
  } else if (is(u"SETSWITCH")) {
    Switch(Number(Behind(line, u"SETSWITCH")));
  } else if (is(u"CASE")) {
    Case(Number(Behind(line, u"CASE")));
  } else if (is(u"SKIP")) {
    Skip();
  } else if (is(u"DEF") && !is(u"DEFEXRANK")) {
    Default();
  } else if (is(u"ENDSW")) {
    EndSwitch();
  } else {
    return false;
  }
  return true;
}

// Nothing is drawn in a part that is skipped.
int32_t WideBlocks::Drawn(TextView text) const {
  const int32_t most = Number(text);
  if (most < 1 || Skipping()) return 0;
  const double drawn = std::floor(double{Rnd()} * most) + 1;
  const auto number = static_cast<int32_t>(std::min<double>(drawn, most));
  DebugLog(Join(u"RANDOM: ", number, u"/", most));
  return number;
}

void WideBlocks::Push(Kind kind, bool open, int32_t number) {
  blocks_.push_back({kind, open, open, false, number});
  if (!open) ++closed_;
  if (kind == Kind::kSwitch) ++switches_;
}

void WideBlocks::Pop() {
  if (!blocks_.back().open) --closed_;
  if (blocks_.back().kind == Kind::kSwitch) --switches_;
  blocks_.pop_back();
}

void WideBlocks::SetOpen(Block& block, bool open) {
  if (block.open != open) closed_ += open ? -1 : 1;
  block.open = open;
  if (open) block.done = true;
}

void WideBlocks::Random(int32_t number) {
  if (TopIs(Kind::kRandom)) Pop();
  Push(Kind::kRandom, true, number);
}

void WideBlocks::If(int32_t number) {
  if (TopIs(Kind::kIf)) Pop();
  const bool chooses = TopIs(Kind::kRandom);
  const int32_t drawn = chooses ? blocks_.back().number : 0;
  Push(Kind::kIf, chooses && number == drawn, drawn);
}

// A #RANDOM that was begun inside an #IF ends with it.
void WideBlocks::EndInnerRandom() {
  if (TopIs(Kind::kRandom) && blocks_.size() >= 2 && blocks_[blocks_.size() - 2].kind == Kind::kIf) Pop();
}

void WideBlocks::Else(std::optional<int32_t> number) {
  EndInnerRandom();
  if (!TopIs(Kind::kIf)) return;
  Block& block = blocks_.back();
  SetOpen(block, !block.done && (!number || *number == block.number));
}

void WideBlocks::EndIf() {
  EndInnerRandom();
  if (TopIs(Kind::kIf)) Pop();
}

void WideBlocks::EndRandom() {
  if (TopIs(Kind::kIf)) Pop();
  if (TopIs(Kind::kRandom)) Pop();
}

void WideBlocks::Switch(int32_t number) { Push(Kind::kSwitch, false, number); }

WideBlocks::Block* WideBlocks::SwitchInHand() {
  if (switches_ == 0) return nullptr;
  while (!TopIs(Kind::kSwitch)) Pop();
  return &blocks_.back();
}

void WideBlocks::Case(int32_t number) {
  Block* const block = SwitchInHand();
  if (block != nullptr && !block->left && number == block->number) SetOpen(*block, true);
}

void WideBlocks::Skip() {
  if (Skipping()) return;
  if (Block* const block = SwitchInHand()) {
    block->left = true;
    SetOpen(*block, false);
  }
}

void WideBlocks::Default() {
  Block* const block = SwitchInHand();
  if (block != nullptr && !block->left && !block->done) SetOpen(*block, true);
}

void WideBlocks::EndSwitch() {
  if (SwitchInHand() != nullptr) Pop();
}

// --- header ---

bool WideHeader::Take(TextView line) {
  if (BeginsWith(line, u"SUBTITLE")) {
    subtitle = Behind(line, u"SUBTITLE");
  } else if (BeginsWith(line, u"SUBARTIST")) {
    subartist = Behind(line, u"SUBARTIST");
  } else if (BeginsWith(line, u"DIFFICULTY")) {
    Assign(difficulty, ToWhole(Behind(line, u"DIFFICULTY")));
  } else if (BeginsWith(line, u"PREVIEW")) {
    preview = Behind(line, u"PREVIEW");
  } else {
    return false;
  }
  return true;
}

void WideHeader::Complete(Text& title, Text& artist) const {
  title = WithRest(title, subtitle);
  artist = WithRest(artist, subartist);
  if (difficulty < 1 || difficulty >= static_cast<int32_t>(kDifficulties.size())) return;
  const TextView name = kDifficulties[static_cast<size_t>(difficulty)];
  if (!HoldsAnyCase(title, name)) title = WithRest(title, Join(u"[", name, u"]"));
}

// --- lines ---

ChartText WideReading::Decode(std::string_view bytes) {
  bytes = bytes.substr(0, bytes.find('\0'));
  constexpr std::string_view kMark = "\xEF\xBB\xBF";
  if (bytes.starts_with(kMark)) bytes.remove_prefix(kMark.size());
  const bool utf8 = BeyondAscii(bytes) && platform::IsUtf8(bytes);
  const Text text = utf8 ? platform::DecodeUtf8(bytes) : platform::DecodeCp932(bytes);

  ChartText chart{Text(kCrLf)};
  chart.text.reserve(text.size() + text.size() / 8);
  for (size_t from = 0; from < text.size();) {
    const size_t end = std::min(text.find_first_of(kCrLf, from), text.size());
    chart.text.append(text, from, end - from);
    chart.text += kCrLf;
    const bool pair = text.compare(end, 2, kCrLf) == 0;
    if (!pair && end < text.size()) chart.converted = true;
    from = end + (pair ? 2 : 1);
  }
  return chart;
}

int32_t WideReading::ChannelOf(TextView line) {
  const TextView digits = Mid(line, 4, 2);
  if (digits.size() < 2 || !IsDigit(digits[1])) return 0;
  const int32_t unit = digits[1] - u'0';
  int32_t channel = 0;
  if (IsDigit(digits[0])) {
    channel = (digits[0] - u'0') * 10 + unit;
  } else if (EqualsAnyCase(digits.substr(0, 1), u"D")) {
    return IsNoteChannel(10 + unit) ? kMineKinds + 10 + unit : 0;
  } else if (EqualsAnyCase(digits.substr(0, 1), u"E")) {
    return IsNoteChannel(20 + unit) ? kMineKinds + 20 + unit : 0;
  }
  const bool longNote = IsNoteChannel(channel - kLongNoteKinds);
  return channel == 2 || channel == ObjStop || longNote || MakesObjects(channel) ? channel : 0;
}

SlotDigitsOf::SlotDigitsOf(TextView text) : before_(std::exchange(SlotBase, BaseOf(text))) {}

SlotDigitsOf::~SlotDigitsOf() { SlotBase = before_; }

WideReading::WideReading(TextView text) {
  UseDigits(BaseOf(text));
  StopTable.Clear();
  // The tempi of the songs before it in a course lie behind them.
  std::fill_n(BpmTable.begin(), LastSlot + 1, 0.0F);
  HdrTitle.clear();
  HdrArtist.clear();
  HdrGenre.clear();
  HdrPreview.clear();
  HdrVolWav = 100;
}

bool WideReading::Passes(TextView line) { return blocks_.Take(line) || blocks_.Skipping(); }

bool WideReading::ReadHeader(TextView line) {
  if (BeginsWith(line, u"STOP")) {
    TakeEntry(line, 5, StopTable);
  } else if (BeginsWith(line, u"EXBPM")) {
    TakeEntry(line, 6, BpmTable);
  } else if (BeginsWith(line, u"LNOBJ")) {
    const TextView digits = Behind(line, u"LNOBJ");
    if (!digits.empty()) longNoteEnd_ = SlotValue(digits.substr(0, 2));
  } else {
    return header_.Take(line);
  }
  return true;
}

void WideReading::ReadCells(TextView line, int32_t measure, int32_t channel) {
  if (channel == 0 || channel == 2) return;
  // Lanes go where the keymap has them, with their long notes and mines.
  const int32_t lanes = IsMine(channel) ? kMineKinds : channel > 50 ? kLongNoteKinds : 0;
  const int32_t kind = ChannelMap[channel - lanes] + lanes;
  const Cells cells(line);
  const int64_t count = cells.Count();
  for (int64_t j = 0; j < count; ++j) {
    if (cells.IsRest(j)) continue;
    Count(kind);
    if (ChartObj* obj = AddObj()) {
      obj->channel = kind;
      obj->measure = measure;
      obj->tick = cells.Tick(j);
      Assign(obj->pos, PosOf(measure, obj->tick));
      obj->value = kind == 3 ? cells.Value(j) : SlotValue(cells.Letters(j));
      obj->speedMul = DrawnSpeed();
    }
  }
}

void WideReading::Count(int32_t kind) {
  if (kind < 11 || IsMine(kind)) return;
  const bool longNote = kind > kLongNoteKinds + 10;
  const int32_t channel = longNote ? kind - kLongNoteKinds : kind;
  const size_t side = channel >= 20 ? 1 : 0;
  sideUsed[side] = true;
  if (channel == 18 || channel == 19) uses89 = true;
  // Every second one of a lane ends what the one before it began.
  if (longNote && longNoteCells_[static_cast<size_t>(channel - 11)]++ % 2 != 0) return;
  ++TotalNotes[side];
}

// What had to wait for the last line, since any may have defined it.
void WideReading::Settle(ChartObj& obj) {
  if (IsNoteChannel(obj.channel) && obj.value == longNoteEnd_) {
    --TotalNotes[obj.channel >= 20 ? 1 : 0];
    obj.channel += kLongNoteEndKinds;
  } else if (obj.channel == ObjStop) {
    const float* const units = StopTable.Find(obj.value);
    obj.value = MaxI32(units != nullptr ? Round(*units).value_or(0) : 0, 0);
  } else if (obj.channel == 8 && CourseMode) {
    const float* const tempo = BpmTable.Find(obj.value);
    obj.value = AddCourseTempo(tempo != nullptr ? *tempo : 0);
  }
}

void WideReading::End(TextView folder, int32_t firstObj) {
  const auto end = std::min<int64_t>(objCount, static_cast<int64_t>(objs.size()));
  for (int64_t i = firstObj; i < end; ++i) Settle(objs[static_cast<size_t>(i)]);
  header_.Complete(HdrTitle, HdrArtist);
  if (!header_.preview.empty()) HdrPreview = Join(folder, header_.preview);
  ChartVolume = VolumeOf(HdrVolWav);
}

int32_t VolumeOf(int32_t percent) {
  constexpr int32_t kSilent = -10000;
  if (percent <= 0) return kSilent;
  return MaxI32(Round(2000 * std::log10(percent / 100.0)).value_or(0), kSilent);
}

// --- courses ---

int32_t AddCourseTempo(float tempo) {
  const int32_t slot = kLastBase62Slot + 1 + courseTempi++;
  if (!BpmTable.Holds(slot)) BpmTable.SetLast(int64_t{slot} * 2);
  BpmTable[slot] = tempo;
  return slot;
}

// --- preparation ---

void WideWalk::Pass(ChartObj& obj, int32_t index) {
  MoveByStops(obj);
  PairLongNotes(obj, index);
}

void WideWalk::MoveByStops(ChartObj& obj) {
  const int64_t pos = obj.pos;
  if (stopUnits_ > 0 && pos > stopAt_) {
    moved_ += stopUnits_;
    stopUnits_ = 0;
  }
  const int64_t moved = pos + moved_;
  if (moved <= std::numeric_limits<int32_t>::max()) obj.pos = static_cast<int32_t>(moved);
  if (obj.channel != ObjStop || obj.value <= 0) return;
  // Stops at one place follow each other.
  if (stopUnits_ > 0) {
    Stops.back().units += obj.value;
  } else {
    Stops.push_back({obj.pos, obj.value, moved_});
  }
  stopAt_ = pos;
  stopUnits_ += obj.value;
}

void WideWalk::PairLongNotes(ChartObj& obj, int32_t index) {
  const auto lane = [&obj](int32_t kinds) { return static_cast<size_t>(obj.channel - kinds - 11); };
  const auto end = [&obj](int32_t& head) {
    if (head >= 0) LongNotes.push_back({head, obj.pos});
    head = -1;
    obj.channel = ObjLongNoteEnd;
  };
  if (obj.channel == ObjSongChange) {
    Forget();
  } else if (IsNoteChannel(obj.channel)) {
    // Of two notes at one place the first stays one.
    int32_t& note = note_[lane(0)];
    if (note < 0 || objs[static_cast<size_t>(note)].pos != obj.pos) note = index;
  } else if (IsNoteChannel(obj.channel - kLongNoteEndKinds)) {
    end(note_[lane(kLongNoteEndKinds)]);
  } else if (IsNoteChannel(obj.channel - kLongNoteKinds)) {
    int32_t& head = head_[lane(kLongNoteKinds)];
    if (head >= 0) return end(head);
    head = index;
    obj.channel -= kLongNoteKinds;
  }
}

void WideWalk::Forget() {
  note_.fill(-1);
  head_.fill(-1);
}

void WideWalk::End() {
  std::sort(LongNotes.begin(), LongNotes.end(),
            [](const LongNote& a, const LongNote& b) { return a.head < b.head; });
}

// --- song select ---

namespace {

// The slots that notes and background sound by, in the order of their first use.
std::vector<int32_t> SlotsHeard() {
  std::vector<int32_t> used;
  SlotTable<bool> seen;
  for (int64_t i = 0; i < std::min<int64_t>(objCount, static_cast<int64_t>(objs.size())); ++i) {
    const ChartObj& obj = objs[static_cast<size_t>(i)];
    if (obj.channel != 1 && !IsNoteChannel(obj.channel)) continue;
    const Text* const file = WavFile.Find(obj.value);
    if (file == nullptr || file->empty() || !seen.Holds(obj.value)) continue;
    if (!std::exchange(seen[obj.value], true)) used.push_back(obj.value);
  }
  return used;
}

}  // namespace

bool WideWouldSound() {
  constexpr size_t kAsked = 16;
  if (WideCharts) return false;
  const std::vector<int32_t> used = SlotsHeard();
  const size_t asked = std::min(used.size(), kAsked);
  size_t missing = 0, found = 0;
  for (size_t i = 0; i < asked; ++i) {
    if ((missing + asked - i) * 2 <= asked) return false;
    Text file = WavFile[used[i * used.size() / asked]];
    if (FileExists(file) || FileExists(WithExtension(file, u".mp3"))) continue;
    ++missing;
    WideCharts = true;
    FindWideSound(file);
    WideCharts = false;
    if (FileExists(file)) ++found;
  }
  return missing * 2 > asked && found > 0;
}

bool TakeWidePreview() {
  if (HdrPreview.empty() || objs.size() < 2 || !(HdrBPM > 0)) return false;
  const Text named = std::exchange(WavFile[1], HdrPreview);
  loadwav(1);
  const auto units =
      WavBuffer[1] != nullptr ? Round(WavLengthMs[1] * double{HdrBPM} / kUnitRate) : std::nullopt;
  if (!units) {
    WavFile[1] = named;
    WavLoaded[1] = 0;
    return false;
  }
  objs[0] = {.channel = 1, .value = 1};
  objs[1] = {.pos = *units, .channel = ObjSeparator};
  objCount = 2;
  keySoundCount = 0;
  lastObjPos = *units;
  return true;
}

}  // namespace qlm
