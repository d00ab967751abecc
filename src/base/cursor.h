// Little-endian reading of bytes from outside: never past the end, and once it failed it stays failed.
#pragma once

#include <bit>
#include <cstdint>
#include <string_view>

namespace qlm {

class Cursor {
 public:
  explicit Cursor(std::string_view bytes) : bytes_(bytes) {}

  // False once anything was asked for that is not there; all reads then give 0 or nothing.
  bool Good() const { return good_; }
  size_t Left() const { return good_ ? bytes_.size() - at_ : 0; }
  size_t Place() const { return at_; }

  uint8_t U8() { return static_cast<uint8_t>(Number(1)); }
  uint16_t U16() { return static_cast<uint16_t>(Number(2)); }
  uint32_t U32() { return Number(4); }
  int16_t I16() { return std::bit_cast<int16_t>(U16()); }
  int32_t I32() { return std::bit_cast<int32_t>(U32()); }
  float F32() { return std::bit_cast<float>(U32()); }
  std::string_view Bytes(size_t count) {
    if (count > Left()) good_ = false;
    if (!good_) return {};
    at_ += count;
    return bytes_.substr(at_ - count, count);
  }
  void Skip(size_t count) { Bytes(count); }

 private:
  uint32_t Number(size_t width) {
    uint32_t value = 0;
    int shift = 0;
    for (const char byte : Bytes(width)) {
      value |= static_cast<uint32_t>(static_cast<unsigned char>(byte)) << shift;
      shift += 8;
    }
    return value;
  }

  std::string_view bytes_;
  size_t at_ = 0;
  bool good_ = true;
};

}  // namespace qlm
