// Any bytes as a sound file of today: what it is taken for, and the decoders behind it.
#include <sanitizer/lsan_interface.h>

#include <cstddef>
#include <cstdint>
#include <cstdlib>
#include <string_view>

#include "platform/sound_file.h"

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size) {
  constexpr size_t kMost = size_t{16} << 20;
  const std::string_view file(reinterpret_cast<const char*>(data), size);
  // With some damaged files the packages themselves leave a few kilobytes behind.
  const __lsan::ScopedDisabler noLeaks;
  const platform::DecodedSound sound = platform::DecodeSoundFile(file, kMost);
  if (sound.samples.empty() != (sound.error != platform::DecodeError::kNone)) std::abort();
  if (!platform::IsSoundFile(file) && sound.error != platform::DecodeError::kNotKnown) std::abort();
  if (sound.samples.size() > kMost) std::abort();
  if (sound.error != platform::DecodeError::kNone) return 0;
  if (sound.channels < 1 || sound.channels > 2) std::abort();
  if (sound.samples.size() % (size_t{2} * static_cast<size_t>(sound.channels)) != 0) std::abort();
  return 0;
}
