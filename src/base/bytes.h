// Little-endian writing of the bytes of a file.
#pragma once

#include <bit>
#include <cstdint>
#include <string>
#include <string_view>
#include <utility>

namespace qlm {

class ByteWriter {
 public:
  void U8(uint8_t value) { Number(value, 1); }
  void U16(uint16_t value) { Number(value, 2); }
  void U32(uint32_t value) { Number(value, 4); }
  void I16(int16_t value) { U16(std::bit_cast<uint16_t>(value)); }
  void I32(int32_t value) { U32(std::bit_cast<uint32_t>(value)); }
  void F32(float value) { U32(std::bit_cast<uint32_t>(value)); }
  void Bytes(std::string_view bytes) { bytes_ += bytes; }
  // Zero bytes up to `place`; nothing when it is passed already.
  void FillTo(size_t place) {
    if (place > bytes_.size()) bytes_.resize(place, '\0');
  }

  size_t Place() const { return bytes_.size(); }
  std::string Take() { return std::move(bytes_); }

 private:
  void Number(uint32_t value, int width) {
    for (int shift = 0; shift < 8 * width; shift += 8) bytes_ += static_cast<char>(value >> shift & 255);
  }

  std::string bytes_;
};

}  // namespace qlm
