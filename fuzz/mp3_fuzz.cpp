// Any bytes as an MP3 file: detection, the first header, and the decoder behind them.
#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <cstdlib>
#include <string_view>

#include "base/log.h"
#include "platform/mp3.h"
#include "sound/mp3_header.h"

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size) {
  using namespace qlm;
  logOutput.file = false;
  const std::string_view file(reinterpret_cast<const char*>(data), size);
  MpegData found;
  if (FindMpegData(file.substr(0, kDetectedBytes), static_cast<int64_t>(size), found) != kDecoded) return 0;
  MpegFormat header;
  if (ReadMpegHeader(file, found, header) != kDecoded) return 0;
  if (header.layer < 1 || header.layer > 3 || found.size < 0) std::abort();

  constexpr size_t kMost = size_t{16} << 20;
  const size_t start = std::min(static_cast<size_t>(found.start), size);
  const platform::DecodedSound sound =
      platform::DecodeMp3(file.substr(start, static_cast<size_t>(found.size)), kMost);
  if (sound.samples.size() > kMost) std::abort();
  if (sound.error != platform::DecodeError::kNone) return 0;
  if (sound.channels < 1 || sound.channels > 2 || sound.rate < 8000 || sound.rate > 48000) std::abort();
  if (sound.samples.empty() || sound.samples.size() % (size_t{2} * static_cast<size_t>(sound.channels)) != 0)
    std::abort();
  return 0;
}
