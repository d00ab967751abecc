// The bytes of an AVI file of plain pictures and plain sound, as they are sent down a pipe: nothing in them
// has to be known or changed at the end.
#pragma once

#include <cstdint>
#include <string>

namespace media {

struct AviStream {
  uint32_t width = 0;
  uint32_t height = 0;
  uint32_t picturesPerSecond = 0;
  uint32_t channels = 0;  // of 16 bits
  uint32_t rate = 0;      // Hz
};

// All that stands in front of the first picture. It says nothing of a length.
std::string AviHead(const AviStream& stream);

// The head of a chunk of so many bytes, an even number: a picture, whose rows follow from the bottom up with
// 4 bytes a pixel, blue first; or sound, each frame with a sample for every channel.
std::string AviPictureHead(uint32_t bytes);
std::string AviSoundHead(uint32_t bytes);

}  // namespace media
