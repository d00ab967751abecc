// Mixing: fetching samples in any form, resampling, adding up; and how voices pass between the two threads.
#include "platform/sound_device_mixer.h"

#include <algorithm>
#include <bit>
#include <cmath>
#include <cstring>

#include "platform/clock.h"

namespace platform {

static_assert(std::endian::native == std::endian::little, "sample data is used as the files have it");
static_assert(std::atomic<uint64_t>::is_always_lock_free && std::atomic<float>::is_always_lock_free);

namespace {

constexpr int32_t kHighestFrequency = 200000;
constexpr uint64_t kOneFrame = uint64_t{1} << 32;  // of a cursor

// Frames of the mix that are resampled at a time, and the most source frames that they take.
constexpr uint32_t kStretch = 128;
constexpr uint32_t kStretchSource = kStretch * kHighestFrequency / kSoundRate + 5;

// Unheard time passes in stretches that cannot overflow a cursor.
constexpr uint32_t kUnheardStretch = 1 << 24;

using Four = float __attribute__((vector_size(16)));
using FourWhole = int32_t __attribute__((vector_size(16)));
using FourFractions = uint32_t __attribute__((vector_size(16)));

Four LoadFour(const float* from) {
  Four four;
  std::memcpy(&four, from, sizeof four);
  return four;
}

void StoreFour(float* to, Four four) { std::memcpy(to, &four, sizeof four); }

// The cubic through x1 and x2 whose slopes there are those of the neighbours' chords, at t from x1 (0) to x2
// (1).
Four Cubic(Four x0, Four x1, Four x2, Four x3, Four t) {
  const Four slope = 0.5F * (x2 - x0);
  const Four square = x0 - 2.5F * x1 + 2.0F * x2 - 0.5F * x3;
  const Four cube = 0.5F * (x3 - x0) + 1.5F * (x1 - x2);
  return ((cube * t + square) * t + slope) * t + x1;
}

// Adds `frames` stereo frames, at `position` and every `step` after it, to `sum`. `source` begins one frame
// before frame 0 of the positions and holds two more than the last one's.
void AddResampled(float* sum, uint32_t frames, const float* source, uint64_t position, uint64_t step,
                  float gain) {
  const uint32_t fraction = static_cast<uint32_t>(position);
  const uint32_t nextFraction = static_cast<uint32_t>(position + step);
  const uint32_t fractionStep = static_cast<uint32_t>(2 * step);
  FourFractions fractions = {fraction, fraction, nextFraction, nextFraction};
  const FourFractions fractionSteps = {fractionStep, fractionStep, fractionStep, fractionStep};

  // Two frames at a time: left, right, left, right.
  for (uint32_t i = 0; i < frames; i += 2) {
    const float* first = source + 2 * (position >> 32);
    // A last frame without a partner is its own.
    const float* second = i + 1 < frames ? source + 2 * ((position + step) >> 32) : first;
    const Four first01 = LoadFour(first);
    const Four first23 = LoadFour(first + 4);
    const Four second01 = LoadFour(second);
    const Four second23 = LoadFour(second + 4);
    const Four t =
        __builtin_convertvector(__builtin_convertvector(fractions >> 8, FourWhole), Four) * 0x1p-24F;
    const Four mixed = gain * Cubic(__builtin_shufflevector(first01, second01, 0, 1, 4, 5),
                                    __builtin_shufflevector(first01, second01, 2, 3, 6, 7),
                                    __builtin_shufflevector(first23, second23, 0, 1, 4, 5),
                                    __builtin_shufflevector(first23, second23, 2, 3, 6, 7), t);
    float* to = sum + size_t{2} * i;
    if (i + 1 < frames) {
      StoreFour(to, LoadFour(to) + mixed);
    } else {
      to[0] += mixed[0];
      to[1] += mixed[1];
    }
    position += 2 * step;
    fractions += fractionSteps;
  }
}

void AddPlain(float* sum, uint32_t frames, const float* source, float gain) {
  for (uint32_t i = 0; i < 2 * frames; ++i) sum[i] += gain * source[i];
}

// Clipped, halves to even: above 2^23 a float has no room for a fraction, so the addition rounds it away.
int16_t ToSample(float value) {
  value = value < -32768.0F ? -32768.0F : value;
  value = value > 32767.0F ? 32767.0F : value;
  constexpr float kNoFraction = 0x1.8p23F;
  return static_cast<int16_t>(static_cast<int32_t>((value + kNoFraction) - kNoFraction));
}

}  // namespace

// Samples

void Samples::Fetch(float* out, int64_t first, uint32_t count, bool looping) const {
  while (count > 0) {
    if (looping) first = (first + frames) % frames;
    uint32_t run = count;
    if (first < 0 || first >= frames) {
      if (first < 0) run = static_cast<uint32_t>(std::min<int64_t>(run, -first));
      std::fill_n(out, size_t{2} * run, 0.0F);
    } else {
      run = static_cast<uint32_t>(std::min<int64_t>(run, frames - first));
      Widen(out, static_cast<uint32_t>(first), run);
    }
    out += size_t{2} * run;
    first += run;
    count -= run;
  }
}

void Samples::Widen(float* out, uint32_t first, uint32_t count) const {
  const unsigned char* from = data.get() + size_t{first} * frameBytes;
  const bool stereo = format.channels == 2;
  if (format.bitsPerSample == 16) {
    const auto* wide = reinterpret_cast<const int16_t*>(from);
    if (stereo) {
      for (size_t i = 0; i < size_t{2} * count; ++i) out[i] = wide[i];
    } else {
      for (size_t i = 0; i < count; ++i) out[2 * i] = out[2 * i + 1] = wide[i];
    }
  } else {
    const auto scaled = [](unsigned char byte) { return static_cast<float>((byte - 128) * 256); };
    if (stereo) {
      for (size_t i = 0; i < size_t{2} * count; ++i) out[i] = scaled(from[i]);
    } else {
      for (size_t i = 0; i < count; ++i) out[2 * i] = out[2 * i + 1] = scaled(from[i]);
    }
  }
}

// Mixer

Mixer::Mixer(Time time) : time_(time), clock_(Now()) {}

void Mixer::Close() {
  open_ = false;
  // The device is gone, so all voices are the game's again.
  while (retired_ != nullptr) {
    SoundBuffer* voice = retired_;
    retired_ = voice->nextRetired_;
    delete voice;
  }
  active_ = nullptr;
  intake_.store(nullptr, std::memory_order_relaxed);
}

void Mixer::KeepTime() {
  if (time_ != Time::kOfTheClock) return;
  const uint32_t now = Now();
  const int32_t passed = Elapsed(now, clock_);
  clock_ = now;
  if (passed <= 0) return;
  const uint64_t tenths = uint64_t{tenths_} + uint64_t{static_cast<uint32_t>(passed)} * (kSoundRate / 100);
  tenths_ = static_cast<uint32_t>(tenths % 10);
  for (uint64_t frames = tenths / 10; frames > 0;) {
    const auto stretch = static_cast<uint32_t>(std::min<uint64_t>(frames, kUnheardStretch));
    Run(nullptr, stretch);
    frames -= stretch;
  }
}

void Mixer::Enlist(SoundBuffer* voice) {
  voice->next_ = intake_.load(std::memory_order_relaxed);
  while (!intake_.compare_exchange_weak(voice->next_, voice, std::memory_order_release,
                                        std::memory_order_relaxed)) {
  }
}

void Mixer::Retire(SoundBuffer* voice) {
  if (!open_) {
    delete voice;
    return;
  }
  KeepTime();
  voice->Reorder([](uint64_t order) { return order & ~SoundBuffer::kPlaying; });
  voice->nextRetired_ = retired_;
  retired_ = voice;
  FreeRetired();
}

void Mixer::FreeRetired() {
  for (SoundBuffer** link = &retired_; *link != nullptr;) {
    SoundBuffer* voice = *link;
    if ((voice->order_.load(std::memory_order_acquire) & SoundBuffer::kEnlisted) != 0) {
      link = &voice->nextRetired_;
    } else {
      *link = voice->nextRetired_;
      delete voice;
    }
  }
}

SoundBuffer* Mixer::TakeIn() {
  SoundBuffer* newest = intake_.exchange(nullptr, std::memory_order_acquire);
  SoundBuffer* oldest = nullptr;
  while (newest != nullptr) {
    SoundBuffer* voice = newest;
    newest = voice->next_;
    voice->next_ = oldest;
    oldest = voice;
  }
  return oldest;
}

void Mixer::Run(float* sum, uint32_t frames) {
  SoundBuffer** link = &active_;
  while (true) {
    if (*link == nullptr) *link = TakeIn();
    SoundBuffer* voice = *link;
    if (voice == nullptr) return;
    SoundBuffer* next = voice->next_;  // once let go, the voice may be freed at any moment
    if (voice->Run(sum, frames)) {
      link = &voice->next_;
    } else {
      *link = next;
    }
  }
}

void Mixer::Render(std::span<int16_t> out) {
  // Exactly 1 at full volume.
  const float gain = static_cast<float>(Volume()) / static_cast<float>(kFullSoundVolume);
  while (out.size() >= 2) {
    const auto frames = static_cast<uint32_t>(std::min<size_t>(out.size() / 2, kPieceFrames));
    const size_t samples = size_t{2} * frames;
    std::fill_n(sum_, samples, 0.0F);
    Run(sum_, frames);
    for (size_t i = 0; i < samples; ++i) out[i] = ToSample(sum_[i] * gain);
    out = out.subspan(samples);
  }
  std::fill(out.begin(), out.end(), int16_t{0});
}

// The buffer, as the game sees it

SoundBuffer::SoundBuffer(std::shared_ptr<Mixer> mixer, std::shared_ptr<Samples> samples)
    : mixer_(std::move(mixer)), samples_(std::move(samples)) {
  SetFrequency(0);
}

SoundBuffer::SoundBuffer(const SoundBuffer& other)
    : mixer_(other.mixer_),
      samples_(other.samples_),
      step_(other.step_.load(std::memory_order_relaxed)),
      gain_(other.gain_.load(std::memory_order_relaxed)),
      frequency_(other.frequency_) {}

bool SoundBuffer::Ready() const {
  if (!mixer_->Open()) return false;
  mixer_->KeepTime();
  return true;
}

template <typename Change>
uint64_t SoundBuffer::Reorder(Change change) {
  uint64_t order = order_.load(std::memory_order_relaxed);
  while (!order_.compare_exchange_weak(order, change(order), std::memory_order_acq_rel,
                                       std::memory_order_relaxed)) {
  }
  return order;
}

SoundError SoundBuffer::SetFrequency(int32_t hertz) {
  if (!Ready()) return kSoundUninitialized;
  if (hertz == 0) hertz = static_cast<int32_t>(samples_->format.samplesPerSec);
  if (hertz < 1 || hertz > kHighestFrequency) return kSoundInvalidParam;
  frequency_ = hertz;
  step_.store(kOneFrame * static_cast<uint64_t>(hertz) / kSoundRate, std::memory_order_relaxed);
  return kSoundOk;
}

SoundError SoundBuffer::SetVolume(int32_t hundredths) {
  constexpr int32_t kSilence = -10000;
  if (!Ready()) return kSoundUninitialized;
  if (hundredths < kSilence || hundredths > 0) return kSoundInvalidParam;
  const double gain = hundredths == kSilence ? 0.0 : std::pow(10.0, hundredths / 2000.0);
  gain_.store(static_cast<float>(gain), std::memory_order_relaxed);
  return kSoundOk;
}

SoundError SoundBuffer::SetCurrentPosition(uint32_t byte) {
  if (!Ready()) return kSoundUninitialized;
  const uint64_t place = byte / samples_->frameBytes;
  if (place >= samples_->frames) return kSoundInvalidParam;
  begunAt_.store(0, std::memory_order_relaxed);
  Reorder([place](uint64_t order) { return ((order & ~kPlace) | place) + kOneTurn; });
  return kSoundOk;
}

SoundError SoundBuffer::Play(bool looping) {
  if (!Ready()) return kSoundUninitialized;
  samples_->played = true;
  const uint64_t wanted = kPlaying | kEnlisted | (looping ? kLooping : 0);
  const uint64_t before = Reorder([wanted](uint64_t order) { return (order & ~kLooping) | wanted; });
  if ((before & kEnlisted) == 0) mixer_->Enlist(this);
  return kSoundOk;
}

SoundError SoundBuffer::Stop() {
  if (!Ready()) return kSoundUninitialized;
  Reorder([](uint64_t order) { return order & ~kPlaying; });
  return kSoundOk;
}

bool SoundBuffer::Playing() const {
  return Ready() && (order_.load(std::memory_order_relaxed) & kPlaying) != 0;
}

SoundError SoundBuffer::Write(uint32_t offset, std::span<const unsigned char> bytes) {
  if (!Ready()) return kSoundUninitialized;
  if (samples_->played) return kSoundInvalidParam;
  if (offset > samples_->bytes || bytes.size() > samples_->bytes - offset) return kSoundInvalidParam;
  if (!bytes.empty()) std::memcpy(samples_->data.get() + offset, bytes.data(), bytes.size());
  return kSoundOk;
}

// The buffer, as the device sees it

bool SoundBuffer::Run(float* sum, uint32_t frames) {
  uint64_t order = order_.load(std::memory_order_acquire);
  if (order / kOneTurn != turn_) {
    turn_ = order / kOneTurn;
    cursor_ = (order & kPlace) << 32;
    begunAt_.store(mixer_->BlockTime(), std::memory_order_relaxed);
  }

  const uint64_t end = uint64_t{samples_->frames} << 32;
  if ((order & kPlaying) != 0 && cursor_ < end) {
    const bool looping = (order & kLooping) != 0;
    const uint64_t step = step_.load(std::memory_order_relaxed);
    const uint64_t untilEnd = looping ? frames : (end - cursor_ + step - 1) / step;
    Advance(sum, static_cast<uint32_t>(std::min<uint64_t>(frames, untilEnd)), step, looping);
    if (looping || cursor_ < end) return true;
  }
  if ((order & kPlaying) != 0) cursor_ = 0;

  // Where the game has given a newer order in between, the voice stays, and the next block obeys it.
  return !order_.compare_exchange_strong(order, order & ~(kPlaying | kEnlisted), std::memory_order_acq_rel,
                                         std::memory_order_relaxed);
}

void SoundBuffer::Advance(float* sum, uint32_t frames, uint64_t step, bool looping) {
  const uint64_t end = uint64_t{samples_->frames} << 32;
  const auto moveOn = [&](uint64_t count) {
    cursor_ += step * count;
    if (looping) cursor_ %= end;
  };
  const float gain = gain_.load(std::memory_order_relaxed);
  if (sum == nullptr || gain == 0.0F) {
    moveOn(frames);
    return;
  }
  float source[2 * kStretchSource];
  while (frames > 0) {
    const uint32_t count = std::min(frames, kStretch);
    const auto first = static_cast<int64_t>(cursor_ >> 32);
    const uint64_t fraction = cursor_ % kOneFrame;
    if (step == kOneFrame && fraction == 0) {
      samples_->Fetch(source, first, count, looping);
      AddPlain(sum, count, source, gain);
    } else {
      const uint64_t last = (fraction + step * (count - 1)) >> 32;
      samples_->Fetch(source, first - 1, static_cast<uint32_t>(last) + 4, looping);
      AddResampled(sum, count, source, fraction, step, gain);
    }
    moveOn(count);
    sum += size_t{2} * count;
    frames -= count;
  }
}

}  // namespace platform
