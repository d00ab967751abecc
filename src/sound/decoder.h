// Compressed sound files.
#pragma once

#include <cstdint>

#include "base/text.h"
#include "state/sounds.h"

namespace qlm {

// What DecodeToBuffer answers.
constexpr int32_t kDecoded = -1;         // the buffer is made and filled
constexpr int32_t kDecodeFailed = 0;     // the caller takes the file for PCM
constexpr int32_t kNotCompressed = 999;  // likewise

// Tells whether the file at `path` is compressed, and if so decodes it whole into a new buffer, rewriting
// `description` and `format`. The decoder is still to come: until then no file is compressed.
int32_t DecodeToBuffer(TextView path, SoundBufferPtr& buffer, platform::SoundDescription& description,
                       platform::SoundFormat& format);

}  // namespace qlm
