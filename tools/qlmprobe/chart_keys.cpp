// Printing of the chart in memory.
#include "tools/qlmprobe/chart_keys.h"

#include <algorithm>

#include "state/chart.h"
#include "state/gauge.h"
#include "state/judgement.h"
#include "state/slots.h"
#include "state/timeline.h"

namespace probe {
namespace {

using qlm::Text;
using qlm::TextView;

// By the digits of the chart. The tempi of a course, which lie behind those, go by their numbers.
std::string SlotKey(int64_t slot) {
  if (slot > qlm::LastSlot) return std::to_string(slot);
  return platform::EncodeUtf8(qlm::SlotName(static_cast<int32_t>(slot)));
}

void PutHeader(Json& json) {
  json.Key("header").BeginObject();
  json.Put("title", TextView(qlm::HdrTitle));
  json.Put("artist", TextView(qlm::HdrArtist));
  json.Put("genre", TextView(qlm::HdrGenre));
  json.Put("midiFile", TextView(qlm::HdrMidiFile));
  json.Put("bpm", qlm::HdrBPM);
  json.Put("player", qlm::HdrPlayer);
  json.Put("playLevel", qlm::HdrPlayLevel);
  json.Put("rank", qlm::HdrRank);
  json.Put("total", qlm::HdrTotal);
  json.Put("volWav", qlm::HdrVolWav);
  json.EndObject();
}

void PutObjects(Json& json) {
  json.Key("objs").BeginArray();
  for (int32_t i = 0; i < qlm::objCount; ++i) {
    const qlm::ChartObj* obj = qlm::FindObj(i);
    if (obj == nullptr) break;
    json.Row(obj->measure, obj->pos, obj->tick, obj->channel, obj->value, obj->hit, obj->speedMul);
  }
  json.EndArray();
}

void PutFiles(Json& json, std::string_view key, const qlm::SlotTable<Text>& files, TextView folder) {
  json.Key(key).BeginObject();
  for (int64_t i = 0; i <= files.Last(); ++i) {
    TextView name = files[i];
    if (name.empty()) continue;
    if (name.starts_with(folder)) name.remove_prefix(folder.size());
    json.Put(SlotKey(i), name);
  }
  json.EndObject();
}

void PutTables(Json& json) {
  json.Key("bpmTable").BeginObject();
  for (int64_t i = 0; i <= qlm::BpmTable.Last(); ++i) {
    if (qlm::BpmTable[i] != 0) json.Put(SlotKey(i), qlm::BpmTable[i]);
  }
  json.EndObject();
  json.Key("measureLen").BeginObject();
  for (int64_t i = 0; i <= qlm::MeasureLen.kLast; ++i) {
    if (qlm::MeasureLen[i] != 0) json.Put(std::to_string(i), qlm::MeasureLen[i]);
  }
  json.EndObject();
}

void PutPreparation(Json& json) {
  json.Key("keySoundChanges").BeginArray();
  const int64_t stored = std::min<int64_t>(qlm::keySoundCount, qlm::KeySoundChanges.kLast + 1);
  for (int64_t i = 0; i < stored; ++i) {
    const qlm::KeySoundChange& change = qlm::KeySoundChanges[i];
    json.Row(change.channel, change.pos, change.value);
  }
  json.EndArray();
  json.Put("keySoundCount", qlm::keySoundCount);
  json.Put("lengthMs", qlm::BMSLengthMs);
  json.Put("bmsId", qlm::BMSID);
  json.Put("scoreSide", qlm::ScoreSide);
  json.Put("gaugeGain", qlm::GaugeGain);
  json.Put("scorePerNote", qlm::ScorePerNote);
  json.Put("marquee", TextView(qlm::MarqueeText));
  json.Put("curBPM", qlm::curBPM);
  json.Put("rawBPM", qlm::rawBPM);
  json.Put("pixPerMs", qlm::pixPerMs);
  json.Put("lastObjPos", qlm::lastObjPos);
  json.Put("sideCount", qlm::SideCount);
  json.Put("judgeWindow", qlm::JudgeWindow);
  json.Put("historyStep", qlm::HistoryStep);
}

}  // namespace

void PutChart(Json& json, bool raw, const ChartFiles& files) {
  PutHeader(json);
  json.Put("uses89", qlm::uses89);
  json.Put("lastMeasure", qlm::lastMeasure);
  json.Put("totalNotes", qlm::TotalNotes);
  json.Put("objCount", qlm::objCount);
  PutObjects(json);
  PutFiles(json, "wav", files.wav, files.folder);
  PutFiles(json, "bmp", files.bmp, files.folder);
  PutTables(json);
  if (!raw) PutPreparation(json);
}

}  // namespace probe
