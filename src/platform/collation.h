// The order of texts in a language.
#pragma once

#include <memory>
#include <string>
#include <string_view>

namespace platform {

class Collation {
 public:
  // `locale` as in "ja_JP"; "" is an order for all languages. The user's own, as the environment names it,
  // by default.
  explicit Collation(const std::string& locale = UserLocale());

  // Keys of two texts compare, byte by byte, as the texts do. Alike are texts that differ in letter case, in
  // the width of their letters, or in the kind of their kana alone.
  std::string Key(std::u16string_view text) const;

 private:
  static std::string UserLocale();

  std::shared_ptr<const void> collator_;
};

}  // namespace platform
