// The bytes of BMP files: those of plain pictures, and for tests such as no program should write.
#pragma once

#include <cstdint>
#include <string>
#include <vector>

namespace media {

// A file by its parts. Nothing is checked, so that each of them may be wrong.
struct BmpFile {
  int32_t width = 0;
  int32_t height = 0;
  uint32_t bits = 24;
  uint32_t compression = 0;
  std::vector<uint32_t> table{};      // palette, or masks
  std::vector<unsigned char> data{};  // rows from the bottom up, each filled up to 4 bytes
  uint32_t coloursUsed = 0;

  std::string Bytes() const;
};

// A picture of 24 bits. Rows from top to bottom, all of one length, colours as 0xRRGGBB.
std::string BmpOf(const std::vector<std::vector<uint32_t>>& rows);

// One of a single colour.
std::string SolidBmp(int32_t width, int32_t height, uint32_t colour);

}  // namespace media
