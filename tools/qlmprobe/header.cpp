// The command `header`: the list entry that the library makes of a chart.
#include "library/song_list.h"
#include "state/lists.h"
#include "tools/qlmprobe/commands.h"
#include "tools/qlmprobe/engine.h"

namespace probe {

int HeaderCommand(Arguments& arguments) {
  StartEngine(arguments);
  const std::vector<std::string>& files = arguments.Files();
  if (!arguments.Good()) return kWrongUsage;
  if (!CheckReadableChart(files[0])) return kRefused;

  qlm::AddSong(GamePath(files[0]));
  const qlm::SongEntry& song = qlm::songList.front();
  Json json;
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
  return Print(json, kDone);
}

}  // namespace probe
