// The search file as a scan takes it.
#include "files/search_folders.h"

#include <algorithm>
#include <string>

#include "base/log.h"
#include "base/paths.h"
#include "platform/disk_search.h"
#include "platform/files.h"
#include "platform/text.h"

namespace qlm {
namespace {

constexpr int64_t kLongestFile = int64_t{1} << 20;
constexpr char16_t kByteOrderMark = 0xFEFF;

Text WithProgramFolder(TextView line) {
  const Text capitals = UCase(line);
  Text replaced;
  size_t from = 0;
  for (size_t place = 0; (place = capitals.find(kCurrentFolder, from)) != Text::npos;) {
    replaced.append(line.substr(from, place - from)).append(AppPath);
    from = place + kCurrentFolder.size();
  }
  return replaced.append(line.substr(from));
}

// Quirk: the line loses its outer blanks only where it holds a "#", and is then cut at that one's place in
// the line as it was: " a#" leaves "a#".
TextView WithoutSwitchedOff(TextView line) {
  const size_t place = line.find(u'#');
  return place == TextView::npos ? line : Left(Trim(line), static_cast<int64_t>(place));
}

}  // namespace

std::vector<Text> SearchLines(std::string_view bytes) {
  bytes = bytes.substr(0, bytes.find('\0'));
  Text text = platform::IsUtf8(bytes) ? platform::DecodeUtf8(bytes) : platform::DecodeCp932(bytes);
  if (text.starts_with(kByteOrderMark)) text.erase(0, 1);
  std::vector<Text> lines = Split(text, u"\n");
  for (Text& line : lines) {
    if (line.ends_with(kCr)) line.pop_back();
  }
  return lines;
}

std::optional<std::vector<Text>> ReadSearchFile() {
  const Text path = DataPath(u"qlm_searchdir.txt");
  if (!platform::FindPath(path)) return std::nullopt;
  const platform::TextBytes text = platform::ReadText(path, kLongestFile);
  if (!text.why.empty()) DebugLog(Join(u"# ", path, u": ", text.why));
  return SearchLines(text.bytes);
}

std::optional<Text> SearchedFolder(TextView line) {
  const Text whole = WithProgramFolder(line);
  const TextView uncommented = TextView(whole).substr(0, whole.find(u"//"));
  Text folder(WithoutSwitchedOff(uncommented));
  if (folder.empty()) return std::nullopt;
  // A person may write the system's form.
  std::replace(folder.begin(), folder.end(), u'/', u'\\');
  return folder;
}

}  // namespace qlm
