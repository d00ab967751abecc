// Play records between memory and their files.
#include "files/record_file.h"

#include <algorithm>

#include "base/bytes.h"
#include "base/cursor.h"
#include "base/paths.h"
#include "files/scores.h"
#include "platform/text.h"
#include "state/settings.h"

namespace qlm {
namespace {

constexpr size_t kEntryPlace = 1023;
constexpr size_t kEntryBytes = 44;
constexpr size_t kCountPlace = 1439;
constexpr size_t kEventsPlace = 1443;
constexpr size_t kEventBytes = 18;
// What the header takes beside the bytes of its texts: six lengths and nine numbers.
constexpr size_t kHeaderFrame = 6 * 2 + 9 * 4;

// Writes the texts of a header, as long as there is room for them.
class HeaderTexts {
 public:
  HeaderTexts(ByteWriter& bytes, size_t room) : bytes_(bytes), room_(room) {}

  void Put(TextView text) {
    std::string encoded = platform::EncodeCp932(text);
    encoded.resize(std::min(encoded.size(), room_));
    room_ -= encoded.size();
    bytes_.U16(static_cast<uint16_t>(encoded.size()));
    bytes_.Bytes(encoded);
  }

 private:
  ByteWriter& bytes_;
  size_t room_;
};

void PutHeader(ByteWriter& bytes, const SongEntry& header) {
  HeaderTexts texts(bytes, kEntryPlace - bytes.Place() - kHeaderFrame);
  texts.Put(header.title);
  texts.Put(header.artist);
  texts.Put(header.genre);
  bytes.F32(header.bpm);
  bytes.I32(header.player);
  bytes.I32(header.playLevel);
  texts.Put(header.midiFile);
  bytes.I32(header.rank);
  bytes.I32(header.volWav);
  bytes.I32(header.total);
  bytes.I32(header.lengthMs);
  texts.Put(header.stageFile);
  bytes.I32(header.numWav);
  bytes.I32(header.numBmp);
  texts.Put(header.path);
}

RecEvent TakeEvent(Cursor& cursor) {
  RecEvent event;
  event.pos = cursor.I32();
  event.kind = cursor.I32();
  event.delta = cursor.F32();
  event.colour = cursor.I32();
  event.reserved = cursor.I16();
  return event;
}

void PutEvent(ByteWriter& bytes, const RecEvent& event) {
  bytes.I32(event.pos);
  bytes.I32(event.kind);
  bytes.F32(event.delta);
  bytes.I32(event.colour);
  bytes.I16(event.reserved);
}

Cursor From(std::string_view bytes, size_t place) {
  return Cursor(bytes.substr(std::min(place, bytes.size())));
}

// The end of the last field that bytes of this number reach into.
size_t LookedAt(size_t size, size_t events) {
  if (size > kEventsPlace) return kEventsPlace + events * kEventBytes;
  if (size > kCountPlace) return size;
  if (size > kEntryPlace) return std::min(size, kEntryPlace + kEntryBytes);
  return std::min(size, sizeof(int32_t));
}

}  // namespace

TextView RecordExtension() { return WideCharts ? TextView(u".w.qpd") : TextView(u".qpd"); }

Text RecordPath(TextView chart) {
  return WithExtension(chart, HasExtension(chart) || WideCharts ? RecordExtension() : TextView(u".bpd"));
}

RecordFile TakeRecord(std::string_view bytes) {
  RecordFile record;
  record.bmsId = From(bytes, 0).I32();
  Cursor entry = From(bytes, kEntryPlace);
  record.entry = TakeScoreEntry(entry);
  record.count = From(bytes, kCountPlace).I32();
  Cursor events = From(bytes, kEventsPlace);
  const size_t held = events.Left() / kEventBytes;
  record.events.resize(std::min(held, static_cast<size_t>(std::clamp(record.count, 0, kMostRecEvents))));
  for (RecEvent& event : record.events) event = TakeEvent(events);
  record.looked = LookedAt(bytes.size(), record.events.size());
  return record;
}

std::string RecordBytes(int32_t bmsId, const SongEntry& header, const ScoreEntry& entry, int32_t count,
                        std::span<const RecEvent> events) {
  const auto wanted = static_cast<size_t>(std::max(count, 0));
  ByteWriter bytes;
  bytes.I32(bmsId);
  PutHeader(bytes, header);
  bytes.FillTo(kEntryPlace);
  PutScoreEntry(bytes, entry);
  bytes.FillTo(kCountPlace);
  bytes.I32(count);
  for (const RecEvent& event : events.first(std::min(wanted, events.size()))) PutEvent(bytes, event);
  bytes.FillTo(kEventsPlace + wanted * kEventBytes);
  return bytes.Take();
}

}  // namespace qlm
