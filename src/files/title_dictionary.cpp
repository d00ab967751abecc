// Lines that end in CR LF, fields between tabs.
#include "files/title_dictionary.h"

#include <cstdint>
#include <utility>
#include <vector>

#include "base/log.h"
#include "base/paths.h"
#include "platform/disk_search.h"
#include "platform/files.h"
#include "platform/text.h"
#include "state/titles.h"

namespace qlm {
namespace {

constexpr int64_t kLongestFile = int64_t{1} << 20;

}  // namespace

void LoadTitleDictionary() { LoadTitleDictionary(DataPath(u"cnvdict.txt")); }

bool LoadTitleDictionary(TextView path) {
  DictFrom = {{}};
  DictTo = {{}};
  if (!FileExists(path)) return false;
  const platform::TextBytes text = platform::ReadText(Text(path), kLongestFile);
  if (!text.why.empty()) DebugLog(Join(u"# ", path, u": ", text.why));
  TakeTitleDictionary(text.bytes);
  DebugLog(Join(u"convdict: ", static_cast<int64_t>(DictFrom.size()) - 1, u" words are avilable."));
  return true;
}

void TakeTitleDictionary(std::string_view bytes) {
  std::vector<Text> from;
  std::vector<Text> to;
  for (const Text& line : Split(platform::DecodeCp932(bytes), kCrLf)) {
    std::vector<Text> fields = Split(line, u"\t");
    fields.resize(2 > fields.size() ? 2 : fields.size());
    from.push_back(std::move(fields[0]));
    to.push_back(std::move(fields[1]));
  }
  DictFrom = std::move(from);
  DictTo = std::move(to);
}

}  // namespace qlm
