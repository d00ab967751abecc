// Writing of one JSON object: keys in the order in which they come, numbers in their shortest form.
#pragma once

#include <array>
#include <cmath>
#include <concepts>
#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

#include "base/text.h"
#include "platform/text.h"

namespace qlm {

enum class JsonLayout {
  kLines,  // keys of the outer object, entries of what they hold, and objects in lists on lines of their own
  kOneLine,  // everything in one line
};

class Json {
 public:
  explicit Json(JsonLayout layout = JsonLayout::kLines) : layout_(layout) { Open('{'); }

  Json& Key(std::string_view key) {
    Separate(depth_ <= 2);
    Quote(key);
    text_ += ": ";
    afterKey_ = true;
    return *this;
  }
  void Value(TextView text) {
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
    const std::string digits = platform::EncodeUtf8(ToText(number));
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

  // A value that is JSON already.
  void Raw(std::string_view json) {
    Separate(false);
    text_ += json;
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

  // Ends the object and gives it, with a line end.
  std::string Take();

 private:
  void Separate(bool ownLine);
  void Open(char bracket);
  void Close(char bracket);
  void Quote(std::string_view utf8);

  JsonLayout layout_;
  std::string text_;
  int depth_ = 0;
  bool empty_ = true;  // nothing stands yet in the innermost bracket
  bool afterKey_ = false;
  std::vector<bool> wide_;  // by bracket: entries stand on lines of their own
};

}  // namespace qlm
