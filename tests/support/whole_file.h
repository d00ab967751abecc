// The bytes of a file, by the system's own path.
#pragma once

#include <filesystem>
#include <fstream>
#include <iterator>
#include <string>

namespace qlm {

// Empty where the file cannot be read.
inline std::string WholeFile(const std::filesystem::path& path) {
  std::ifstream in(path, std::ios::binary);
  return {std::istreambuf_iterator<char>(in), {}};
}

}  // namespace qlm
