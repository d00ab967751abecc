// The typed fields of a message: written one behind the other, and read back in the same order.
//
// Numbers are little-endian; a text is a byte with its length in UTF-16 units, and these.
#pragma once

#include <cmath>
#include <cstdint>
#include <string>
#include <string_view>

#include "base/bytes.h"
#include "base/cursor.h"
#include "base/text.h"

namespace qlm {

constexpr size_t kLongestField = 255;  // UTF-16 units of a text

// The first field of every message. Other numbers are ignored.
enum class MessageType : int32_t {
  kInit = 0,
  kSongShown = 2,
  kSongDecided = 3,
  kSongReady = 4,
  kStandby = 5,
  kSongStart = 6,
  kEnd = 7,
  kAllEnd = 8,
  kGauge = 9,
  kAttack = 13,
};

class MessageWriter {
 public:
  explicit MessageWriter(MessageType type) { Long(static_cast<int32_t>(type)); }

  MessageWriter& Long(int32_t value) { return bytes_.I32(value), *this; }
  MessageWriter& Short(int16_t value) { return bytes_.I16(value), *this; }
  MessageWriter& Byte(uint8_t value) { return bytes_.U8(value), *this; }
  MessageWriter& Single(float value) { return bytes_.F32(value), *this; }
  // What is longer than a field is cut.
  MessageWriter& String(TextView text) {
    text = text.substr(0, kLongestField);
    bytes_.U8(static_cast<uint8_t>(text.size()));
    for (const char16_t unit : text) bytes_.U16(unit);
    return *this;
  }

  std::string Take() { return bytes_.Take(); }

 private:
  ByteWriter bytes_;
};

// A field beyond the end leaves its target as it was, and so do all behind it.
class MessageReader {
 public:
  explicit MessageReader(std::string_view body) : bytes_(body) {}

  void Long(int32_t& target) { Take(target, bytes_.I32()); }
  void Short(int16_t& target) { Take(target, bytes_.I16()); }
  void Byte(uint8_t& target) { Take(target, bytes_.U8()); }
  // What is no finite number counts as 0.
  void Single(float& target) {
    const float value = bytes_.F32();
    Take(target, std::isfinite(value) ? value : 0.0F);
  }
  // Without its control characters, so that nothing from outside makes a line of the log look like two.
  void String(Text& target) {
    const size_t length = bytes_.U8();
    Cursor units(bytes_.Bytes(2 * length));
    if (!bytes_.Good()) return;
    target.resize(length);
    for (char16_t& unit : target) unit = units.U16();
    std::erase_if(target, [](char16_t unit) { return unit < 0x20 || (unit >= 0x7F && unit < 0xA0); });
  }

 private:
  template <typename T>
  void Take(T& target, T value) {
    if (bytes_.Good()) target = value;
  }

  Cursor bytes_;
};

}  // namespace qlm
