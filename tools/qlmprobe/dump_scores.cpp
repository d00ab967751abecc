// Score tables and play records in plain words.
#include "tools/qlmprobe/dump_scores.h"

#include <algorithm>
#include <cstdint>
#include <string>

#include "files/record_file.h"
#include "files/scores.h"
#include "platform/text.h"
#include "state/scores.h"

namespace probe {
namespace {

using qlm::Text;

std::string HexOf(std::string_view bytes) {
  constexpr std::string_view kDigits = "0123456789abcdef";
  std::string digits;
  for (const char byte : bytes) {
    const auto number = static_cast<unsigned char>(byte);
    digits += kDigits[number >> 4];
    digits += kDigits[number & 15];
  }
  return digits;
}

// A name without the blanks that fill it up, and without zero bytes.
Text NameOf(std::string_view bytes) {
  return Text(qlm::Trim(platform::DecodeCp932(bytes.substr(0, bytes.find('\0')))));
}

void PutEntry(Json& json, const qlm::ScoreEntry& entry) {
  const std::string_view name(entry.name.data(), entry.name.size());
  json.BeginObject();
  json.Put("clear", entry.clear != 0);
  json.Put("name", qlm::TextView(NameOf(name)));
  json.Put("nameBytes", std::string_view(HexOf(name)));
  json.Put("score", entry.score);
  json.Put("jpts", entry.jpts);
  json.Put("hiSpeed", entry.hiSpeed);
  json.Put("realHiSpeed", entry.realHiSpeed);
  json.Put("maxCombo", entry.maxCombo);
  json.Put("class", entry.classIndex);
  json.Put("options1", entry.options1);
  json.Put("options2", entry.options2);
  json.Put("options3", entry.options3);
  json.Put("counts", entry.counts);
  json.EndObject();
}

void PutSize(Json& json, size_t bytes, size_t looked) {
  json.Put("bytes", bytes);
  json.Put("unread", bytes - std::min(bytes, looked));
}

}  // namespace

void PutScores(Json& json, std::string_view bytes) {
  qlm::TakeScores(bytes);
  json.Put("plays", qlm::scores.playCount);
  json.Put("cleared", qlm::scores.cleared != 0);
  json.Key("rows").BeginArray();
  for (const qlm::ScoreEntry& entry : qlm::scores.ScoreTable) PutEntry(json, entry);
  json.EndArray();
  PutSize(json, bytes.size(), qlm::kScoreFileBytes);
}

void PutRecord(Json& json, std::string_view bytes) {
  const qlm::RecordFile record = qlm::TakeRecord(bytes);
  json.Put("bmsId", record.bmsId);
  json.Key("entry");
  PutEntry(json, record.entry);
  json.Put("count", record.count);
  json.Key("events").BeginArray();
  for (const qlm::RecEvent& event : record.events) {
    json.Row(event.pos, event.kind, event.delta, event.colour);
  }
  json.EndArray();
  PutSize(json, bytes.size(), record.looked);
}

}  // namespace probe
