// Writing of one JSON object: keys in the order in which they come, numbers in their shortest form.
#pragma once

#include <array>
#include <cmath>
#include <concepts>
#include <cstdint>
#include <cstdio>
#include <string>
#include <string_view>
#include <vector>

#include "base/text.h"
#include "platform/text.h"

namespace probe {

class Json {
 public:
  Json() { Open('{'); }

  Json& Key(std::string_view key) {
    Separate(depth_ <= 2);
    Quote(key);
    text_ += ": ";
    afterKey_ = true;
    return *this;
  }
  void Value(qlm::TextView text) {
    Separate(depth_ == 2);
    Quote(platform::EncodeUtf8(text));
  }
  void Value(std::string_view utf8) {
    Separate(depth_ == 2);
    Quote(utf8);
  }
  void Value(const char* utf8) { Value(std::string_view(utf8)); }
  void Value(bool flag) {
    Separate(false);
    text_ += flag ? "true" : "false";
  }
  void Value(std::integral auto number) {
    Separate(false);
    text_ += std::to_string(number);
  }
  // Reads back to the same value of its own width. What is no number stands as a string.
  void Value(std::floating_point auto number) {
    const std::string digits = platform::EncodeUtf8(qlm::ToText(number));
    Separate(false);
    if (std::isfinite(number)) {
      text_ += digits;
    } else {
      Quote(digits);
    }
  }
  template <typename T, size_t N>
  void Value(const std::array<T, N>& values) {
    BeginArray();
    for (const T& value : values) Value(value);
    EndArray();
  }
  template <typename T>
  void Put(std::string_view key, const T& value) {
    Key(key).Value(value);
  }
  // An array of unlike values.
  template <typename... Ts>
  void Row(const Ts&... values) {
    BeginArray();
    (Value(values), ...);
    EndArray();
  }

  void BeginObject() {
    Separate(depth_ >= 2);
    Open('{');
  }
  void EndObject() { Close('}'); }
  void BeginArray() {
    Separate(depth_ == 2);
    Open('[');
  }
  void EndArray() { Close(']'); }

  // Ends the object and writes it to standard output.
  void Print() {
    Close('}');
    text_ += '\n';
    std::fwrite(text_.data(), 1, text_.size(), stdout);
  }

 private:
  // Keys of the outer object, entries of what they hold, and objects in lists stand on lines of their own.
  void Separate(bool ownLine) {
    if (afterKey_) {
      afterKey_ = false;
      return;
    }
    if (!empty_) text_ += ownLine ? "," : ", ";
    if (ownLine) text_.append("\n").append(static_cast<size_t>(depth_) * 2, ' ');
    if (ownLine) wide_.back() = true;
    empty_ = false;
  }
  void Open(char bracket) {
    text_ += bracket;
    ++depth_;
    wide_.push_back(false);
    empty_ = true;
  }
  void Close(char bracket) {
    const bool wide = wide_.back();
    wide_.pop_back();
    --depth_;
    if (wide) text_.append("\n").append(static_cast<size_t>(depth_) * 2, ' ');
    text_ += bracket;
    empty_ = false;
  }
  void Quote(std::string_view utf8) {
    text_ += '"';
    for (const char byte : utf8) {
      if (byte == '"' || byte == '\\') text_ += '\\';
      if (static_cast<unsigned char>(byte) >= 0x20) {
        text_ += byte;
        continue;
      }
      std::array<char, 8> escaped{};
      std::snprintf(escaped.data(), escaped.size(), "\\u%04x", static_cast<unsigned>(byte));
      text_ += escaped.data();
    }
    text_ += '"';
  }

  std::string text_;
  int depth_ = 0;
  bool empty_ = true;  // nothing stands yet in the innermost bracket
  bool afterKey_ = false;
  std::vector<bool> wide_;  // by bracket: entries stand on lines of their own
};

}  // namespace probe
