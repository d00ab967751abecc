// Compressed sound files.
#pragma once

#include <cstddef>
#include <cstdint>

#include "base/text.h"
#include "sound/mp3_header.h"
#include "state/sounds.h"

namespace qlm {

// Tells whether the file at `path` is compressed, or in the wide reading one of the sound files of today, and
// if so decodes it whole into a new buffer, rewriting `description` and `format`. Gives kDecoded,
// kDecodeFailed or kNotCompressed; only the log tells of failures.
int32_t DecodeToBuffer(TextView path, SoundBufferPtr& buffer, platform::SoundDescription& description,
                       platform::SoundFormat& format);

// Begins to decode the file at `path`, if it is one of them, on another core. When DecodeToBuffer is asked
// for it, it gives and logs the same as without. At most SoundsAtOnce files are kept: the oldest are dropped.
void DecodeAhead(TextView path);
size_t SoundsAtOnce();
void ForgetSoundsAhead();

}  // namespace qlm
