// Recording and replaying of a play.
#include "play/records.h"

#include <cstddef>
#include <optional>

#include "base/log.h"
#include "base/numbers.h"
#include "base/paths.h"
#include "files/data_folder.h"
#include "files/record_file.h"
#include "platform/files.h"
#include "play/judgement.h"
#include "play/position.h"
#include "play/score_entry.h"
#include "sound/play.h"
#include "state/chart.h"
#include "state/keys.h"
#include "state/message.h"
#include "state/options.h"
#include "state/records.h"
#include "state/session.h"
#include "state/settings.h"
#include "state/timeline.h"

namespace qlm {
namespace {

constexpr float kFollowsCombo = -1;  // hiSpeed of a row

// The place of a channel in the tables of lanes; kLanes for one that has none.
size_t LaneOf(int64_t channel) {
  return channel >= 11 && channel < 11 + kLanes ? static_cast<size_t>(channel - 11) : kLanes;
}

void PressAgain(size_t lane, float deviation) {
  if (lane >= kLanes) return;
  LaneDown[lane] = true;
  LaneBeam[lane] = 1;
  PlayWav(LaneSound[lane], 0, 0);
  if (LaneNote[lane] != -1 && !PlayFailed && JudgeNote(LaneNote[lane], 0, true, deviation)) {
    LaneNote[lane] = -1;
  }
}

void LetGoAgain(size_t lane) {
  if (lane >= kLanes) return;
  LaneDown[lane] = false;
  LaneBeam[lane] = 0;
}

// The lanes of the record are those of the chart; where their notes fall is the random keymap of this read.
void ReplayLane(const RecEvent& event) {
  const bool pressed = event.kind >= 0;
  const int32_t* const channel = ChannelMap.Find(pressed ? event.kind : -int64_t{event.kind});
  if (channel == nullptr) return;
  // A channel below 0 stands for a lane that is let go.
  const int64_t played = pressed ? *channel : -int64_t{*channel};
  if (played >= 0) {
    PressAgain(LaneOf(played), event.delta);
  } else {
    LetGoAgain(LaneOf(-played));
  }
}

void Replay(const RecEvent& event) {
  switch (event.kind) {
    case kRecEnd:
      PlayEnd = true;
      ShowMessage(u"ESC Pressed");
      break;
    case kRecHiSpeed: HiSpeed = event.delta / 100; break;
    case kRecRealHiSpeed:
      RealHiSpeed = event.delta / 100;
      SetBPM(rawBPM);
      break;
    default: ReplayLane(event); break;
  }
}

int32_t CountNamed(const SlotTable<Text>& files) {
  int32_t count = 0;
  for (const Text& file : files) count += file.empty() ? 0 : 1;
  return count;
}

SongEntry ChartHeader() {
  return {.title = HdrTitle,
          .artist = HdrArtist,
          .genre = HdrGenre,
          .bpm = HdrBPM,
          .player = HdrPlayer,
          .playLevel = HdrPlayLevel,
          .midiFile = HdrMidiFile,
          .rank = HdrRank,
          .volWav = HdrVolWav,
          .total = HdrTotal,
          .lengthMs = BMSLengthMs,
          .stageFile = {},
          .numWav = CountNamed(WavFile),
          .numBmp = CountNamed(BmpFile),
          .path = BMSPath};
}

void TakeOptions(const ScoreEntry& entry) {
  Hidden = (entry.options1 & 1) != 0;
  Sudden = (entry.options1 & 2) != 0;
  Stealth = (entry.options1 & 4) != 0;
  Random = (entry.options2 & 1) != 0;
  ExRandom = (entry.options2 & 2) != 0;
  Accel = (entry.options3 & 1) != 0;
  Quil = (entry.options3 & 2) != 0;
  Pressure = (entry.options3 & 4) != 0;
}

// Quirk: the row holds the speeds at the end of the play. One in which they were changed thus replays with
// the last of them up to the place of the first change.
void TakeSpeeds(const ScoreEntry& entry) {
  ComboHiSpeed = entry.hiSpeed == kFollowsCombo;
  if (!ComboHiSpeed) {
    HiSpeed = entry.hiSpeed;
    RandomHiSpeed = entry.hiSpeed == 0;
  }
  RealHiSpeed = entry.realHiSpeed;
  SetBPM(HdrBPM);
  DebugLog(Join(u"rhsp: ", RealHiSpeed));
}

// As much of the file as a record can be long.
constexpr int64_t kMostBytes = int64_t{2} << 20;

}  // namespace

void EmptyRecord() {
  PlayRecord.clear();
  PlayRecord.reserve(kMostRecEvents);
  RecCount = 0;
}

// Quirk: the record holds 100,001 events. Those behind are lost, and counted all the same.
void AddRecEvent(int32_t kind, float delta, int32_t colour) {
  if (!UserRec) return;
  if (RecCount < kMostRecEvents) {
    RecEvent event{.kind = kind, .delta = delta, .colour = colour};
    Assign(event.pos, Round(playPos));
    PlayRecord.push_back(event);
  }
  ++RecCount;
}

// Quirk: the recorded deviation is judged again, but whether a press came too early is worked out from where
// this replay stands, up to a turn later. A POOR that left its note may thus take it, and end the combo.
void ReplayEvents() {
  while (RecCursor < RecCount && static_cast<size_t>(RecCursor) < PlayRecord.size()) {
    const RecEvent& event = PlayRecord[static_cast<size_t>(RecCursor)];
    if (!(event.pos < playPos)) return;
    Replay(event);
    ++RecCursor;
  }
}

void SaveUserRec(TextView path) {
  if (RecCount == 0 || path.empty()) return;
  const Text file = HasExtension(path) ? Text(path) : Join(path, u".bpd");
  DebugLog(Join(u"SaveUserRec:", file));
  ScoreEntry entry;
  FillEntry(entry);
  SaveFile(file, RecordBytes(BMSID, ChartHeader(), entry, RecCount, PlayRecord));
}

void LoadUserRec(TextView path) {
  DebugLog(Join(u"LoadUserRec:", path));
  if (const auto bytes = platform::ReadFilePart(path, 0, kMostBytes)) TakeUserRec(*bytes);
}

void TakeUserRec(std::string_view bytes) {
  RecordFile record = TakeRecord(bytes);
  RecCount = 0;
  if (record.bmsId != BMSID) {
    DebugLog(u"RECORD IS NOT COLLECT!");
    ShowMessage(u"Record File is not collect!");
    return;
  }
  PlayRecord = std::move(record.events);
  RecCount = static_cast<int32_t>(PlayRecord.size());
  TakeOptions(record.entry);
  TakeSpeeds(record.entry);
  DebugLog(Join(u"TOTALTMPOBJS: ", RecCount));
}

}  // namespace qlm
