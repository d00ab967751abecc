// Compressed sound files.
#pragma once

#include <cstdint>

#include "base/text.h"
#include "sound/mp3_header.h"
#include "state/sounds.h"

namespace qlm {

// Tells whether the file at `path` is compressed, and if so decodes it whole into a new buffer, rewriting
// `description` and `format`. Gives kDecoded, kDecodeFailed or kNotCompressed; only the log tells of
// failures.
int32_t DecodeToBuffer(TextView path, SoundBufferPtr& buffer, platform::SoundDescription& description,
                       platform::SoundFormat& format);

}  // namespace qlm
