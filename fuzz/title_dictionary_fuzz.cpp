// Any bytes as the dictionary of titles: each line has its two words.
#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <cstdlib>
#include <string_view>

#include "files/title_dictionary.h"
#include "state/titles.h"

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size) {
  using namespace qlm;
  TakeTitleDictionary({reinterpret_cast<const char*>(data), size});
  if (DictFrom.empty() || DictFrom.size() != DictTo.size()) std::abort();
  const auto whole = [](const Text& word) {
    return word.find(u'\t') == Text::npos && word.find(kCrLf) == Text::npos;
  };
  if (!std::all_of(DictFrom.begin(), DictFrom.end(), whole)) std::abort();
  if (!std::all_of(DictTo.begin(), DictTo.end(), whole)) std::abort();
  return 0;
}
