// Any bytes as a dictionary and, behind a zero byte, a title: the result is printable ASCII.
#include <cstddef>
#include <cstdint>
#include <cstdlib>
#include <string_view>

#include "base/log.h"
#include "chart/titles.h"
#include "files/title_dictionary.h"
#include "platform/text.h"
#include "state/titles.h"

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size) {
  using namespace qlm;
  logOutput.file = false;
  const std::string_view bytes(reinterpret_cast<const char*>(data), size);
  const size_t zero = bytes.find('\0');
  TakeTitleDictionary(bytes.substr(0, zero));
  if (DictFrom.empty() || DictFrom.size() != DictTo.size()) std::abort();
  const std::string_view title = zero == std::string_view::npos ? bytes : bytes.substr(zero + 1);
  for (const char16_t letter : Cvt2ASCII(platform::DecodeCp932(title))) {
    if (letter < 32 || letter > 126) std::abort();
  }
  Cvt2ASCII(platform::DecodeUtf8(title));
  LogIndent = 0;
  return 0;
}
