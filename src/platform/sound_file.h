// Decoding of the sound files of today: WAV of any coding, Ogg (Vorbis, Opus, FLAC) and FLAC.
#pragma once

#include <cstddef>
#include <string>
#include <string_view>

#include "platform/decoded_sound.h"

namespace platform {

class DecodingOrders;

// So many bytes of a file's start tell whether it is one of them. MPEG audio is none, in a WAV neither.
constexpr size_t kSoundFileHead = 22;
bool IsSoundFile(std::string_view head);

// Decodes the bytes of such a file whole, at its own rate. Samples that no 16 bits hold are rounded half to
// even, and cut where they are too loud. Any bytes will do; what a header claims beyond them is not believed.
// May be called by any thread. `most` is the longest sound, in bytes. Gives up, as broken, soon after
// `orders`, if there are any, say so.
DecodedSound DecodeSoundFile(std::string_view bytes, size_t most, DecodingOrders* orders = nullptr);

// The same for a file by the system's path, which is read on the calling thread.
DecodedSound DecodeSoundFileAt(const std::string& systemPath, size_t most, DecodingOrders* orders = nullptr);

}  // namespace platform
