// Writing sounds as WAV files.
#pragma once

#include <filesystem>

#include "sound.h"

namespace assetmaker {

// Writes 16-bit stereo PCM at `sampleRate`; samples outside -1 to 1 are cut. False when the file cannot be
// written.
bool WriteWav(const std::filesystem::path& path, const Sound& sound);

}  // namespace assetmaker
