// Layout and escapes.
#include "base/json.h"

#include <cstdio>

namespace qlm {

std::string Json::Take() {
  Close('}');
  text_ += '\n';
  return std::move(text_);
}

void Json::Separate(bool ownLine) {
  if (afterKey_) {
    afterKey_ = false;
    return;
  }
  ownLine = ownLine && layout_ == JsonLayout::kLines;
  if (!empty_) text_ += ownLine ? "," : ", ";
  if (ownLine) text_.append("\n").append(static_cast<size_t>(depth_) * 2, ' ');
  if (ownLine) wide_.back() = true;
  empty_ = false;
}

void Json::Open(char bracket) {
  text_ += bracket;
  ++depth_;
  wide_.push_back(false);
  empty_ = true;
}

void Json::Close(char bracket) {
  const bool wide = wide_.back();
  wide_.pop_back();
  --depth_;
  if (wide) text_.append("\n").append(static_cast<size_t>(depth_) * 2, ' ');
  text_ += bracket;
  empty_ = false;
}

void Json::Quote(std::string_view utf8) {
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

}  // namespace qlm
