// Comparison of files byte by byte, with the names of the fields that differ.
#pragma once

#include <gtest/gtest.h>

#include <string>
#include <string_view>
#include <vector>

namespace qlm {

struct FileField {
  std::string name;
  std::string bytes;
};

// Bytes written as pairs of hexadecimal digits; blanks are passed over.
inline std::string FromHex(std::string_view digits) {
  std::string bytes;
  std::string pair;
  for (const char digit : digits) {
    if (digit == ' ') continue;
    pair += digit;
    if (pair.size() < 2) continue;
    bytes += static_cast<char>(std::stoi(pair, nullptr, 16));
    pair.clear();
  }
  return bytes;
}

// Whether the file is made of these fields, one behind the other, and of nothing else.
inline testing::AssertionResult HasFields(std::string_view file, const std::vector<FileField>& fields) {
  testing::AssertionResult result = testing::AssertionSuccess();
  const auto fail = [&] { return result ? (result = testing::AssertionFailure()) : result; };
  size_t place = 0;
  for (const FileField& field : fields) {
    if (place > file.size() || file.substr(place, field.bytes.size()) != field.bytes) {
      fail();
      result << "at " << place << " " << field.name << " differs; ";
    }
    place += field.bytes.size();
  }
  if (place != file.size()) {
    fail();
    result << file.size() << " bytes in place of " << place;
  }
  return result;
}

}  // namespace qlm
