// The sound device: the system's output through SDL, or one that nobody hears, or one rendered on demand.
#include "platform/sound_device.h"

#include <SDL.h>
#include <fcntl.h>
#include <unistd.h>

#include <algorithm>
#include <chrono>
#include <string_view>
#include <thread>

#include "platform/block_watch.h"
#include "platform/clock.h"
#include "platform/heap.h"
#include "platform/sound_device_mixer.h"

namespace platform {
namespace {

constexpr uint32_t kMostBytes = 256U << 20;
constexpr int32_t kHighestRate = 200000;

// The open device. Game's thread.
std::shared_ptr<Mixer> mixer;
SDL_AudioDeviceID systemDevice = 0;
bool offline = false;

// A program that ends without closing must not leave the device asking.
struct CloseAtExit {
  ~CloseAtExit() { CloseSoundDevice(); }
} closeAtExit;

// Of the system's device: made anew before that is opened, so that nobody asks meanwhile.
std::optional<BlockWatch> watch;
std::atomic<bool> drains = false;

void AskedForBlock(void* user, Uint8* bytes, int length) {
  constexpr int64_t kBytesAFrame = 4;
  constexpr std::chrono::milliseconds kLongerThanAnyDevice(150);
  if (drains.exchange(false, std::memory_order_relaxed)) std::this_thread::sleep_for(kLongerThanAnyDevice);
  const int64_t now = Microseconds();
  watch->Asked(now, int64_t{length} * 1'000'000 / (kBytesAFrame * kSoundRate));
  auto* const mixer = static_cast<Mixer*>(user);
  mixer->BeginBlock(now);
  mixer->Render({reinterpret_cast<int16_t*>(bytes), static_cast<size_t>(length) / 2});
}

// While it lives, nothing reaches standard error: below the audio library others print their own complaints
// about a missing sound card, where one line in the log says it all.
class QuietErrors {
 public:
  QuietErrors() : kept_(dup(STDERR_FILENO)) {
    const int nowhere = open("/dev/null", O_WRONLY | O_CLOEXEC);
    if (kept_ >= 0 && nowhere >= 0) dup2(nowhere, STDERR_FILENO);
    if (nowhere >= 0) close(nowhere);
  }
  ~QuietErrors() {
    if (kept_ < 0) return;
    dup2(kept_, STDERR_FILENO);
    close(kept_);
  }
  QuietErrors(const QuietErrors&) = delete;
  QuietErrors& operator=(const QuietErrors&) = delete;

 private:
  int kept_;
};

// Starts the system's device. False, with the reason in info.why, when there is none.
bool OpenSystemDevice(SoundDeviceInfo& info, int32_t blockFrames) {
  const QuietErrors quiet;
  if (SDL_InitSubSystem(SDL_INIT_AUDIO) != 0) {
    info.why = SDL_GetError();
    return false;
  }
  SDL_AudioSpec wanted = {};
  wanted.freq = kSoundRate;
  wanted.format = AUDIO_S16SYS;
  wanted.channels = 2;
  wanted.samples = static_cast<Uint16>(blockFrames);
  wanted.callback = AskedForBlock;
  wanted.userdata = mixer.get();
  watch.emplace();
  drains = false;
  // The rate stays ours, so that most samples need no resampling; another one is the library's business.
  SDL_AudioSpec got = {};
  systemDevice = SDL_OpenAudioDevice(nullptr, 0, &wanted, &got, SDL_AUDIO_ALLOW_SAMPLES_CHANGE);
  if (systemDevice == 0) {
    info.why = SDL_GetError();
    SDL_QuitSubSystem(SDL_INIT_AUDIO);
    return false;
  }
  info.driver = SDL_GetCurrentAudioDriver();
  info.blockFrames = got.samples;
  info.heard = info.driver != "dummy" && info.driver != "disk";
  if (!info.heard) info.why = "the driver \"" + info.driver + "\" has no loudspeaker";
  SDL_PauseAudioDevice(systemDevice, 0);
  return true;
}

bool DeviceTakes(const SoundFormat& format) {
  return format.tag == 1 && (format.channels == 1 || format.channels == 2) &&
         (format.bitsPerSample == 8 || format.bitsPerSample == 16) && format.samplesPerSec >= 1 &&
         format.samplesPerSec <= kHighestRate;
}

// Null when there is no memory for the bytes.
std::shared_ptr<Samples> MakeSamples(const SoundFormat& format, std::shared_ptr<unsigned char> data,
                                     uint32_t bytes) {
  if (data == nullptr) return nullptr;
  auto samples = std::make_shared<Samples>();
  samples->format = format;
  samples->frameBytes = format.channels * format.bitsPerSample / 8U;
  samples->frames = bytes / samples->frameBytes;
  samples->data = std::move(data);
  samples->bytes = bytes;
  Samples::bytesHeld += bytes;
  return samples;
}

// The owner's pointer to a voice that `make` makes; letting it go leaves the voice to the mixer, which frees
// it in time.
template <typename Make>
SoundBufferResult Own(Make make) {
  SoundBufferPtr owned;
  WithinMemory([&] {
    if (SoundBuffer* const voice = make()) {
      owned = SoundBufferPtr(voice, [](SoundBuffer* released) {
        const std::shared_ptr<Mixer> device = released->Device();
        device->Retire(released);
      });
    }
  });
  return {owned, owned == nullptr ? kSoundOutOfMemory : kSoundOk};
}

// A buffer over the bytes that `makeData` gives.
template <typename MakeData>
SoundBufferResult CreateBuffer(const SoundFormat& format, size_t bytes, MakeData makeData) {
  if (mixer == nullptr) return {nullptr, kSoundUninitialized};
  if (!DeviceTakes(format)) return {nullptr, kSoundBadFormat};
  if (bytes == 0) return {nullptr, kSoundInvalidParam};
  if (bytes > kMostBytes) return {nullptr, kSoundOutOfMemory};
  mixer->KeepTime();
  mixer->FreeRetired();
  return Own([&]() -> SoundBuffer* {
    std::shared_ptr<Samples> samples = MakeSamples(format, makeData(), static_cast<uint32_t>(bytes));
    return samples == nullptr ? nullptr : new SoundBuffer(mixer, std::move(samples));
  });
}

}  // namespace

SoundDeviceInfo OpenSoundDevice(SoundOutput output, int32_t blockFrames) {
  CloseSoundDevice();
  SoundDeviceInfo info;
  info.rate = kSoundRate;
  offline = output == SoundOutput::kOffline;
  if (output != SoundOutput::kNull) mixer = std::make_shared<Mixer>(Mixer::Time::kAskedFor);
  if (output == SoundOutput::kDevice && OpenSystemDevice(info, blockFrames)) return info;
  if (offline) {
    info.driver = "offline";
    info.why = "the sound is rendered on demand";
    return info;
  }
  mixer = std::make_shared<Mixer>(Mixer::Time::kOfTheClock);
  info.driver = "null";
  if (info.why.empty()) info.why = "no sound was asked for";
  return info;
}

void CloseSoundDevice() {
  if (systemDevice != 0) {
    SDL_CloseAudioDevice(systemDevice);  // returns when the last block is done
    SDL_QuitSubSystem(SDL_INIT_AUDIO);
    systemDevice = 0;
  }
  if (mixer != nullptr) mixer->Close();
  mixer.reset();
  offline = false;
}

std::string SoundDeviceName() {
  const QuietErrors quiet;
  char* name = nullptr;
  SDL_AudioSpec spec = {};
  if (SDL_WasInit(SDL_INIT_AUDIO) == 0 || SDL_GetDefaultAudioInfo(&name, &spec, 0) != 0) return {};
  std::string told = name != nullptr ? name : "";
  SDL_free(name);
  return told;
}

int32_t LateSoundBlocks() { return systemDevice != 0 ? watch->Late() : 0; }

int64_t SoundAheadMicroseconds() { return systemDevice != 0 ? watch->MostAhead() : 0; }

void DrainSoundDevice() { drains = systemDevice != 0; }

std::optional<int32_t> SoundVolume() {
  if (mixer == nullptr) return std::nullopt;
  return mixer->Volume();
}

SoundError SetSoundVolume(int32_t volume) {
  if (mixer == nullptr) return kSoundUninitialized;
  if (volume < 0 || volume > kFullSoundVolume) return kSoundInvalidParam;
  mixer->SetVolume(volume);
  return kSoundOk;
}

SoundBufferResult CreateSoundBuffer(const SoundDescription& description, const SoundFormat& format) {
  return CreateBuffer(format, description.bytes, [&] {
    // Cleared memory costs nothing before it is written, so a size that a file only claims is cheap.
    return std::shared_ptr<unsigned char>(static_cast<unsigned char*>(std::calloc(description.bytes, 1)),
                                          std::free);
  });
}

SoundBufferResult SoundBufferOf(std::string samples, const SoundFormat& format) {
  return CreateBuffer(format, samples.size(), [&] {
    const auto held = std::make_shared<std::string>(std::move(samples));
    return std::shared_ptr<unsigned char>(held, reinterpret_cast<unsigned char*>(held->data()));
  });
}

SoundBufferResult DuplicateSoundBuffer(const SoundBufferPtr& buffer) {
  if (buffer == nullptr) return {nullptr, kSoundInvalidParam};
  if (mixer == nullptr || buffer->Device() != mixer) return {nullptr, kSoundUninitialized};
  mixer->KeepTime();
  mixer->FreeRetired();
  return Own([&] { return new SoundBuffer(*buffer); });
}

int64_t SoundBytesHeld() { return Samples::bytesHeld; }

void RenderSound(std::span<int16_t> out) {
  if (mixer != nullptr && offline) {
    mixer->Render(out);
  } else {
    std::fill(out.begin(), out.end(), int16_t{0});
  }
}

}  // namespace platform
