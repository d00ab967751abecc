// The sound device and its buffers: resident samples that start at once, at any speed, volume and number.
#pragma once

#include <atomic>
#include <cstdint>
#include <memory>
#include <optional>
#include <span>
#include <string>

namespace platform {

// Frames a second of the mix, whatever the device itself runs at.
constexpr int32_t kSoundRate = 44100;

// What a sound call answers. 0 is success; the others are the numbers that the log explains.
using SoundError = int32_t;
constexpr SoundError kSoundOk = 0;
constexpr SoundError kSoundBadFormat = static_cast<SoundError>(0x88780064);
constexpr SoundError kSoundUninitialized = static_cast<SoundError>(0x887800AA);
constexpr SoundError kSoundOutOfMemory = 7;
constexpr SoundError kSoundUnsupported = static_cast<SoundError>(0x80004001);
constexpr SoundError kSoundInvalidParam = static_cast<SoundError>(0x80070057);
constexpr SoundError kSoundAllocated = static_cast<SoundError>(0x8878000A);

// The format record of a sound file, as wide as the file has it.
struct SoundFormat {
  uint16_t tag = 0;       // 1 is PCM
  uint16_t channels = 0;  // 1 or 2
  uint32_t samplesPerSec = 0;
  uint32_t avgBytesPerSec = 0;
  uint16_t blockAlign = 0;
  uint16_t bitsPerSample = 0;  // 8 (unsigned) or 16 (signed)
  uint16_t extraSize = 0;
};

struct SoundDescription {
  uint32_t flags = 0;
  uint32_t bytes = 0;  // size of the buffer
};

class Mixer;
struct Samples;

// One voice over samples that it may share with duplicates. All calls come from the game's thread and never
// wait for the device's; what they ask for holds from the next block that the device asks for. They neither
// allocate nor free. The buffer itself may be let go at any time, also while it plays: it falls silent.
class SoundBuffer {
 public:
  // Buffers are made by CreateSoundBuffer and DuplicateSoundBuffer.
  SoundBuffer(std::shared_ptr<Mixer> mixer, std::shared_ptr<Samples> samples);
  SoundBuffer(const SoundBuffer& other);
  SoundBuffer& operator=(const SoundBuffer&) = delete;

  // Hz; what SetFrequency set, at first the format's own.
  int32_t Frequency() const { return frequency_; }
  // 1 to 200000 Hz; 0 stands for the format's own. Others are refused.
  SoundError SetFrequency(int32_t hertz);
  // Hundredths of a decibel, -10000 (silence) to 0. Others are refused.
  SoundError SetVolume(int32_t hundredths);
  // Byte offset of the next sample, brought down to a whole frame. At the end and past it it is refused.
  SoundError SetCurrentPosition(uint32_t byte);
  // Starts, or goes on from where it stands. A sound that has run to its end starts over.
  SoundError Play(bool looping);
  // Stands still and keeps the place.
  SoundError Stop();
  bool Playing() const;
  // When the block was asked for, in Microseconds(), in which the device went to the place that
  // SetCurrentPosition set last; 0 until then, and with every output but the system's device.
  int64_t BegunAt() const { return begunAt_.load(std::memory_order_relaxed); }
  // Puts bytes into the sample data. Past the end it is refused, and so is a write once a voice over these
  // samples has been played: the device may be reading them at any moment from then on.
  SoundError Write(uint32_t offset, std::span<const unsigned char> bytes);

  // The mixer of the device that was open when the buffer was made.
  const std::shared_ptr<Mixer>& Device() const { return mixer_; }

 private:
  friend class Mixer;

  // The order word: 28 bits of place in frames, enough for 256 MiB of single bytes, three flags, and above
  // them the turn, a count that grows each time the place is set, by which the device tells a new place from
  // the one it has already gone to.
  static constexpr uint64_t kPlace = (uint64_t{1} << 28) - 1;
  static constexpr uint64_t kPlaying = uint64_t{1} << 28;
  static constexpr uint64_t kLooping = uint64_t{1} << 29;
  static constexpr uint64_t kEnlisted = uint64_t{1} << 30;
  static constexpr uint64_t kOneTurn = uint64_t{1} << 31;

  // Replaces the order by change(order), and gives the one it replaced. Tries again only when the device let
  // the voice go in between, which it does once at most.
  template <typename Change>
  uint64_t Reorder(Change change);

  // False, and nothing else is done, when the device is closed.
  bool Ready() const;

  // Device's thread. Moves the voice on, and adds what it sounds like to `sum`, unless it is null. False when
  // the voice wants no more blocks; the device has let it go then.
  bool Run(float* sum, uint32_t frames);
  // The same for a stretch in which the voice does not end.
  void Advance(float* sum, uint32_t frames, uint64_t step, bool looping);

  std::shared_ptr<Mixer> mixer_;
  std::shared_ptr<Samples> samples_;

  std::atomic<uint64_t> order_ = 0;
  std::atomic<uint64_t> step_ = 0;  // source frames for one of the mix, 32 bits behind the point
  std::atomic<float> gain_ = 1.0F;
  std::atomic<int64_t> begunAt_ = 0;
  int32_t frequency_ = 0;
  SoundBuffer* nextRetired_ = nullptr;

  // Device's thread, from the hand-over on.
  SoundBuffer* next_ = nullptr;
  uint64_t cursor_ = 0;  // source frames, 32 bits behind the point
  uint64_t turn_ = 0;    // of the place last gone to
};
using SoundBufferPtr = std::shared_ptr<SoundBuffer>;

// How the sound leaves the program.
enum class SoundOutput {
  kDevice,   // the system's default device; the null output when there is none
  kNull,     // time passes and nothing is heard
  kOffline,  // RenderSound is called by a test or a tool
};

struct SoundDeviceInfo {
  bool heard = false;       // a real device plays
  int32_t rate = 0;         // Hz of the mix
  int32_t blockFrames = 0;  // frames that the device asks for at a time; 0 without one
  std::string driver;       // as the system names it; "null" and "offline" for the others
  std::string why;          // why nothing is heard, empty otherwise
};

// Frames of a block: the longest that a key press waits for it.
constexpr int32_t kUsualBlock = 256;

// Opens the one device, which is asked to take blocks of so many frames. A second call closes the first
// device, whose buffers then answer kSoundUninitialized. Never fails: without a device the null output opens.
SoundDeviceInfo OpenSoundDevice(SoundOutput output, int32_t blockFrames = kUsualBlock);
void CloseSoundDevice();

// What the system calls its default device, in UTF-8; empty where it does not tell. May ask the sound server.
std::string SoundDeviceName();
// Blocks that the system's device has asked for too late since it was opened; 0 without one. See BlockWatch.
int32_t LateSoundBlocks();
// How much the system's device takes in advance of what sounds, in microseconds, as far as it has shown; 0
// without one. A device shows it after a gap, of which DrainSoundDevice makes one, with a late block: it
// holds the device's thread for 150 ms, also for other programs on some systems.
int64_t SoundAheadMicroseconds();
void DrainSoundDevice();

// The volume of everything that the open device sounds, 0 (silence) to kFullSoundVolume, linear. A device
// opens at full volume, which leaves every sample as it is. What is set holds from the next block on.
constexpr int32_t kFullSoundVolume = 65535;
// Nothing without a device.
std::optional<int32_t> SoundVolume();
// kSoundUninitialized without a device, kSoundInvalidParam out of range.
SoundError SetSoundVolume(int32_t volume);

struct SoundBufferResult {
  SoundBufferPtr buffer;  // null when it failed
  SoundError error = kSoundOk;
};

// A buffer of description.bytes bytes, all 0, at full volume and standing at 0. kSoundUninitialized without a
// device, kSoundBadFormat for what is not PCM of 8 or 16 bits, 1 or 2 channels, 1 to 200000 Hz,
// kSoundInvalidParam for 0 bytes, kSoundOutOfMemory above 256 MiB and where there is not so much. What is
// left over behind the last whole frame is not heard. The format's block align and bytes per second are not
// looked at.
SoundBufferResult CreateSoundBuffer(const SoundDescription& description, const SoundFormat& format);
// A buffer filled with these samples, which are not copied; what CreateSoundBuffer refuses is refused.
SoundBufferResult SoundBufferOf(std::string samples, const SoundFormat& format);
// A new voice over the same samples, with the frequency and volume of `buffer`, standing at 0.
// kSoundInvalidParam for a null buffer, kSoundUninitialized for one of an earlier device.
SoundBufferResult DuplicateSoundBuffer(const SoundBufferPtr& buffer);

// Bytes of all samples that voices hold, duplicates counted once.
int64_t SoundBytesHeld();

// With the offline output: mixes the next out.size() / 2 frames of 16-bit stereo at 44100 Hz, by the same
// routine that the device runs. Silence with any other output. How a stretch is cut into calls makes no
// difference to its samples. May be called from another thread than the buffers, one call at a time.
void RenderSound(std::span<int16_t> out);

}  // namespace platform
