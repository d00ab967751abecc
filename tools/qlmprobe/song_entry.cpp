// Printing of rows.
#include "tools/qlmprobe/song_entry.h"

namespace probe {

void PutSongEntry(qlm::Json& json, const qlm::SongEntry& song) {
  json.Put("title", qlm::TextView(song.title));
  json.Put("artist", qlm::TextView(song.artist));
  json.Put("genre", qlm::TextView(song.genre));
  json.Put("bpm", song.bpm);
  json.Put("player", song.player);
  json.Put("playLevel", song.playLevel);
  json.Put("midiFile", qlm::TextView(song.midiFile));
  json.Put("rank", song.rank);
  json.Put("volWav", song.volWav);
  json.Put("total", song.total);
  json.Put("lengthMs", song.lengthMs);
  json.Put("stageFile", qlm::TextView(song.stageFile));
  json.Put("numWav", song.numWav);
  json.Put("numBmp", song.numBmp);
}

void PutRows(qlm::Json& json, std::string_view key, std::span<const qlm::SongEntry> rows) {
  json.Key(key).BeginArray();
  for (const qlm::SongEntry& song : rows) {
    json.BeginObject();
    PutSongEntry(json, song);
    json.Put("path", qlm::TextView(song.path));
    json.EndObject();
  }
  json.EndArray();
}

}  // namespace probe
