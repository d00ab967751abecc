// From a sound file to a filled buffer.
#pragma once

#include "base/text.h"
#include "state/sounds.h"

namespace qlm {

// A new filled buffer, or null with the reason in `error` (0 when the file is simply missing). `path` may
// come back with another extension; `description` and `format` come back as they were used.
SoundBufferPtr CreateSndBuf(Text& path, platform::SoundDescription& description,
                            platform::SoundFormat& format, platform::SoundError& error);
// In the wide reading: corrects `path` to the file that stands for it, the one of this name first, then the
// same stem as .wav, .ogg, .flac, .opus and .mp3. Nothing else is done where there is none.
void FindWideSound(Text& path);
// Tells that CreateSndBuf will be asked for `path` soon: what takes long is begun on another core.
void LoadAhead(Text path);
// The format record of a file, all zero when its header is not recognised; the data's length goes to
// WavDataSize, which otherwise keeps the value of the file before.
platform::SoundFormat ReadWavHeader(TextView path);

}  // namespace qlm
