// The mixer under the sound device: voices over shared samples, and how the game's thread and the device's
// meet.
//
// No commands travel between the two threads. Each voice holds one atomic word, its order: whether it plays,
// whether it loops, and where it was last put. The game rewrites the word, the device reads it once a block.
// Only the last state before a block can be heard, so nothing is lost however many calls come or however long
// the device sleeps; a queue of commands would have to be bounded, and to drop or wait when it is full.
// A voice that starts goes to the device on a list linked through the voices themselves, so that costs no
// memory either. It stays enlisted until the device lets it go by clearing one bit of the order, and this is
// the last thing that the device does with it: from then on the game may free it.
#pragma once

#include <atomic>
#include <cstdint>
#include <memory>
#include <span>

#include "platform/sound_device.h"

namespace platform {

// Sample data as the file has it. What a voice plays is 16-bit stereo; other forms are widened block by
// block.
struct Samples {
  Samples() = default;
  ~Samples() { bytesHeld -= bytes; }
  Samples(const Samples&) = delete;
  Samples& operator=(const Samples&) = delete;

  // By all that live.
  static inline int64_t bytesHeld = 0;

  SoundFormat format;
  uint32_t bytes = 0;
  uint32_t frameBytes = 0;
  uint32_t frames = 0;
  bool played = false;                  // the device may be reading; game's thread only
  std::shared_ptr<unsigned char> data;  // held for their memory alone, and never copied

  // `count` stereo frames from frame `first` on, at the scale of 16-bit samples. Around the sound there is
  // silence, or the sound again when it loops.
  void Fetch(float* out, int64_t first, uint32_t count, bool looping) const;

 private:
  void Widen(float* out, uint32_t first, uint32_t count) const;
};

// Where the voices of one open device meet.
class Mixer {
 public:
  // A mixer whose time passes by the clock, for want of a device that asks for blocks.
  enum class Time { kAskedFor, kOfTheClock };
  explicit Mixer(Time time);

  // Game's thread.
  bool Open() const { return open_; }
  // The device has stopped asking for blocks, for good.
  void Close();
  // With time of the clock: lets what has passed since the last call pass for the voices too.
  void KeepTime();
  // Of everything, 0 to kFullSoundVolume.
  int32_t Volume() const { return volume_.load(std::memory_order_relaxed); }
  void SetVolume(int32_t volume) { volume_.store(volume, std::memory_order_relaxed); }
  // Hands a voice that was not enlisted to the device.
  void Enlist(SoundBuffer* voice);
  // The owner has let go of the voice: frees it as soon as the device does not hold it.
  void Retire(SoundBuffer* voice);
  // Frees the retired voices that the device has let go since.
  void FreeRetired();

  // Device's thread.
  // The next block was asked for at `now`, in Microseconds().
  void BeginBlock(int64_t now) { blockTime_ = now; }
  int64_t BlockTime() const { return blockTime_; }
  // The next block of interleaved stereo.
  void Render(std::span<int16_t> out);

 private:
  static constexpr uint32_t kPieceFrames = 256;

  // The voices that started since the last call, in the order of their starts.
  SoundBuffer* TakeIn();
  // Moves all voices on by `frames`; adds what they sound like to `sum`, unless it is null.
  void Run(float* sum, uint32_t frames);

  std::atomic<SoundBuffer*> intake_ = nullptr;  // the newest first
  std::atomic<int32_t> volume_ = kFullSoundVolume;

  // Device's thread.
  int64_t blockTime_ = 0;
  SoundBuffer* active_ = nullptr;
  float sum_[2 * kPieceFrames] = {};

  // Game's thread.
  bool open_ = true;
  Time time_;
  uint32_t clock_ = 0;
  uint32_t tenths_ = 0;  // of a frame, left over from the clock's milliseconds
  SoundBuffer* retired_ = nullptr;
};

}  // namespace platform
