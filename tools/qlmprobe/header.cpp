// The command `header`: the list entry that the library makes of a chart.
#include "library/song_list.h"
#include "state/lists.h"
#include "tools/qlmprobe/commands.h"
#include "tools/qlmprobe/engine.h"
#include "tools/qlmprobe/song_entry.h"

namespace probe {

int HeaderCommand(Arguments& arguments) {
  StartEngine(arguments);
  const std::vector<std::string>& files = arguments.Files();
  if (!arguments.Good()) return kWrongUsage;
  if (!CheckReadableChart(files[0])) return kRefused;

  qlm::AddSong(GamePath(files[0]));
  Json json;
  PutSongEntry(json, qlm::songList.front());
  return Print(json, kDone);
}

}  // namespace probe
