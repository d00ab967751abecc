// Jukebox lists.
#include "library/jukebox.h"

#include <optional>
#include <string>
#include <utility>

#include "base/paths.h"
#include "files/list_file.h"
#include "library/progress.h"
#include "library/song_list.h"
#include "platform/files.h"
#include "platform/heap.h"
#include "platform/message_box.h"
#include "state/lists.h"
#include "state/settings.h"

namespace qlm {
namespace {

// False when the file cannot be read or breaks off; the list then has what there is.
bool TakeFile(TextView path) {
  const std::optional<std::string> bytes = platform::ReadFile(path);
  ListFile file;
  if (!bytes || !platform::WithinMemory([&] { file = ReadListFile(*bytes); })) return false;
  TakeRows(std::move(file.rows));
  return file.whole;
}

}  // namespace

void LoadJukeList(TextView path, bool quiet) {
  using platform::BoxIcon;
  if (!FileExists(path)) {
    // Quirk: there is no blank before "is".
    if (!quiet) platform::MessageBox(BoxIcon::kWarning, u"error", Join(u"listfile ", path, u"is not exist."));
    return;
  }
  // A copy, since it may be a text of the list.
  const Text name(path);
  ClearList();
  const bool loaded = TakeFile(name);
  if (!loaded && !quiet) {
    platform::MessageBox(BoxIcon::kCritical, u"error", u"an error occured in list loading process!");
  }
  listFileName = name;
  ShowListProgress();
}

void SaveJukeList(TextView path, bool quiet) {
  const bool saved = WriteListFile(path, songList);
  if (!saved && !quiet) {
    platform::MessageBox(platform::BoxIcon::kCritical, u"error", u"an error occured in list saving process!");
  }
  listFileName = Text(path);
  ShowListProgress();
}

Text JukeboxOf(TextView folder) {
  if (folder.ends_with(u'\\') || folder.ends_with(u'/')) folder.remove_suffix(1);
  // find_last_of gives the greatest number, and so a 0 behind it, where there is none.
  return DataPath(Join(u"jukelist\\", folder.substr(folder.find_last_of(u"\\/") + 1), JukeboxExtension()));
}

TextView JukeboxExtension() { return WideCharts ? TextView(u".qwl") : TextView(u".qbl"); }

}  // namespace qlm
