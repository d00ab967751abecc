// Searching folders for charts.
#include "library/scan.h"

#include <optional>
#include <set>
#include <utility>

#include "base/log.h"
#include "base/paths.h"
#include "files/search_folders.h"
#include "library/jukebox.h"
#include "library/lists.h"
#include "library/progress.h"
#include "library/song_list.h"
#include "platform/disk_search.h"
#include "platform/message_box.h"
#include "state/lists.h"
#include "state/settings.h"

namespace qlm {
namespace {

constexpr int16_t kLimit = 2;  // the folder itself and those in it

// Folders that a search without a limit has entered.
std::set<platform::FolderId> entered;

bool AtLimit() { return library.scanDepth >= kLimit && !library.scanNoLimit; }

// A pattern is "*" and the end of a name.
bool Fits(TextView name, TextView pattern) {
  const TextView end = pattern.substr(pattern.empty() ? 0 : 1);
  return name.size() >= end.size() && EqualsAnyCase(Right(name, Len(end)), end);
}

void TakeFiles(const Text& folder, const std::vector<Text>& names, TextView pattern) {
  for (const Text& name : names) {
    if (Fits(name, pattern)) library.foundFiles.push_back(folder + name);
  }
  library.foundCount = static_cast<int32_t>(library.foundFiles.size());
}

void ReportOthers(const Text& folder, const std::vector<Text>& names, TextView pattern) {
  for (const Text& name : names) {
    if (Fits(name, pattern)) ReportUnreadable(folder + name, u"It is no file, or a link to none");
  }
}

// Deepens the search for as long as it lives.
class Level {
 public:
  Level() {
    if (library.scanDepth++ == 0) entered.clear();
  }
  ~Level() { --library.scanDepth; }
  Level(const Level&) = delete;
  Level& operator=(const Level&) = delete;
};

// Tells what events bring that the list is being made, for as long as it lives.
class Running {
 public:
  Running() = default;
  ~Running() { library.scanRunning = before_; }
  Running(const Running&) = delete;
  Running& operator=(const Running&) = delete;

 private:
  bool before_ = std::exchange(library.scanRunning, true);
};

void FindFilesBelow(const Text& folder, const std::vector<Text>& names, TextView patterns) {
  for (const Text& name : names) {
    if (!name.starts_with(u'.')) FindFiles(folder + name, patterns, true);
  }
}

// What a scan looks into. Without a search file it is a first start, which shows the stock songs.
std::vector<Text> LinesToSearch() {
  return ReadSearchFile().value_or(std::vector<Text>{Join(kCurrentFolder, u"\\songs")});
}

// A search that was stopped writes nothing for the folder in which it stood: its jukebox stays as it was.
void MakeJukebox(TextView folder) {
  DebugLog(Join(u"seeking ", folder));
  ClearList();
  ScanFolder(folder);
  if (library.scanStopped) return;
  // Quirk: the last index, so that -1 is nothing and 0 is one chart.
  DebugLog(Join(u"founds: ", lastSong));
  // Quirk: a folder that has no chart any more keeps its jukebox.
  if (lastSong < 0) return;
  // Quirk: two folders of one name share a jukebox, which has the charts of the later one.
  SaveJukeList(JukeboxOf(folder), true);
}

void MakeJukeboxes() {
  const Running running;
  library.scanStopped = false;
  for (const Text& line : LinesToSearch()) {
    if (library.scanStopped) break;
    if (const std::optional<Text> folder = SearchedFolder(line)) MakeJukebox(*folder);
  }
}

}  // namespace

void FindFiles(TextView folderName, TextView patterns, bool recurse) {
  const Text folder = EnsureBackslash(folderName);
  if (AtLimit() || library.scanStopped) return;
  const Level level;
  platform::FolderContents contents = platform::ReadFolder(folder);
  if (!contents.why.empty()) return ReportUnreadable(folder, contents.why);
  if (library.scanNoLimit && !entered.insert(contents.id).second) return;

  for (const Text& pattern : Split(patterns, u";")) {
    TakeFiles(folder, contents.files, pattern);
    ReportOthers(folder, contents.others, pattern);
  }
  ShowSearchProgress(folder);
  PumpSearch();
  if (recurse && !AtLimit()) FindFilesBelow(folder, contents.folders, patterns);
}

std::vector<Text> SearchFiles(TextView folder, TextView patterns) {
  const Running running;
  library.foundCount = 0;
  library.foundFiles.clear();
  FindFiles(folder, patterns, true);
  // A copy, since events may search while the files are read.
  return library.foundFiles;
}

TextView ChartPatterns() { return WideCharts ? u"*.bms;*.bme;*.bml" : u"*.bms;*.bme"; }

void ScanFolder(TextView folder) {
  const Running running;
  for (const Text& path : SearchFiles(folder, ChartPatterns())) {
    if (library.scanStopped) break;
    AddSong(path);
    PumpSearch();
  }
}

bool MakeBMSListFile(bool noDepthLimit) {
  // Quirk: this is only logged. How deep the search goes is set beside it, by the menu.
  DebugLog(Join(u"[MakeBMSListFile] depth limit:", !noDepthLimit));
  MakeJukeboxes();
  // The list of jukeboxes is a search too.
  const bool stopped = std::exchange(library.scanStopped, false);
  UpdateJukeList();
  if (stopped || lastSong >= 0) {
    DebugLog(stopped ? u"stopped." : u"complete.");
    ShowProgress(stopped ? u"Scan stopped." : u"Scan complete.");
    return lastSong >= 0;
  }
  ReportNoCharts();
  return false;
}

void ReportNoCharts() {
  platform::MessageBox(
      platform::BoxIcon::kCritical, u"No BMSs",
      u"BMSファイルが見つかりません。「BMS再検索」で検索フォルダを追加してBMS検索をしてください。");
}

}  // namespace qlm
