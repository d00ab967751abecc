// By the converter of the C library.
#include "code_page.h"

#include <iconv.h>

#include <cstdint>

namespace assetmaker {

std::optional<std::string> InCodePage932(std::string_view utf8) {
  const iconv_t converter = iconv_open("CP932", "UTF-8");
  if (converter == reinterpret_cast<iconv_t>(std::intptr_t{-1})) return std::nullopt;
  std::string from(utf8), to(utf8.size(), '\0');  // no letter has more bytes there
  char* read = from.data();
  char* write = to.data();
  std::size_t left = from.size(), room = to.size();
  const std::size_t lost = iconv(converter, &read, &left, &write, &room);
  iconv_close(converter);
  if (lost != 0) return std::nullopt;
  to.resize(to.size() - room);
  return to;
}

}  // namespace assetmaker
