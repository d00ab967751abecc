// The ground of the sound device's tests: sounds of a few samples, and what the device makes of them.
#pragma once

#include <gtest/gtest.h>

#include <cstdint>
#include <span>
#include <vector>

#include "platform/sound_device.h"

namespace platform {

using Frames = std::vector<int16_t>;  // left, right, left, right

// Plain PCM.
SoundFormat Format(uint16_t channels, uint16_t bits, uint32_t rate = 44100);
std::span<const unsigned char> Bytes(const std::vector<int16_t>& samples);
// A buffer that holds these bytes; fails the test when there is none.
SoundBufferPtr Create(const SoundFormat& format, std::span<const unsigned char> bytes);
SoundBufferPtr Stereo(const Frames& samples, uint32_t rate = 44100);
SoundBufferPtr Mono(const std::vector<int16_t>& samples, uint32_t rate = 44100);
SoundError CreateError(uint32_t bytes, const SoundFormat& format);

// What the device plays next.
Frames Render(size_t frames);
// The left side alone; both sides have to be the same.
std::vector<int16_t> RenderMono(size_t frames);

class OfflineSound : public testing::Test {
 protected:
  void SetUp() override { OpenSoundDevice(SoundOutput::kOffline); }
  void TearDown() override { CloseSoundDevice(); }
};

}  // namespace platform
