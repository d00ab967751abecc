// The command `scan`: the charts that the library finds below folders.
#include <unistd.h>

#include <cstdio>
#include <utility>

#include "base/hooks.h"
#include "files/list_file.h"
#include "library/scan.h"
#include "library/sorts.h"
#include "platform/files.h"
#include "platform/text.h"
#include "state/lists.h"
#include "tools/qlmprobe/commands.h"
#include "tools/qlmprobe/engine.h"
#include "tools/qlmprobe/song_entry.h"

namespace probe {
namespace {

using qlm::Text;
using qlm::TextView;

using Sort = void (*)();

std::vector<std::pair<Text, Text>> unreadable;  // path, why

Sort FindSort(std::string_view name) {
  constexpr std::pair<std::string_view, Sort> kSorts[] = {{"level", qlm::SortByLevel},
                                                          {"genre", qlm::SortByGenre},
                                                          {"title", qlm::SortByTitle},
                                                          {"artist", qlm::SortByArtist}};
  for (const auto& [known, sort] : kSorts) {
    if (known == name) return sort;
  }
  return nullptr;
}

// One line that is written over and over.
void ShowProgress(TextView text) {
  constexpr size_t kWidth = 78;
  const std::string line = platform::EncodeUtf8(text.substr(0, kWidth));
  std::fprintf(stderr, "\r\033[K%s", line.c_str());
}

void ScanFolders(const std::vector<std::string>& folders) {
  const bool watched = isatty(STDERR_FILENO) != 0;
  if (watched) qlm::hooks.setCaption = ShowProgress;
  qlm::hooks.unreadable = [](TextView path, TextView why) { unreadable.emplace_back(path, why); };
  for (const std::string& folder : folders) qlm::ScanFolder(GamePath(folder));
  if (watched) std::fputs("\r\033[K", stderr);
}

void PutUnreadable(Json& json) {
  json.Key("unreadable").BeginArray();
  for (const auto& [path, why] : unreadable) {
    json.BeginObject();
    json.Put("path", TextView(path));
    json.Put("why", TextView(why));
    json.EndObject();
  }
  json.EndArray();
}

bool WriteList(const std::string& file) {
  if (qlm::WriteListFile(GamePath(file), qlm::songList)) return true;
  std::fprintf(stderr, "qlmprobe: %s: the file cannot be written\n", file.c_str());
  return false;
}

}  // namespace

int ScanCommand(Arguments& arguments) {
  StartEngine(arguments);
  const std::optional<std::string> order = arguments.Value("--sort");
  const Sort sort = order ? FindSort(*order) : nullptr;
  if (order && sort == nullptr) arguments.Fail("--sort wants level, genre, title or artist");
  if (!arguments.Good()) return kWrongUsage;
  for (const std::string& folder : arguments.Files()) {
    if (!CheckFolder(folder)) return kRefused;
  }

  qlm::library.scanNoLimit = arguments.Flag("--no-limit");
  ScanFolders(arguments.Files());
  if (sort != nullptr) sort();
  const std::optional<std::string> out = arguments.Value("--out");
  if (out && !qlm::songList.empty() && !WriteList(*out)) return kRefused;
  Json json;
  PutRows(json, "rows", qlm::songList);
  PutUnreadable(json);
  return Print(json, kDone);
}

}  // namespace probe
