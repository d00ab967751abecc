// The search file, as a scan takes it and as a person keeps it.
#include "files/search_folders.h"

#include <algorithm>
#include <string>

#include "base/log.h"
#include "base/paths.h"
#include "files/data_folder.h"
#include "platform/disk_search.h"
#include "platform/files.h"
#include "platform/text.h"

namespace qlm {
namespace {

constexpr int64_t kLongestFile = int64_t{1} << 20;
constexpr char16_t kByteOrderMark = 0xFEFF;
constexpr TextView kFileName = u"qlm_searchdir.txt";

// Quirk: the line loses its outer blanks only where it holds a "#", and is then cut at that one's place in
// the line as it was: " a#" leaves "a#".
TextView WithoutSwitchedOff(TextView line) {
  const size_t place = line.find(u'#');
  return place == TextView::npos ? line : Left(Trim(line), static_cast<int64_t>(place));
}

bool InCodePage(TextView text) { return platform::DecodeCp932(platform::EncodeCp932(text)) == text; }

// A person may have written the system's form of a path, which looks like a comment.
bool IsComment(TextView line) {
  const std::optional<Text> folder = SearchedFolder(line);
  return line.starts_with(u'/') && !(folder && platform::IsFolder(*folder));
}

void TakeLine(TextView line, SearchFolders& search) {
  if (line.empty()) return;
  if (IsComment(line)) {
    search.comments += Join(line, kCrLf);
  } else if (line.starts_with(u'#')) {
    search.folders.push_back({Text(line.substr(1)), false});
  } else if (line.starts_with(u'/')) {
    search.folders.push_back({*SearchedFolder(line), true});
  } else {
    search.folders.push_back({Text(line), true});
  }
}

// The length of the character that begins a text: 2 for one outside the first 65,536.
size_t CharacterLength(TextView text) {
  return text.size() > 1 && text[0] >= 0xD800 && text[0] <= 0xDBFF ? 2 : 1;
}

}  // namespace

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
  const Text path = DataPath(kFileName);
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

SearchFolders ReadSearchFolders() {
  SearchFolders search;
  for (const Text& line : ReadSearchFile().value_or(std::vector<Text>())) TakeLine(line, search);
  return search;
}

std::string SearchFileBytes(const SearchFolders& search) {
  Text text = search.comments;
  for (const SearchFolder& each : search.folders) text += Join(each.ticked ? u"" : u"#", each.folder, kCrLf);
  return InCodePage(text) ? platform::EncodeCp932(text) : platform::EncodeUtf8(text);
}

bool SaveSearchFolders(const SearchFolders& search) {
  return SaveDataFile(kFileName, SearchFileBytes(search));
}

Text LettersNotStored(TextView folder) {
  Text letters;
  while (!folder.empty()) {
    const TextView letter = folder.substr(0, CharacterLength(folder));
    if ((letter == u"#" || !InCodePage(letter)) && letters.find(letter) == Text::npos) letters += letter;
    folder.remove_prefix(letter.size());
  }
  return letters;
}

}  // namespace qlm
