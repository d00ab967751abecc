// The reader of BMS text.
#include "chart/reader.h"

#include <optional>
#include <utility>

#include "base/hooks.h"
#include "base/log.h"
#include "base/numbers.h"
#include "base/paths.h"
#include "base/rnd.h"
#include "chart/chart_report.h"
#include "chart/drawn_speed.h"
#include "chart/lines.h"
#include "chart/random_blocks.h"
#include "chart/random_lane.h"
#include "chart/sounds_ahead.h"
#include "chart/wide_reading.h"
#include "graphics/bga.h"
#include "graphics/bitmaps.h"
#include "platform/clock.h"
#include "platform/files.h"
#include "platform/heap.h"
#include "sound/slots.h"
#include "state/chart.h"
#include "state/gauge.h"
#include "state/load_budget.h"
#include "state/message.h"
#include "state/options.h"
#include "state/records.h"
#include "state/session.h"
#include "state/settings.h"
#include "state/slots.h"
#include "state/sounds.h"
#include "state/surfaces.h"
#include "state/timeline.h"
#include "state/wide_chart.h"

namespace qlm {
namespace {

// More records than any machine of this kind has memory for count as a failed allocation.
constexpr int32_t kMostObjs = 1 << 24;

// How long, in ms, a load goes on before it lets events run again.
constexpr int32_t kPumpInterval = 20;

// Swaps each lane of the map with one that is drawn, which may be itself.
void ShuffleKeymap() {
  for (int32_t lane = 11; lane <= 19; ++lane) {
    if (!IsShuffledLane(lane)) continue;
    const std::optional<int32_t> other = DrawLane([](int32_t) { return true; });
    if (other) std::swap(ChannelMap[lane], ChannelMap[*other]);
  }
}

void BuildChannelMap() {
  for (int32_t channel = 0; channel <= ChannelMap.kLast; ++channel) ChannelMap[channel] = channel;
  if (PlayerForce == 1) {
    for (int32_t unit = 0; unit <= 9; ++unit) {
      ChannelMap[20 + unit] = 10 + unit;
      ChannelMap[40 + unit] = 30 + unit;
    }
  }
  if (Random) {
    DebugLog(u"<RANDOM> Randomize keymap");
    ShuffleKeymap();
  }
}

// The format in which the chart's sounds are expected until their files tell their own.
void DescribeSounds() {
  wavDescription.flags = 32994;
  wavFormat.tag = 1;
  wavFormat.channels = 2;
  wavFormat.samplesPerSec = 44100;
  wavFormat.bitsPerSample = 16;
  wavFormat.blockAlign = 4;
  wavFormat.avgBytesPerSec = wavFormat.samplesPerSec * wavFormat.blockAlign;
}

void SetHeaderDefaults() {
  HdrRank = 2;
  HdrPlayLevel = 3;
  HdrPlayer = 1;
  HdrBPM = 120;
  HdrTotal = 0;
}

bool NamesFile(TextView line) { return Word(line) == Word(u"WAV") || Word(line) == Word(u"BMP"); }

// In front of the first data, where a chart names nearly all of its files.
int32_t FilesNamed(TextView text) {
  int32_t files = 0;
  for (size_t place = FindCommand(text, 0); place != TextView::npos;) {
    const size_t end = FindLineEnd(text, place + 1);
    const TextView line = text.substr(place, end - place);
    if (IsNumbered(line)) break;
    if (NamesFile(line)) ++files;
    place = FindCommand(text, end);
  }
  return files;
}

// Reads the lines of one file.
class LineReader {
 public:
  LineReader(TextView path, ChartReport* report)
      : report_(report), folder_(GetFolder(path)), blocks_(report != nullptr) {}

  // False when the load is to stop.
  bool ReadLines(TextView text);

 private:
  bool ReadLine(TextView line);
  void ReadNumbered(TextView line);
  void ReadCells(TextView line);
  bool ReadHeader(TextView line);
  void ReadWhole(TextView line, int64_t start, HeaderField field, int32_t& target);
  void ReadTempo(TextView line);
  void ReadTempo(TextView line, int64_t start, HeaderField field, float& target);
  void ReadRankOrRandom(TextView line);
  void ReportUnknown(TextView line);
  void ReadWav(TextView line);
  void ReadBmp(TextView line) const;
  bool GoesOn();

  ChartReport* report_;
  TextView folder_;
  RandomBlocks blocks_;
  std::optional<WideReading> wide_;
  std::optional<SoundsAhead> soundsAhead_;  // where sounds are loaded while their lines are read
  int32_t measure_ = 0;                     // of the last line whose measure was a number
  int32_t channel_ = 0;
  std::optional<uint32_t> lastPump_;  // clock
};

bool LineReader::ReadLines(TextView text) {
  if (WideCharts && report_ == nullptr) wide_.emplace(text);
  if (CourseMode) SetCourseLastSlot(LastSlot);
  const int32_t firstObj = objCount;
  size_t place = FindCommand(text, 0);
  const size_t shown = place == TextView::npos ? 3 : place + 1;
  DebugLog(Join(u"Found First at ", static_cast<int64_t>(shown)));
  SeedRnd(platform::Now());
  if (CourseMode ? CourseLoadMode == 2 : WAVLoadmode == 0) soundsAhead_.emplace(text, folder_);
  loadProgress.done = 0;
  loadProgress.all = WideCharts ? FilesNamed(text) : 0;
  while (place != TextView::npos) {
    // Quirk: the end is looked for behind the line's first character, so that a line holding only # takes in
    // the next.
    const size_t end = FindLineEnd(text, place + 1);
    const TextView line = text.substr(place, end - place);
    if (report_ != nullptr) report_->Begin(text, place, line);
    bool goesOn = true;
    platform::WithinMemory([&] { goesOn = ReadLine(line); });
    if (loadProgress.all > 0 && NamesFile(line)) ++loadProgress.done;
    if (!goesOn) return false;
    place = FindCommand(text, end);
  }
  if (report_ != nullptr) report_->EndOfLines();
  if (wide_) platform::WithinMemory([&] { wide_->End(folder_, firstObj); });
  return true;
}

bool LineReader::ReadLine(TextView line) {
  if (wide_ && (wide_->Passes(line) || wide_->ReadHeader(line))) return true;
  if (blocks_.Skipping()) {
    blocks_.SkippedLine(line);
  } else if (IsNumbered(line)) {
    ReadNumbered(line);
  } else {
    return ReadHeader(line);
  }
  return true;
}

void LineReader::ReadNumbered(TextView line) {
  Assign(measure_, MeasureOf(line, BasePos));
  Assign(channel_, wide_ ? WideReading::ChannelOf(line) : ChannelOf(line));
  if (report_ != nullptr) report_->Columns(line, measure_, channel_);
  lastMeasure = MaxI32(lastMeasure, measure_);
  if (channel_ == 2) {
    const std::optional<float> length = LengthOf(line);
    if (length) MeasureLen.Put(measure_, *length);
    if (report_ != nullptr) report_->Length(length);
    return;
  }
  if (NoBGA && (channel_ == 4 || channel_ == 7)) return;
  if (wide_) return wide_->ReadCells(line, measure_, channel_);
  if (MakesObjects(channel_)) ReadCells(line);
}

void LineReader::ReadCells(TextView line) {
  const Cells cells(line);
  const int64_t count = cells.Count();
  const int32_t first = objCount;
  int32_t channel = channel_;
  for (int64_t j = 0; j < count; ++j) {
    if (cells.IsRest(j)) continue;
    // Quirk: the map is applied again at each note, so that a shuffled keymap spreads one line over the lanes
    // of its cycle.
    channel = ChannelMap[channel];
    if (channel >= 20) {
      // Quirk: invisible objects of either side count here too.
      sideUsed[1] = true;
      ++TotalNotes[1];
    } else if (channel >= 11) {
      if (channel >= 18) uses89 = true;
      sideUsed[0] = true;
      ++TotalNotes[0];
    }
    if (ChartObj* obj = AddObj()) {
      obj->channel = channel;
      obj->measure = measure_;
      obj->tick = cells.Tick(j);
      Assign(obj->pos, PosOf(measure_, obj->tick));
      obj->value = cells.Value(j);
      obj->speedMul = DrawnSpeed();
    }
  }
  channel_ = channel;
  if (report_ != nullptr) report_->Data(line, measure_, channel_, first);
}

// Quirk: as many letters as stand here decide and no more, so that #TITLES is a title too.
bool LineReader::ReadHeader(TextView line) {
  switch (Word(line)) {
    case Word(u"WAV"): ReadWav(line); return GoesOn();
    case Word(u"BMP"): ReadBmp(line); return GoesOn();
    case Word(u"STA"): break;  // the title picture is the lists' affair
    case Word(u"TIT"): HdrTitle = Argument(line, 7); break;
    case Word(u"ART"): HdrArtist = Argument(line, 8); break;
    case Word(u"GEN"): HdrGenre = Argument(line, 7); break;
    case Word(u"BPM"): ReadTempo(line); break;
    case Word(u"RAN"): ReadRankOrRandom(line); break;
    case Word(u"IF "): blocks_.If(line); break;
    case Word(u"END"): blocks_.End(line); break;
    case Word(u"TOT"): ReadWhole(line, 7, HeaderField::kTotal, HdrTotal); break;
    case Word(u"VOL"): ReadWhole(line, 8, HeaderField::kVolume, HdrVolWav); break;
    case Word(u"MID"): HdrMidiFile = Argument(line, 10); break;
    default:
      if (BeginsWith(line, u"PLAYER")) {
        ReadWhole(line, 8, HeaderField::kPlayMode, HdrPlayer);
      } else if (BeginsWith(line, u"PLAYLE")) {
        ReadWhole(line, 11, HeaderField::kLevel, HdrPlayLevel);
      } else {
        ReportUnknown(line);
      }
  }
  return true;
}

// A whole-number field. What is no number leaves it as it is.
void LineReader::ReadWhole(TextView line, int64_t start, HeaderField field, int32_t& target) {
  const TextView text = Argument(line, start);
  const std::optional<int32_t> number = ToWhole(text);
  Assign(target, number);
  if (report_ != nullptr) report_->Whole(field, text, number);
}

void LineReader::ReadTempo(TextView line) {
  if (Mid(line, 4, 1) == u" ") {
    ReadTempo(line, 5, HeaderField::kTempo, HdrBPM);
  } else if (float* tempo = BpmTable.Find(SlotOf(line))) {
    ReadTempo(line, 7, HeaderField::kTableTempo, *tempo);
    if (report_ != nullptr) report_->Define(report_->tempi, u"BPM", line, SlotOf(line));
  }
}

void LineReader::ReadTempo(TextView line, int64_t start, HeaderField field, float& target) {
  const TextView text = Argument(line, start);
  const std::optional<float> tempo = ToSingle(text);
  Assign(target, tempo);
  if (report_ != nullptr) report_->Tempo(field, text, tempo);
}

void LineReader::ReadRankOrRandom(TextView line) {
  if (BeginsWith(line, u"RANK")) {
    ReadWhole(line, 6, HeaderField::kRank, HdrRank);
  } else if (BeginsWith(line, u"RAND")) {
    blocks_.Random(line);
  } else {
    ReportUnknown(line);
  }
}

void LineReader::ReportUnknown(TextView line) {
  if (report_ != nullptr) report_->Unknown(line);
}

void LineReader::ReadWav(TextView line) {
  const int32_t slot = SlotOf(line);
  if (report_ != nullptr) return report_->Define(report_->sounds, u"WAV", line, slot);
  if (NoWAV) return;
  if (soundsAhead_) soundsAhead_->Reach(line);
  Text file = Join(folder_, Argument(line, 7));
  if (!CourseMode) {
    WavLoaded.Put(slot, 0);
    WavFile.Put(slot, std::move(file));
    if (WAVLoadmode == 0) loadwav(slot);
  } else if (CourseWavFile.Holds(CourseSong)) {
    CourseWavFile[CourseSong].Put(slot, std::move(file));
    CourseWavLoaded[CourseSong].Put(slot, false);
    if (CourseLoadMode == 2) LoadCourseSound(CourseSong, slot);
  }
}

void LineReader::ReadBmp(TextView line) const {
  const int32_t slot = SlotOf(line);
  if (report_ != nullptr) return report_->Define(report_->pictures, u"BMP", line, slot);
  if (NoBGA) return;
  Text file = Join(folder_, Argument(line, 7));
  if (!CourseMode) {
    FindWidePicture(file);
    // Pictures that are slow to open never wait for the play.
    const bool loadsNow = BMPLoadmode == 0 || !EqualsAnyCase(Right(file, 3), u"BMP");
    BmpFile.Put(slot, std::move(file));
    if (loadsNow) BgaLoad(slot);
  } else if (CourseBmpFile.Holds(CourseSong)) {
    CourseBmpFile[CourseSong].Put(slot, std::move(file));
    CourseBmpLoaded[CourseSong].Put(slot, 0);
    if (CourseLoadMode == 2) LoadCourseBga(CourseSong, slot);
  }
}

// Lets events run now and then; one of them may end the load.
bool LineReader::GoesOn() {
  if (hooks.loadPump != nullptr) {
    const uint32_t now = platform::Now();
    if (!lastPump_ || platform::Elapsed(now, *lastPump_) >= kPumpInterval) {
      lastPump_ = now;
      hooks.loadPump();
    }
  }
  return !LoadAbort;
}

// The starting tempo of a course song, and the marker at which the play turns to it.
void AddSongChange() {
  DebugLog(u"<COURSE> Add SONGCHANGE note");
  if (ChartObj* tempo = AddObj()) {
    tempo->channel = WideCharts ? 8 : 3;
    tempo->measure = BasePos;
    Assign(tempo->pos, PosOf(BasePos, 0));
    Assign(tempo->value, WideCharts ? AddCourseTempo(HdrBPM) : Round(HdrBPM));
  }
  if (ChartObj* change = AddObj()) {
    change->channel = ObjSongChange;
    change->measure = BasePos - 1;
    Assign(change->pos, PosOf(BasePos - 1, 0));
    change->value = CourseSong;
  }
  MeasureLen.Put(BasePos - 1, 0.1F);
}

bool IsKindOf1P(int32_t channel) {
  return (channel >= 11 && channel <= 19) || (channel >= 31 && channel <= 39) || IsWideKindOf1P(channel);
}

// Copies the 1P objects from `first` on to side 2.
void CopyTo2P(int32_t first) {
  DebugLog(u"COPYING objects to 2P");
  const int32_t last = objCount;
  // Quirk: one record past the end is looked at. It is empty, or the first copy, and not copied. Where the
  // table is full there is no record to look at, and what cannot be tested counts as an object to copy.
  for (int64_t i = first; i <= last; ++i) {
    const ChartObj* found = FindObj(i);
    if (found != nullptr && !IsKindOf1P(found->channel)) continue;
    ChartObj* copy = AddObj();
    if (found == nullptr || copy == nullptr) continue;
    copy->channel = found->channel + 10;
    copy->measure = found->measure;
    copy->tick = found->tick;
    copy->pos = found->pos;
    copy->value = found->value;
    copy->speedMul = DrawnSpeed();
  }
}

// `first` is the first object of this file.
void ForcePlayer(int32_t first) {
  switch (PlayerForce) {
    case 1: HdrPlayer = 1; break;
    case 2:
      DebugLog(u"Player FORCED TO 2P/BP");
      if (HdrPlayer == 1) {
        CopyTo2P(first);
        TotalNotes[1] = TotalNotes[0];
      }
      HdrPlayer = 2;
      break;
    case 3:
      DebugLog(u"Player FORCED TO 2P/BP");
      // Quirk: the copies count for nothing, while a real double-play chart has its side 2 counted here and
      // once more by preparation. Gauge and score of forced double play rest on it.
      if (HdrPlayer == 1) CopyTo2P(first);
      TotalNotes[0] += TotalNotes[1];
      HdrPlayer = 3;
      break;
    default: break;
  }
}

}  // namespace

void BMSInit() {
  DebugLog(u"[BMSInit] Initializing values");
  // What the other reading has loaded may be another file than this one finds under the name.
  if (WideCharts != (LastSlot > kLastHexSlot)) {
    ReleaseAllSounds();
    ReleaseAllPictures();
  }
  ResetWideChart();
  SetLastSlot(WideCharts ? kLastBase36Slot : kLastHexSlot);
  SlotBase = 16;
  WavFile.Clear();
  BmpFile.Clear();
  WavLoaded.Clear();
  BmpLoaded.Clear();
  KeySoundChanges.Clear();
  MeasureLen.Clear();
  for (auto& step : EchoBuffer) step.Clear();
  VoiceList.Clear();
  VoiceStart.Clear();
  VoiceActive.Clear();

  objs.clear();
  if (numObjs >= 0 && numObjs < kMostObjs) {
    platform::WithinMemory([] { objs.resize(static_cast<size_t>(numObjs) + 1); });
  }
  tableMissing = numObjs >= 0 && objs.empty();
  shortageRaised = false;

  objCount = 0;
  keySoundCount = 0;
  lastMeasure = 0;
  posOffset = 0;
  TotalNotes = {};
  ScoreShown = {};
  JPtsShown = {};
  RecCount = 0;
  posTotal = 0;
  EchoCount = 0;
  VoiceCount = 0;
  ResetBudgetNotice();
}

bool RefuseLongChart(TextView path) {
  if (platform::FileLength(path).value_or(0) <= kLongestChart) return false;
  const Text words = Join(u"chart of more than 256 MiB refused: ", GetFileName(path));
  DebugLog(words);
  ShowMessage(words);
  return true;
}

void BMSRead(TextView path) { BMSReadBytes(path, platform::ReadFile(path).value_or("")); }

void BMSReadBytes(TextView path, std::string_view bytes, ChartReport* report) {
  uses89 = false;
  sideUsesBga = {};
  DescribeSounds();
  DebugLog(Join(u"[BMSRead] ", GetFileName(path)), 1);

  ChartText chart;
  const auto decode = WideCharts ? WideReading::Decode : DecodeChart;
  if (!platform::WithinMemory([&] { chart = decode(bytes); })) DebugLog(u"# there is no memory for its text");
  if (chart.converted) DebugLog(u"Return-code converted");

  BMSPath = path;
  sideUsed = {};
  BuildChannelMap();
  SetHeaderDefaults();
  const int32_t first = objCount;
  const bool whole = LineReader(path, report).ReadLines(chart.text);
  loadProgress = {};
  if (!whole) return;

  DebugLog(u"all lines compiled");
  DebugLog(Join(u"last measure: ", lastMeasure));
  if (CourseMode && !PreviewActive) AddSongChange();
  ForcePlayer(first);
  // Quirk: a file without objects leaves the log one step indented.
  if (objCount == 0 || ReportShortage()) return;
  DebugLog(u"Read complete", -1);
}

bool ReportShortage() {
  const bool tooFew = objCount > numObjs;
  if (shortageRaised || (!tooFew && !tableMissing)) return false;
  shortageRaised = true;
  if (!tooFew) {
    FatalError(u"too many numObjs!",
               Join(u"a table of ", numObjs, u" objs does not fit into the memory.", kCrLf,
                    u"please check \"numObjs\" value in \"qlm_conf.ini\" file."));
    return true;
  }
  FatalError(u"too few numObjs!",
             Join(u"this time, I need at least ", objCount, u" objs. but current numObjs value is ", numObjs,
                  u".", kCrLf, u"please check \"numObjs\" value in \"qlm_conf.ini\" file."));
  return true;
}

}  // namespace qlm
