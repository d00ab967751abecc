// MPEG frames that decode to silence, put together by hand.
#pragma once

#include <cstddef>
#include <cstdint>
#include <string>

namespace qlm {

// A header, and zeros for all that stands behind it.
struct SilentFrames {
  std::string header;
  size_t bytes;      // of one
  uint32_t samples;  // of one, for each channel
  uint32_t rate;
  uint16_t channels;

  std::string Times(size_t count) const {
    std::string frame = header;
    frame.resize(bytes);
    std::string all;
    while (count-- > 0) all += frame;
    return all;
  }
};

// Layer I: 32 kbit/s at 32000 Hz, 12 * 32000 / 32000 slots of 4 bytes.
inline const SilentFrames kLayer1 = {std::string("\xFF\xFF\x18\xC0", 4), 48, 384, 32000, 1};
// Layer II: 64 kbit/s at 48000 Hz, 144 * 64000 / 48000.
inline const SilentFrames kLayer2 = {std::string("\xFF\xFD\x44\xC0", 4), 192, 1152, 48000, 1};
// Layer III: 128 kbit/s at 48000 Hz, 144 * 128000 / 48000, two channels.
inline const SilentFrames kLayer3 = {std::string("\xFF\xFB\x94\x00", 4), 384, 1152, 48000, 2};
// MPEG-2: 64 kbit/s at 24000 Hz, 72 * 64000 / 24000.
inline const SilentFrames kMpeg2 = {std::string("\xFF\xF3\x84\xC0", 4), 192, 576, 24000, 1};
// MPEG-2.5: 32 kbit/s at 8000 Hz, 72 * 32000 / 8000.
inline const SilentFrames kMpeg25 = {std::string("\xFF\xE3\x48\xC0", 4), 288, 576, 8000, 1};

}  // namespace qlm
