// Decoding of MPEG audio.
#pragma once

#include <atomic>
#include <cstdint>
#include <future>
#include <string>
#include <string_view>

namespace platform {

enum class Mp3Error {
  kNone,
  kNoDecoder,  // it could not be opened
  kNoSamples,  // nothing in the data could be decoded
  kTooLong,    // more samples than a sound may have, or than there is memory for
  kBroken,     // the decoder gave up
};

struct DecodedMp3 {
  Mp3Error error = Mp3Error::kNone;
  std::string samples;   // signed, 16 bits, little-endian, the channels side by side
  int32_t rate = 0;      // Hz
  int32_t channels = 0;  // 1 or 2
};

// Decodes frames of layers I to III from the first whole one on, at their own rate, and trims nothing. What
// lies between frames is passed over. Frames of another rate or number of channels end the sound. Any bytes
// will do; may be called by any thread. `most` is the longest sound, in bytes. Gives up, as broken, soon
// after `givenUp` became true.
DecodedMp3 DecodeMp3(std::string_view data, size_t most, const std::atomic<bool>* givenUp = nullptr);

// One decoding on a core of its own. The destructor gives up what is not done yet.
class Mp3Decoding {
 public:
  // Decodes the bytes from `start` on.
  Mp3Decoding(std::string file, size_t start, size_t size, size_t most);
  ~Mp3Decoding() { GiveUp(); }
  Mp3Decoding(const Mp3Decoding&) = delete;
  Mp3Decoding& operator=(const Mp3Decoding&) = delete;

  bool DoneWithin(uint32_t milliseconds);
  void GiveUp() { givenUp_ = true; }
  // What DecodeMp3 gives for these bytes, once; waits for it.
  DecodedMp3 Take() { return sound_.get(); }

 private:
  std::atomic<bool> givenUp_ = false;
  std::future<DecodedMp3> sound_;
};

}  // namespace platform
