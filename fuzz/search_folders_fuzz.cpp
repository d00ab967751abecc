// Any bytes as a search file: a folder is made of each line, and none of a comment.
#include <cstddef>
#include <cstdint>
#include <cstdlib>
#include <optional>
#include <string_view>

#include "base/paths.h"
#include "files/search_folders.h"

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size) {
  using namespace qlm;
  AppPath = Text(u"\\home");
  for (const Text& line : SearchLines({reinterpret_cast<const char*>(data), size})) {
    const std::optional<Text> folder = SearchedFolder(line);
    if (folder && (folder->empty() || folder->find(u'/') != Text::npos)) std::abort();
    if (folder && (line.starts_with(u"//") || line.starts_with(u'#'))) std::abort();
    if (line.find(u'\n') != Text::npos) std::abort();
  }
  return 0;
}
