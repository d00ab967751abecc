// RIFF with open ends.
#include "tools/media_files/avi.h"

#include "tools/media_files/wav.h"

namespace media {
namespace {

// Sizes of lists that are not known yet.
constexpr uint32_t kOpen = 0;
constexpr uint32_t kBitsAPixel = 32;
constexpr uint32_t kBytesASample = 2;

std::string Word(uint32_t value) { return Little(value, 4); }
std::string Half(uint32_t value) { return Little(value, 2); }

std::string Chunk(const std::string& id, const std::string& data) {
  return id + Word(static_cast<uint32_t>(data.size())) + data;
}

std::string List(const std::string& kind, const std::string& chunks) { return Chunk("LIST", kind + chunks); }

// `scale` and `rate`: rate by scale units a second, each of `unit` bytes, or 0 where they differ.
std::string StreamHead(const std::string& kind, uint32_t scale, uint32_t rate, uint32_t unit) {
  constexpr uint32_t kBestQuality = UINT32_MAX;
  return Chunk("strh", kind + Word(0) + Word(0) + Word(0) + Word(0) + Word(scale) + Word(rate) + Word(0) +
                           Word(0) + Word(0) + Word(kBestQuality) + Word(unit) + Word(0) + Word(0));
}

std::string MainHead(const AviStream& stream) {
  constexpr uint32_t kInterleaved = 0x100;
  constexpr uint32_t kStreams = 2;
  return Chunk("avih", Word(1'000'000 / stream.picturesPerSecond) + Word(0) + Word(0) + Word(kInterleaved) +
                           Word(0) + Word(0) + Word(kStreams) + Word(0) + Word(stream.width) +
                           Word(stream.height) + std::string(16, '\0'));
}

std::string Pictures(const AviStream& stream) {
  const uint32_t bytes = stream.width * stream.height * kBitsAPixel / 8;
  const std::string format = Word(40) + Word(stream.width) + Word(stream.height) + Half(1) +
                             Half(kBitsAPixel) + Word(0) + Word(bytes) + std::string(16, '\0');
  return List("strl", StreamHead("vids", 1, stream.picturesPerSecond, bytes) + Chunk("strf", format));
}

std::string Sound(const AviStream& stream) {
  const uint32_t frame = stream.channels * kBytesASample;
  const std::string format = Half(1) + Half(stream.channels) + Word(stream.rate) + Word(stream.rate * frame) +
                             Half(frame) + Half(8 * kBytesASample);
  return List("strl", StreamHead("auds", frame, stream.rate * frame, frame) + Chunk("strf", format));
}

}  // namespace

std::string AviHead(const AviStream& stream) {
  return "RIFF" + Word(kOpen) + "AVI " + List("hdrl", MainHead(stream) + Pictures(stream) + Sound(stream)) +
         "LIST" + Word(kOpen) + "movi";
}

std::string AviPictureHead(uint32_t bytes) { return "00db" + Word(bytes); }
std::string AviSoundHead(uint32_t bytes) { return "01wb" + Word(bytes); }

}  // namespace media
