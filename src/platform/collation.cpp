// The order of texts, by ICU.
#include "platform/collation.h"

#include <unicode/ucol.h>

#include <cstdint>
#include <cstdlib>

#include "platform/text.h"

namespace platform {

Collation::Collation(const std::string& locale) {
  UErrorCode status = U_ZERO_ERROR;
  UCollator* const collator = ucol_open(locale.c_str(), &status);
  if (U_FAILURE(status)) return;
  // The levels are letters, accents, then case, width and kind of kana.
  ucol_setStrength(collator, UCOL_SECONDARY);
  collator_ = {collator, [](const void* each) {
                 ucol_close(const_cast<UCollator*>(static_cast<const UCollator*>(each)));
               }};
}

std::string Collation::Key(std::u16string_view text) const {
  const auto* const collator = static_cast<const UCollator*>(collator_.get());
  if (collator == nullptr) return EncodeUtf8(text);
  const auto get = [&](std::string& key) {
    return ucol_getSortKey(collator, text.data(), static_cast<int32_t>(text.size()),
                           reinterpret_cast<uint8_t*>(key.data()), static_cast<int32_t>(key.size()));
  };
  std::string key(text.size() * 4 + 16, '\0');
  const auto length = static_cast<size_t>(get(key));
  const bool fits = length <= key.size();
  key.resize(length);
  if (!fits) get(key);
  return key;
}

// As the C library chooses it. "C" and "POSIX" have no order of letters.
std::string Collation::UserLocale() {
  for (const char* name : {"LC_ALL", "LC_COLLATE", "LANG"}) {
    const char* const value = std::getenv(name);
    if (value == nullptr || *value == '\0') continue;
    const std::string locale = std::string(value).substr(0, std::string(value).find('.'));
    return locale == "C" || locale == "POSIX" ? std::string() : locale;
  }
  return {};
}

}  // namespace platform
