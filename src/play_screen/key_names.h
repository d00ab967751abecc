// Short names of keys and controller inputs, in the letters of the skin's font.
#pragma once

#include <array>
#include <cstdint>

#include "base/text.h"

namespace qlm {

// What a US keyboard prints at the key's place; J1B3 is the third button of the first controller, J2L left on
// the second one's stick; K112 a key that has no name here.
class KeyName {
 public:
  explicit KeyName(int32_t key);
  // As long as this object lives.
  TextView Words() const { return TextView(words_.data(), length_); }

 private:
  void AddInput(int32_t input);
  void Add(TextView words);
  void Add(int32_t number);

  std::array<char16_t, 8> words_{};
  size_t length_ = 0;
};

}  // namespace qlm
