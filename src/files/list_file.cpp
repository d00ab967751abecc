// List files between memory and disk.
#include "files/list_file.h"

#include "base/paths.h"
#include "files/data_folder.h"
#include "platform/files.h"
#include "platform/text.h"

namespace qlm {
namespace {

constexpr size_t kHeadBytes = 20;
constexpr size_t kMostTextBytes = kLongestRowText;

// Before a path that code page 932 does not hold: it stands in UTF-8 then. No path begins with these bytes,
// as each is whole and so begins with a "\" or a drive's letter.
constexpr std::string_view kUtf8Mark = "\xEF\xBB\xBF";

std::string_view TakeBytes(Cursor& cursor) { return cursor.Bytes(cursor.U16()); }

Text TakePath(Cursor& cursor) {
  const std::string_view bytes = TakeBytes(cursor);
  if (bytes.starts_with(kUtf8Mark)) return platform::DecodeUtf8(bytes.substr(kUtf8Mark.size()));
  return platform::DecodeCp932(bytes);
}

void PutCounted(ByteWriter& bytes, std::string_view text) {
  bytes.U16(static_cast<uint16_t>(text.size()));
  bytes.Bytes(text);
}

// Whole characters, as many as there is room for.
std::string CutToRoom(TextView text) {
  text = Left(text, kMostTextBytes);
  std::string bytes = platform::EncodeCp932(text);
  while (bytes.size() > kMostTextBytes) {
    // A character has two bytes at most, so that no more goes than must.
    text.remove_suffix((bytes.size() - kMostTextBytes + 1) / 2);
    bytes = platform::EncodeCp932(text);
  }
  return bytes;
}

// A chart must be found again by its path.
void PutPath(ByteWriter& bytes, TextView path) {
  const std::string encoded = CutToRoom(path);
  if (platform::DecodeCp932(encoded) == path) return PutCounted(bytes, encoded);
  const std::string marked = std::string(kUtf8Mark) + platform::EncodeUtf8(path);
  PutCounted(bytes, marked.size() <= kMostTextBytes ? marked : encoded);
}

}  // namespace

Text TakeText(Cursor& cursor) { return platform::DecodeCp932(TakeBytes(cursor)); }

void PutText(ByteWriter& bytes, TextView text) { PutCounted(bytes, CutToRoom(text)); }

SongEntry TakeSongEntry(Cursor& cursor) {
  SongEntry song;
  song.title = TakeText(cursor);
  song.artist = TakeText(cursor);
  song.genre = TakeText(cursor);
  song.bpm = cursor.F32();
  song.player = cursor.I32();
  song.playLevel = cursor.I32();
  song.midiFile = TakeText(cursor);
  song.rank = cursor.I32();
  song.volWav = cursor.I32();
  song.total = cursor.I32();
  song.lengthMs = cursor.I32();
  song.stageFile = TakeText(cursor);
  song.numWav = cursor.I32();
  song.numBmp = cursor.I32();
  song.path = TakePath(cursor);
  return song;
}

void PutSongEntry(ByteWriter& bytes, const SongEntry& song) {
  PutText(bytes, song.title);
  PutText(bytes, song.artist);
  PutText(bytes, song.genre);
  bytes.F32(song.bpm);
  bytes.I32(song.player);
  bytes.I32(song.playLevel);
  PutText(bytes, song.midiFile);
  bytes.I32(song.rank);
  bytes.I32(song.volWav);
  bytes.I32(song.total);
  bytes.I32(song.lengthMs);
  PutText(bytes, song.stageFile);
  bytes.I32(song.numWav);
  bytes.I32(song.numBmp);
  PutPath(bytes, song.path);
}

ListFile ReadListFile(std::string_view bytes) {
  ListFile list;
  Cursor cursor(bytes);
  // Quirk: neither the word nor the version at its head is looked at; any file with rows at their place is a
  // list.
  cursor.Skip(kHeadBytes);
  list.lastSong = cursor.I32();
  if (!cursor.Good()) {
    list.lastSong = -1;
    return list;
  }
  // However many rows the file tells of, there are no more than its bytes hold.
  size_t left = cursor.Left();
  for (int64_t row = 0; row <= list.lastSong && left > 0; ++row) {
    list.rows.push_back(TakeSongEntry(cursor));
    left = cursor.Left();
  }
  list.whole = cursor.Good() && static_cast<int64_t>(list.rows.size()) == int64_t{list.lastSong} + 1;
  list.unread = left;
  return list;
}

std::string ListFileBytes(std::span<const SongEntry> rows) {
  ByteWriter bytes;
  bytes.Bytes("qlm_juke");
  bytes.FillTo(kHeadBytes - 1);
  bytes.U8(1);  // version
  // Quirk: the last index and not the count.
  bytes.I32(static_cast<int32_t>(rows.size()) - 1);
  for (const SongEntry& song : rows) PutSongEntry(bytes, song);
  return bytes.Take();
}

// Quirk: a list is written over the one before, so that a longer one leaves its end behind the last row.
bool WriteListFile(TextView path, std::span<const SongEntry> rows) {
  const std::string bytes = WrittenOver(path, ListFileBytes(rows));
  const Text folder = DataPath(u"");
  if (path.starts_with(folder)) return SaveDataFile(path.substr(folder.size()), bytes);
  return platform::WriteFile(path, bytes);
}

}  // namespace qlm
