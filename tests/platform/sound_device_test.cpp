// The sound device: what its buffers play, to the sample, and what it refuses.
#include "platform/sound_device.h"

#include <gtest/gtest.h>
#include <sys/resource.h>
#include <unistd.h>

#include <atomic>
#include <chrono>
#include <cmath>
#include <cstdlib>
#include <cstring>
#include <filesystem>
#include <fstream>
#include <iterator>
#include <random>
#include <string>
#include <thread>
#include <vector>

#include "platform/clock.h"

namespace platform {
namespace {

using Frames = std::vector<int16_t>;  // left, right, left, right

SoundFormat Format(uint16_t channels, uint16_t bits, uint32_t rate = 44100) {
  SoundFormat format;
  format.tag = 1;
  format.channels = channels;
  format.bitsPerSample = bits;
  format.samplesPerSec = rate;
  format.blockAlign = static_cast<uint16_t>(channels * bits / 8);
  format.avgBytesPerSec = rate * format.blockAlign;
  return format;
}

std::span<const unsigned char> Bytes(const Frames& samples) {
  return {reinterpret_cast<const unsigned char*>(samples.data()), 2 * samples.size()};
}

SoundBufferPtr Create(const SoundFormat& format, std::span<const unsigned char> bytes) {
  SoundDescription description;
  description.bytes = static_cast<uint32_t>(bytes.size());
  const SoundBufferResult made = CreateSoundBuffer(description, format);
  EXPECT_EQ(made.error, kSoundOk);
  EXPECT_NE(made.buffer, nullptr);
  EXPECT_EQ(made.buffer->Write(0, bytes), kSoundOk);
  return made.buffer;
}

SoundBufferPtr Stereo(const Frames& samples, uint32_t rate = 44100) {
  return Create(Format(2, 16, rate), Bytes(samples));
}

SoundBufferPtr Mono(const Frames& samples, uint32_t rate = 44100) {
  return Create(Format(1, 16, rate), Bytes(samples));
}

SoundError CreateError(uint32_t bytes, const SoundFormat& format) {
  SoundDescription description;
  description.bytes = bytes;
  const SoundBufferResult made = CreateSoundBuffer(description, format);
  EXPECT_EQ(made.buffer == nullptr, made.error != kSoundOk);
  return made.error;
}

Frames Render(size_t frames) {
  Frames out(2 * frames, 12345);
  RenderSound(out);
  return out;
}

// The left side alone; both sides have to be the same.
Frames RenderMono(size_t frames) {
  const Frames both = Render(frames);
  Frames left;
  for (size_t i = 0; i < frames; ++i) {
    left.push_back(both[2 * i]);
    EXPECT_EQ(both[2 * i], both[2 * i + 1]) << "frame " << i;
  }
  return left;
}

class OfflineSound : public testing::Test {
 protected:
  void SetUp() override { OpenSoundDevice(SoundOutput::kOffline); }
  void TearDown() override { CloseSoundDevice(); }
};

TEST_F(OfflineSound, SaysWhatItIs) {
  const SoundDeviceInfo info = OpenSoundDevice(SoundOutput::kOffline);
  EXPECT_FALSE(info.heard);
  EXPECT_EQ(info.rate, 44100);
  EXPECT_EQ(info.driver, "offline");
  EXPECT_FALSE(info.why.empty());
}

TEST_F(OfflineSound, ASoundIsSilentUntilItIsPlayed) {
  const SoundBufferPtr sound = Stereo({1, 2, 3, 4});
  EXPECT_FALSE(sound->Playing());
  EXPECT_EQ(Render(3), Frames({0, 0, 0, 0, 0, 0}));
}

TEST_F(OfflineSound, PlayStartsWithTheFirstSampleOfTheNextBlock) {
  const SoundBufferPtr sound = Stereo({100, -200, 300, -32768, 32767, 5});
  Render(7);
  EXPECT_EQ(sound->Play(false), kSoundOk);
  EXPECT_TRUE(sound->Playing());
  EXPECT_EQ(Render(5), Frames({100, -200, 300, -32768, 32767, 5, 0, 0, 0, 0}));
  EXPECT_FALSE(sound->Playing());
}

TEST_F(OfflineSound, ASoundOfWholeBlocksHasEndedWhenItsLastSampleIsOut) {
  const SoundBufferPtr sound = Mono({1, 2});
  sound->Play(false);
  EXPECT_EQ(RenderMono(1), Frames({1}));
  EXPECT_TRUE(sound->Playing());
  EXPECT_EQ(RenderMono(1), Frames({2}));
  EXPECT_FALSE(sound->Playing());
}

TEST_F(OfflineSound, MonoSoundsOnBothSides) {
  const SoundBufferPtr sound = Mono({7, -8, 9});
  sound->Play(false);
  EXPECT_EQ(Render(4), Frames({7, 7, -8, -8, 9, 9, 0, 0}));
}

TEST_F(OfflineSound, TheDeviceOpensAtFullVolume) { EXPECT_EQ(SoundVolume(), kFullSoundVolume); }

TEST_F(OfflineSound, VolumeScalesTheWholeMix) {
  const SoundBufferPtr first = Mono({10000, -10000, 32767, 100});
  const SoundBufferPtr second = Mono({10000, -10000, 32767, 31});
  first->Play(false);
  second->Play(false);
  // A fifth: what is too loud is cut behind the volume.
  EXPECT_EQ(SetSoundVolume(13107), kSoundOk);
  EXPECT_EQ(RenderMono(4), Frames({4000, -4000, 13107, 26}));
  EXPECT_EQ(SoundVolume(), 13107);
}

TEST_F(OfflineSound, VolumeOfNothingIsSilenceAndTimePasses) {
  const SoundBufferPtr sound = Mono({1, 2, 3});
  sound->Play(false);
  SetSoundVolume(0);
  EXPECT_EQ(RenderMono(1), Frames({0}));
  SetSoundVolume(kFullSoundVolume);
  EXPECT_EQ(RenderMono(3), Frames({2, 3, 0}));
}

TEST_F(OfflineSound, VolumeOutOfRangeIsRefused) {
  EXPECT_EQ(SetSoundVolume(-1), kSoundInvalidParam);
  EXPECT_EQ(SetSoundVolume(65536), kSoundInvalidParam);
  EXPECT_EQ(SoundVolume(), kFullSoundVolume);
}

TEST_F(OfflineSound, VolumeBelongsToTheOpenDevice) {
  SetSoundVolume(1);
  CloseSoundDevice();
  EXPECT_EQ(SoundVolume(), std::nullopt);
  EXPECT_EQ(SetSoundVolume(1), kSoundUninitialized);
  OpenSoundDevice(SoundOutput::kNull);
  EXPECT_EQ(SoundVolume(), kFullSoundVolume);
}

TEST_F(OfflineSound, EightBitsAreUnsignedAndScaledBy256) {
  const std::vector<unsigned char> mono = {0, 128, 255, 127};
  const SoundBufferPtr sound = Create(Format(1, 8), mono);
  sound->Play(false);
  EXPECT_EQ(RenderMono(5), Frames({-32768, 0, 32512, -256, 0}));
}

TEST_F(OfflineSound, EightBitStereoAlternatesSides) {
  const std::vector<unsigned char> stereo = {129, 127, 138, 28};
  const SoundBufferPtr sound = Create(Format(2, 8), stereo);
  sound->Play(false);
  EXPECT_EQ(Render(3), Frames({256, -256, 2560, -25600, 0, 0}));
}

TEST_F(OfflineSound, BytesBehindTheLastWholeFrameAreNotHeard) {
  const Frames samples = {1, 2, 3};  // one frame and a half
  const SoundBufferPtr sound = Stereo(samples);
  sound->Play(false);
  EXPECT_EQ(Render(2), Frames({1, 2, 0, 0}));
  EXPECT_EQ(sound->SetCurrentPosition(4), kSoundInvalidParam);
}

TEST_F(OfflineSound, ABufferSmallerThanAFrameEndsAtOnce) {
  const std::vector<unsigned char> two = {1, 2};
  const SoundBufferPtr sound = Create(Format(2, 16), two);
  sound->Play(true);
  EXPECT_EQ(Render(1), Frames({0, 0}));
  EXPECT_FALSE(sound->Playing());
}

TEST_F(OfflineSound, StopKeepsThePlaceAndPlayGoesOn) {
  const SoundBufferPtr sound = Mono({1, 2, 3, 4, 5});
  sound->Play(false);
  EXPECT_EQ(RenderMono(2), Frames({1, 2}));
  EXPECT_EQ(sound->Stop(), kSoundOk);
  EXPECT_FALSE(sound->Playing());
  EXPECT_EQ(RenderMono(2), Frames({0, 0}));
  sound->Play(false);
  EXPECT_EQ(RenderMono(4), Frames({3, 4, 5, 0}));
}

TEST_F(OfflineSound, PlayOfAPlayingSoundDoesNotStartOver) {
  const SoundBufferPtr sound = Mono({1, 2, 3});
  sound->Play(false);
  EXPECT_EQ(RenderMono(1), Frames({1}));
  sound->Play(false);
  EXPECT_EQ(RenderMono(3), Frames({2, 3, 0}));
}

TEST_F(OfflineSound, PlayAfterTheEndStartsOver) {
  const SoundBufferPtr sound = Mono({1, 2, 3});
  sound->Play(false);
  EXPECT_EQ(RenderMono(5), Frames({1, 2, 3, 0, 0}));
  sound->Play(false);
  EXPECT_EQ(RenderMono(2), Frames({1, 2}));
}

TEST_F(OfflineSound, ARetriggerCutsTheSoundOff) {
  const SoundBufferPtr sound = Mono({1, 2, 3, 4});
  sound->Play(false);
  EXPECT_EQ(RenderMono(3), Frames({1, 2, 3}));
  sound->Stop();
  sound->SetCurrentPosition(0);
  sound->Play(false);
  EXPECT_EQ(RenderMono(5), Frames({1, 2, 3, 4, 0}));
}

TEST_F(OfflineSound, ARewindOfAStoppedSoundWaitsForItsPlay) {
  const SoundBufferPtr sound = Mono({1, 2, 3});
  sound->Play(false);
  RenderMono(2);
  sound->Stop();
  RenderMono(2);
  sound->SetCurrentPosition(0);
  EXPECT_EQ(RenderMono(1), Frames({0}));
  sound->Play(false);
  EXPECT_EQ(RenderMono(2), Frames({1, 2}));
}

TEST_F(OfflineSound, APlayingSoundGoesOnFromTheNewPosition) {
  const SoundBufferPtr sound = Mono({1, 2, 3, 4, 5, 6});
  sound->Play(false);
  EXPECT_EQ(RenderMono(1), Frames({1}));
  EXPECT_EQ(sound->SetCurrentPosition(8), kSoundOk);
  EXPECT_TRUE(sound->Playing());
  EXPECT_EQ(RenderMono(3), Frames({5, 6, 0}));
}

TEST_F(OfflineSound, APositionOnAnEndedSoundDoesNotStartIt) {
  const SoundBufferPtr sound = Mono({1, 2, 3});
  sound->Play(false);
  RenderMono(4);
  sound->SetCurrentPosition(2);
  EXPECT_FALSE(sound->Playing());
  EXPECT_EQ(RenderMono(1), Frames({0}));
  sound->Play(false);
  EXPECT_EQ(RenderMono(3), Frames({2, 3, 0}));
}

TEST_F(OfflineSound, APositionIsBroughtDownToAWholeFrame) {
  const SoundBufferPtr sound = Stereo({1, 2, 3, 4, 5, 6});
  EXPECT_EQ(sound->SetCurrentPosition(7), kSoundOk);
  sound->Play(false);
  EXPECT_EQ(Render(2), Frames({3, 4, 5, 6}));
}

TEST_F(OfflineSound, APositionAtTheEndIsRefused) {
  const SoundBufferPtr sound = Mono({1, 2, 3});
  EXPECT_EQ(sound->SetCurrentPosition(6), kSoundInvalidParam);
  EXPECT_EQ(sound->SetCurrentPosition(0xFFFFFFFF), kSoundInvalidParam);
  sound->Play(false);
  EXPECT_EQ(RenderMono(1), Frames({1}));
}

TEST_F(OfflineSound, ALoopGoesOnUntilItIsStopped) {
  const SoundBufferPtr sound = Mono({1, 2, 3});
  sound->Play(true);
  EXPECT_EQ(RenderMono(8), Frames({1, 2, 3, 1, 2, 3, 1, 2}));
  EXPECT_TRUE(sound->Playing());
  sound->Stop();
  EXPECT_EQ(RenderMono(1), Frames({0}));
  sound->Play(true);
  EXPECT_EQ(RenderMono(2), Frames({3, 1}));
}

TEST_F(OfflineSound, PlayWithoutLoopingLetsALoopRunOut) {
  const SoundBufferPtr sound = Mono({1, 2, 3});
  sound->Play(true);
  EXPECT_EQ(RenderMono(4), Frames({1, 2, 3, 1}));
  sound->Play(false);
  EXPECT_EQ(RenderMono(4), Frames({2, 3, 0, 0}));
  EXPECT_FALSE(sound->Playing());
}

// -600 is 10^-0.3 = 0.501187...; -2000 is a tenth.
TEST_F(OfflineSound, VolumeIsInHundredthsOfADecibel) {
  const SoundBufferPtr sound = Mono({10000, -10000, 1000});
  EXPECT_EQ(sound->SetVolume(-600), kSoundOk);
  sound->Play(false);
  EXPECT_EQ(RenderMono(3), Frames({5012, -5012, 501}));
  sound->SetVolume(-2000);
  sound->Play(false);
  EXPECT_EQ(RenderMono(3), Frames({1000, -1000, 100}));
  sound->SetVolume(-500);  // 0.562341...
  sound->Play(false);
  EXPECT_EQ(RenderMono(3), Frames({5623, -5623, 562}));
  sound->SetVolume(0);
  sound->Play(false);
  EXPECT_EQ(RenderMono(3), Frames({10000, -10000, 1000}));
}

TEST_F(OfflineSound, TheLowestVolumeIsSilenceAndTimePassesInIt) {
  const SoundBufferPtr sound = Mono({32767, 32767, 32767, 4});
  EXPECT_EQ(sound->SetVolume(-10000), kSoundOk);
  sound->Play(false);
  EXPECT_EQ(RenderMono(3), Frames({0, 0, 0}));
  sound->SetVolume(0);
  EXPECT_EQ(RenderMono(2), Frames({4, 0}));
}

TEST_F(OfflineSound, AVolumeOutsideTheRangeIsRefusedAndChangesNothing) {
  const SoundBufferPtr sound = Mono({1000, 1000, 1000});
  sound->SetVolume(-2000);
  EXPECT_EQ(sound->SetVolume(50), kSoundInvalidParam);
  EXPECT_EQ(sound->SetVolume(1), kSoundInvalidParam);
  EXPECT_EQ(sound->SetVolume(-10001), kSoundInvalidParam);
  sound->Play(false);
  EXPECT_EQ(RenderMono(1), Frames({100}));
}

TEST_F(OfflineSound, AVolumeSetWhilePlayingHoldsFromTheNextBlock) {
  const SoundBufferPtr sound = Mono({1000, 1000, 1000});
  sound->Play(false);
  EXPECT_EQ(RenderMono(1), Frames({1000}));
  sound->SetVolume(-2000);
  EXPECT_EQ(RenderMono(1), Frames({100}));
}

TEST_F(OfflineSound, VoicesAddUpAndTheSumIsClipped) {
  const SoundBufferPtr first = Stereo({30000, -30000, 100, -1, 20000, -20000});
  const SoundBufferPtr second = Stereo({30000, -30000, 50, -2, 12767, -12768});
  first->Play(false);
  second->Play(false);
  EXPECT_EQ(Render(3), Frames({32767, -32768, 150, -3, 32767, -32768}));
}

// The sum may pass the limit on its way: 30000 + 30000 - 30000.
TEST_F(OfflineSound, OnlyTheFinishedSumIsClipped) {
  const SoundBufferPtr first = Mono({30000});
  const SoundBufferPtr second = Mono({30000});
  const SoundBufferPtr third = Mono({-30000});
  for (const SoundBufferPtr& sound : {first, second, third}) sound->Play(false);
  EXPECT_EQ(RenderMono(1), Frames({30000}));
}

// Half way between two samples stands (-x0 + 9 x1 + 9 x2 - x3) / 16, with silence around the sound:
// (9*1600 + 9*3200 + 1600) / 16 = 2800, (-1600 + 9*3200 - 9*1600) / 16 = 800,
// (-3200 - 9*1600) / 16 = -1100, 1600 / 16 = 100.
TEST_F(OfflineSound, ASoundAtHalfTheRateIsInterpolated) {
  const SoundBufferPtr sound = Mono({1600, 3200, -1600, 0}, 22050);
  EXPECT_EQ(sound->Frequency(), 22050);
  sound->Play(false);
  EXPECT_EQ(RenderMono(10), Frames({1600, 2800, 3200, 800, -1600, -1100, 0, 100, 0, 0}));
  EXPECT_FALSE(sound->Playing());
}

TEST_F(OfflineSound, BothSidesAreInterpolatedApart) {
  const SoundBufferPtr sound = Stereo({1600, 0, 3200, 160, -1600, 160, 0, 0}, 22050);
  sound->Play(false);
  // Right: (9*160 - 160) / 16 = 80 before it, (9*160 + 9*160) / 16 = 180 in the middle.
  EXPECT_EQ(Render(4), Frames({1600, 0, 2800, 80, 3200, 160, 800, 180}));
}

// At the seam of a loop the neighbours are those across it: x = 0 160 320 160, and around again.
// Between 160 and 0: (-320 + 9*160 + 0 - 160) / 16 = 60. Between 0 and 160: (-160 + 0 + 9*160 - 320) / 16
// = 60.
TEST_F(OfflineSound, ALoopIsInterpolatedAcrossItsSeam) {
  const SoundBufferPtr sound = Mono({0, 160, 320, 160}, 22050);
  sound->Play(true);
  // Between 160 and 320: (0 + 9*160 + 9*320 - 160) / 16 = 260.
  EXPECT_EQ(RenderMono(10), Frames({0, 60, 160, 260, 320, 260, 160, 60, 0, 60}));
}

// 9 * 8 / 16 = 4.5, 9 * 24 / 16 = 13.5.
TEST_F(OfflineSound, HalvesRoundToEven) {
  const SoundBufferPtr low = Mono({0, 8}, 22050);
  low->Play(false);
  EXPECT_EQ(RenderMono(2), Frames({0, 4}));
  low->Stop();
  const SoundBufferPtr high = Mono({0, 24}, 22050);
  high->Play(false);
  EXPECT_EQ(RenderMono(2), Frames({0, 14}));
  high->Stop();
  const SoundBufferPtr negative = Mono({0, -8}, 22050);
  negative->Play(false);
  EXPECT_EQ(RenderMono(2), Frames({0, -4}));
}

// A straight line is kept, whatever the ratio; 33075 is 0.75 of the rate.
TEST_F(OfflineSound, AStraightLineStaysOneAtAnyRatio) {
  Frames line;
  for (int i = 0; i < 400; ++i) line.push_back(static_cast<int16_t>(80 * i - 16000));
  const SoundBufferPtr sound = Mono(line);
  EXPECT_EQ(sound->SetFrequency(33075), kSoundOk);
  sound->Play(false);
  const Frames out = RenderMono(500);
  for (int i = 2; i < 500; ++i) ASSERT_EQ(out[i], 60 * i - 16000) << i;
}

TEST_F(OfflineSound, TwiceTheFrequencyTakesEverySecondSample) {
  const SoundBufferPtr sound = Mono({1, 20, 3, 40, 5, 60, 7});
  sound->SetFrequency(88200);
  sound->Play(false);
  EXPECT_EQ(RenderMono(5), Frames({1, 3, 5, 7, 0}));
}

TEST_F(OfflineSound, AFrequencySetWhilePlayingHoldsFromTheNextBlock) {
  const SoundBufferPtr sound = Mono({0, 16, 32, 48, 64, 80, 96, 112, 128});
  sound->Play(false);
  EXPECT_EQ(RenderMono(2), Frames({0, 16}));
  sound->SetFrequency(22050);
  EXPECT_EQ(RenderMono(3), Frames({32, 40, 48}));
  sound->SetFrequency(88200);  // goes on from 56
  EXPECT_EQ(RenderMono(2), Frames({56, 88}));
}

TEST_F(OfflineSound, FrequenciesGoFromOneTo200000) {
  const SoundBufferPtr sound = Mono({5, 6}, 11025);
  EXPECT_EQ(sound->SetFrequency(1), kSoundOk);
  EXPECT_EQ(sound->Frequency(), 1);
  EXPECT_EQ(sound->SetFrequency(200000), kSoundOk);
  EXPECT_EQ(sound->Frequency(), 200000);
  EXPECT_EQ(sound->SetFrequency(200001), kSoundInvalidParam);
  EXPECT_EQ(sound->SetFrequency(-1), kSoundInvalidParam);
  EXPECT_EQ(sound->Frequency(), 200000);
  EXPECT_EQ(sound->SetFrequency(0), kSoundOk);
  EXPECT_EQ(sound->Frequency(), 11025);
}

TEST_F(OfflineSound, AtOneHertzASampleLastsASecond) {
  const SoundBufferPtr sound = Mono({1000, 1000});
  sound->SetFrequency(1);
  sound->Play(false);
  EXPECT_EQ(RenderMono(44100).front(), 1000);
  EXPECT_TRUE(sound->Playing());
  Render(44101);
  EXPECT_FALSE(sound->Playing());
}

TEST_F(OfflineSound, AtTheHighestFrequencyASoundEndsOnTime) {
  const SoundBufferPtr sound = Mono(Frames(200000, 77));
  sound->SetFrequency(200000);
  sound->Play(false);
  const Frames out = RenderMono(44100);
  EXPECT_EQ(out[44000], 77);
  EXPECT_TRUE(sound->Playing() || out.back() == 77);
  Render(1);
  EXPECT_FALSE(sound->Playing());
}

TEST_F(OfflineSound, HowAStretchIsCutIntoBlocksMakesNoDifference) {
  std::mt19937 random(1);
  Frames noise(6000);
  for (int16_t& sample : noise) sample = static_cast<int16_t>(random());
  const SoundBufferPtr sound = Stereo(noise);
  const SoundBufferPtr other = Mono(noise, 37800);
  sound->SetVolume(-731);
  other->SetVolume(-1100);
  const auto restart = [&] {
    for (const SoundBufferPtr& buffer : {sound, other}) {
      buffer->Stop();
      buffer->SetCurrentPosition(0);
      buffer->Play(buffer == sound);
    }
    sound->SetFrequency(51234);
  };
  restart();
  const Frames whole = Render(9000);
  restart();
  Frames pieces;
  while (pieces.size() < whole.size()) {
    const size_t left = whole.size() / 2 - pieces.size() / 2;
    const Frames piece = Render(std::min<size_t>(left, 1 + random() % 400));
    pieces.insert(pieces.end(), piece.begin(), piece.end());
  }
  EXPECT_EQ(whole, pieces);
}

TEST_F(OfflineSound, AnOddSampleAtTheEndOfABlockIsSilent) {
  const SoundBufferPtr sound = Stereo({1, 2, 3, 4});
  sound->Play(false);
  Frames out(3, 99);
  RenderSound(out);
  EXPECT_EQ(out, Frames({1, 2, 0}));
}

TEST_F(OfflineSound, DuplicatesShareSamplesAndPlayApart) {
  const SoundBufferPtr sound = Mono({1, 2, 3, 4});
  sound->SetVolume(-2000);
  sound->SetFrequency(88200);
  sound->Play(false);
  Render(1);
  const SoundBufferResult made = DuplicateSoundBuffer(sound);
  ASSERT_EQ(made.error, kSoundOk);
  EXPECT_FALSE(made.buffer->Playing());
  EXPECT_EQ(made.buffer->Frequency(), 88200);
  sound->Stop();
  made.buffer->SetFrequency(44100);
  made.buffer->Play(false);
  EXPECT_EQ(RenderMono(4), Frames({0, 0, 0, 0}));  // 0.1 to 0.4 under the volume of the original
  made.buffer->SetVolume(0);
  made.buffer->Play(false);
  EXPECT_EQ(RenderMono(5), Frames({1, 2, 3, 4, 0}));
  EXPECT_EQ(sound->Frequency(), 88200);
}

TEST_F(OfflineSound, ADuplicateOutlivesItsOriginal) {
  SoundBufferPtr sound = Mono({1, 2, 3});
  const SoundBufferPtr duplicate = DuplicateSoundBuffer(sound).buffer;
  sound.reset();
  duplicate->Play(false);
  EXPECT_EQ(RenderMono(3), Frames({1, 2, 3}));
}

TEST_F(OfflineSound, NoBufferCannotBeDuplicated) {
  EXPECT_EQ(DuplicateSoundBuffer(nullptr).error, kSoundInvalidParam);
}

TEST_F(OfflineSound, WritesPastTheEndAreRefused) {
  SoundDescription description;
  description.bytes = 8;
  const SoundBufferPtr sound = CreateSoundBuffer(description, Format(1, 16)).buffer;
  const Frames samples = {1, 2, 3, 4, 5};
  EXPECT_EQ(sound->Write(0, Bytes(samples)), kSoundInvalidParam);
  EXPECT_EQ(sound->Write(7, Bytes(samples).first(2)), kSoundInvalidParam);
  EXPECT_EQ(sound->Write(9, Bytes(samples).first(0)), kSoundInvalidParam);
  EXPECT_EQ(sound->Write(0xFFFFFFFF, Bytes(samples).first(2)), kSoundInvalidParam);
  EXPECT_EQ(sound->Write(8, Bytes(samples).first(0)), kSoundOk);
  EXPECT_EQ(sound->Write(4, Bytes(samples).first(4)), kSoundOk);
  sound->Play(false);
  EXPECT_EQ(RenderMono(4), Frames({0, 0, 1, 2}));
}

TEST_F(OfflineSound, SamplesAreFixedOnceTheyHaveBeenPlayed) {
  const SoundBufferPtr sound = Mono({1, 2});
  const SoundBufferPtr duplicate = DuplicateSoundBuffer(sound).buffer;
  const Frames samples = {9};
  EXPECT_EQ(sound->Write(0, Bytes(samples)), kSoundOk);
  duplicate->Play(false);
  EXPECT_EQ(sound->Write(0, Bytes(samples)), kSoundInvalidParam);
  EXPECT_EQ(RenderMono(2), Frames({9, 2}));
}

TEST_F(OfflineSound, FormatsThatTheDeviceCannotTakeAreRefused) {
  EXPECT_EQ(CreateError(8, SoundFormat{}), kSoundBadFormat);
  EXPECT_EQ(CreateError(8, Format(0, 16)), kSoundBadFormat);
  EXPECT_EQ(CreateError(8, Format(3, 16)), kSoundBadFormat);
  EXPECT_EQ(CreateError(8, Format(2, 24)), kSoundBadFormat);
  EXPECT_EQ(CreateError(8, Format(2, 4)), kSoundBadFormat);
  EXPECT_EQ(CreateError(8, Format(1, 32)), kSoundBadFormat);
  EXPECT_EQ(CreateError(8, Format(1, 16, 0)), kSoundBadFormat);
  EXPECT_EQ(CreateError(8, Format(1, 16, 200001)), kSoundBadFormat);
  SoundFormat compressed = Format(1, 16);
  compressed.tag = 85;
  EXPECT_EQ(CreateError(8, compressed), kSoundBadFormat);
  EXPECT_EQ(CreateError(8, Format(1, 8, 1)), kSoundOk);
  EXPECT_EQ(CreateError(8, Format(2, 16, 200000)), kSoundOk);
}

TEST_F(OfflineSound, BlockAlignAndBytesPerSecondAreNotLookedAt) {
  SoundFormat format = Format(2, 16);
  format.blockAlign = 0;
  format.avgBytesPerSec = 0;
  EXPECT_EQ(CreateError(8, format), kSoundOk);
}

TEST_F(OfflineSound, SizesAreLimited) {
  EXPECT_EQ(CreateError(0, Format(2, 16)), kSoundInvalidParam);
  EXPECT_EQ(CreateError(256U << 20, Format(2, 16)), kSoundOk);
  EXPECT_EQ(CreateError((256U << 20) + 1, Format(2, 16)), kSoundOutOfMemory);
  EXPECT_EQ(CreateError(0xFFFFFFFF, Format(1, 8)), kSoundOutOfMemory);
}

TEST_F(OfflineSound, TheLargestBufferPlaysToItsVeryEnd) {
  constexpr uint32_t kBytes = 256U << 20;
  SoundDescription description;
  description.bytes = kBytes;
  const SoundBufferPtr sound = CreateSoundBuffer(description, Format(1, 8)).buffer;
  const std::vector<unsigned char> last = {129};
  ASSERT_EQ(sound->Write(kBytes - 1, last), kSoundOk);
  ASSERT_EQ(sound->SetCurrentPosition(kBytes - 1), kSoundOk);
  sound->Play(false);
  EXPECT_EQ(RenderMono(2), Frames({256, 0}));
  EXPECT_FALSE(sound->Playing());
}

TEST_F(OfflineSound, OverAThousandVoicesSoundTogether) {
  const SoundBufferPtr sound = Mono({1, -2, 3});
  std::vector<SoundBufferPtr> voices;
  for (int i = 0; i < 3000; ++i) voices.push_back(DuplicateSoundBuffer(sound).buffer);
  for (const SoundBufferPtr& voice : voices) voice->Play(false);
  EXPECT_EQ(RenderMono(4), Frames({3000, -6000, 9000, 0}));
  for (const SoundBufferPtr& voice : voices) EXPECT_FALSE(voice->Playing());
}

TEST_F(OfflineSound, ABufferThatIsLetGoWhilePlayingFallsSilent) {
  SoundBufferPtr sound = Mono({1, 2, 3, 4, 5, 6});
  sound->Play(true);
  EXPECT_EQ(RenderMono(2), Frames({1, 2}));
  sound.reset();
  EXPECT_EQ(RenderMono(2), Frames({0, 0}));
  const SoundBufferPtr next = Mono({7});
  next->Play(false);
  EXPECT_EQ(RenderMono(1), Frames({7}));
}

TEST_F(OfflineSound, BuffersMayBeLetGoBeforeTheDeviceHasSeenThem) {
  for (int i = 0; i < 100; ++i) {
    SoundBufferPtr sound = Mono({1, 2, 3});
    sound->Play(false);
  }
  EXPECT_EQ(RenderMono(2), Frames({0, 0}));
}

TEST_F(OfflineSound, ManyCallsBetweenTwoBlocksLoseNothing) {
  const SoundBufferPtr sound = Mono({1, 2, 3, 4});
  for (int i = 0; i < 100000; ++i) {
    sound->Play(true);
    sound->Stop();
    sound->SetCurrentPosition(static_cast<uint32_t>(i % 8));
  }
  sound->SetCurrentPosition(4);
  sound->Play(false);
  EXPECT_EQ(RenderMono(3), Frames({3, 4, 0}));
}

TEST_F(OfflineSound, AnotherDeviceEndsTheBuffersOfTheFirst) {
  const SoundBufferPtr sound = Mono({1, 2, 3});
  sound->Play(true);
  Render(1);
  OpenSoundDevice(SoundOutput::kOffline);
  const Frames samples = {1};
  EXPECT_EQ(sound->Play(false), kSoundUninitialized);
  EXPECT_EQ(sound->Stop(), kSoundUninitialized);
  EXPECT_EQ(sound->SetVolume(0), kSoundUninitialized);
  EXPECT_EQ(sound->SetFrequency(44100), kSoundUninitialized);
  EXPECT_EQ(sound->SetCurrentPosition(0), kSoundUninitialized);
  EXPECT_EQ(sound->Write(0, Bytes(samples)), kSoundUninitialized);
  EXPECT_FALSE(sound->Playing());
  EXPECT_EQ(DuplicateSoundBuffer(sound).error, kSoundUninitialized);
  EXPECT_EQ(RenderMono(2), Frames({0, 0}));
}

TEST(ClosedSound, NothingCanBeCreated) {
  CloseSoundDevice();
  EXPECT_EQ(CreateError(8, Format(2, 16)), kSoundUninitialized);
  EXPECT_EQ(RenderMono(2), Frames({0, 0}));
}

TEST(ClosedSound, BuffersOutliveTheDevice) {
  OpenSoundDevice(SoundOutput::kOffline);
  SoundBufferPtr sound = Mono({1, 2, 3});
  SoundBufferPtr released = Mono({1, 2, 3});
  sound->Play(true);
  released->Play(true);
  released.reset();
  CloseSoundDevice();
  EXPECT_EQ(sound->Play(false), kSoundUninitialized);
  sound.reset();
}

// 441 frames last 10 ms.
// The most memory that the program has held since its start.
int64_t MostKibHeld() {
  rusage usage{};
  getrusage(RUSAGE_SELF, &usage);
  return usage.ru_maxrss;
}

class NullSound : public testing::Test {
 protected:
  void SetUp() override {
    UseVirtualClock(kStart);
    info_ = OpenSoundDevice(SoundOutput::kNull);
  }
  void TearDown() override {
    CloseSoundDevice();
    UseRealClock();
  }
  static constexpr uint32_t kStart = 0xFFFFFFF0;  // the clock wraps on the way
  SoundDeviceInfo info_;
};

TEST_F(NullSound, SaysThatNothingIsHeard) {
  EXPECT_FALSE(info_.heard);
  EXPECT_EQ(info_.driver, "null");
  EXPECT_FALSE(info_.why.empty());
  EXPECT_EQ(RenderMono(2), Frames({0, 0}));
}

TEST_F(NullSound, ASoundEndsByTheClock) {
  const SoundBufferPtr sound = Mono(Frames(441, 1));
  sound->Play(false);
  EXPECT_TRUE(sound->Playing());
  UseVirtualClock(kStart + 9);
  EXPECT_TRUE(sound->Playing());
  UseVirtualClock(kStart + 10);
  EXPECT_FALSE(sound->Playing());
}

TEST_F(NullSound, ItsFrequencyCounts) {
  const SoundBufferPtr sound = Mono(Frames(441, 1));
  sound->SetFrequency(22050);
  sound->Play(false);
  UseVirtualClock(kStart + 10);
  sound->SetFrequency(11025);  // half of it is left, 20 ms long
  UseVirtualClock(kStart + 29);
  EXPECT_TRUE(sound->Playing());
  UseVirtualClock(kStart + 30);
  EXPECT_FALSE(sound->Playing());
}

TEST_F(NullSound, StopKeepsThePlace) {
  const SoundBufferPtr sound = Mono(Frames(1323, 1));  // 30 ms
  sound->Play(false);
  UseVirtualClock(kStart + 10);
  sound->Stop();
  UseVirtualClock(kStart + 1000);
  sound->Play(false);
  UseVirtualClock(kStart + 1019);
  EXPECT_TRUE(sound->Playing());
  UseVirtualClock(kStart + 1020);
  EXPECT_FALSE(sound->Playing());
}

TEST_F(NullSound, TimeMovesOnByPartsOfAMillisecondToo) {
  const SoundBufferPtr sound = Mono(Frames(442, 1));  // 10.02 ms
  sound->Play(false);
  for (uint32_t ms = 1; ms <= 10; ++ms) {
    UseVirtualClock(kStart + ms);
    EXPECT_TRUE(sound->Playing()) << ms;
  }
  UseVirtualClock(kStart + 11);
  EXPECT_FALSE(sound->Playing());
}

TEST_F(NullSound, ALoopNeverEnds) {
  const SoundBufferPtr sound = Mono({1, 2, 3});
  sound->Play(true);
  UseVirtualClock(kStart + 0x40000000);
  EXPECT_TRUE(sound->Playing());
}

TEST_F(NullSound, AClockThatIsSetBackLetsNoTimePass) {
  const SoundBufferPtr sound = Mono(Frames(441, 1));
  sound->Play(false);
  UseVirtualClock(kStart - 5000);
  EXPECT_TRUE(sound->Playing());
  UseVirtualClock(kStart - 5000 + 10);
  EXPECT_FALSE(sound->Playing());
}

TEST_F(NullSound, LetGoBuffersAreFreedThoughNothingAsksForBlocks) {
  const std::vector<unsigned char> bytes(1 << 20);
  const int64_t before = MostKibHeld();
  for (int i = 0; i < 3000; ++i) {  // 3000 MiB in all
    const SoundBufferPtr sound = Create(Format(2, 16), bytes);
    sound->Play(false);
    UseVirtualClock(kStart + i);
  }
  EXPECT_LT(MostKibHeld() - before, 1024 * 1024);
}

// The system's library with drivers that need no sound card.
class SystemSound : public testing::Test {
 protected:
  static SoundDeviceInfo Open(const char* driver) {
    setenv("SDL_AUDIODRIVER", driver, 1);
    return OpenSoundDevice(SoundOutput::kDevice);
  }
  void TearDown() override {
    CloseSoundDevice();
    unsetenv("SDL_AUDIODRIVER");
  }
  // Waits in real time, since the device does.
  static bool EndsInTime(const SoundBufferPtr& sound) {
    for (int i = 0; i < 5000 && sound->Playing(); ++i)
      std::this_thread::sleep_for(std::chrono::milliseconds(2));
    return !sound->Playing();
  }
};

TEST_F(SystemSound, AMissingDriverGivesTheNullOutputAndTheReason) {
  const SoundDeviceInfo info = Open("nosuchdriver");
  EXPECT_FALSE(info.heard);
  EXPECT_EQ(info.driver, "null");
  EXPECT_FALSE(info.why.empty());
  EXPECT_EQ(CreateError(8, Format(2, 16)), kSoundOk);
}

TEST_F(SystemSound, TheDummyDriverAsksForShortBlocks) {
  const SoundDeviceInfo info = Open("dummy");
  EXPECT_FALSE(info.heard);
  EXPECT_EQ(info.driver, "dummy");
  EXPECT_FALSE(info.why.empty());
  EXPECT_EQ(info.rate, 44100);
  EXPECT_GT(info.blockFrames, 0);
  EXPECT_LE(info.blockFrames, 256);
  const SoundBufferPtr sound = Mono(Frames(4410, 1));
  sound->Play(false);
  EXPECT_TRUE(EndsInTime(sound));
  EXPECT_EQ(RenderMono(1), Frames({0}));
}

TEST_F(SystemSound, BlocksAreAsLongAsTheyAreAskedFor) {
  for (const int32_t block : {64, 2048}) {
    setenv("SDL_AUDIODRIVER", "dummy", 1);
    EXPECT_EQ(OpenSoundDevice(SoundOutput::kDevice, block).blockFrames, block);
  }
}

// Of this device, which waits for no loudspeaker, nothing but the gap is to be known.
TEST_F(SystemSound, ADrainedDeviceGetsABlockTooLate) {
  Open("dummy");
  const SoundBufferPtr sound = Mono(Frames(44100, 1));
  EXPECT_EQ(sound->BegunAt(), 0);
  const int64_t before = Microseconds();
  sound->SetCurrentPosition(0);
  sound->Play(false);
  for (int i = 0; i < 2500 && sound->BegunAt() == 0; ++i)
    std::this_thread::sleep_for(std::chrono::milliseconds(2));
  EXPECT_GE(sound->BegunAt(), before);
  EXPECT_LE(sound->BegunAt(), Microseconds());
  const int32_t late = LateSoundBlocks();
  DrainSoundDevice();
  for (int i = 0; i < 2500 && LateSoundBlocks() == late; ++i)
    std::this_thread::sleep_for(std::chrono::milliseconds(2));
  EXPECT_GT(LateSoundBlocks(), late);
  // A block of 256 frames lasts 5,804 microseconds.
  EXPECT_GE(SoundAheadMicroseconds(), 5804);
  CloseSoundDevice();
  EXPECT_EQ(LateSoundBlocks(), 0);
  EXPECT_EQ(SoundAheadMicroseconds(), 0);
}

TEST_F(SystemSound, TheDeviceGetsTheSamples) {
  const std::filesystem::path file =
      std::filesystem::temp_directory_path() / ("sound_device_test." + std::to_string(getpid()) + ".raw");
  setenv("SDL_DISKAUDIOFILE", file.c_str(), 1);
  ASSERT_EQ(Open("disk").driver, "disk");
  Frames played;
  for (int i = 0; i < 1000; ++i) played.push_back(static_cast<int16_t>(i % 2 == 0 ? 100 + i : -100 - i));
  const SoundBufferPtr sound = Stereo(played);
  sound->Play(false);
  EXPECT_TRUE(EndsInTime(sound));
  std::this_thread::sleep_for(
      std::chrono::milliseconds(50));  // the last block is still on its way to the file
  CloseSoundDevice();
  unsetenv("SDL_DISKAUDIOFILE");

  std::ifstream in(file, std::ios::binary);
  const std::string bytes((std::istreambuf_iterator<char>(in)), std::istreambuf_iterator<char>());
  std::filesystem::remove(file);
  Frames written(bytes.size() / 2);
  std::memcpy(written.data(), bytes.data(), 2 * written.size());
  const auto first = std::find_if(written.begin(), written.end(), [](int16_t sample) { return sample != 0; });
  ASSERT_GE(written.end() - first, 1000);
  EXPECT_EQ(Frames(first, first + 1000), played);
  EXPECT_TRUE(std::all_of(first + 1000, written.end(), [](int16_t sample) { return sample == 0; }));
}

// One thread renders without pause while another starts, stops, moves, creates and frees.
TEST_F(OfflineSound, TheGameAndTheDeviceNeverDisturbEachOther) {
  std::atomic<bool> ending = false;
  std::atomic<int> blocks = 0;
  std::thread device([&] {
    Frames block(128);
    while (!ending) {
      RenderSound(block);
      ++blocks;
    }
  });

  std::mt19937 random(7);
  const SoundBufferPtr shared = Stereo(Frames(2000, 3));
  std::vector<SoundBufferPtr> voices(64);
  for (int i = 0; i < 60000 || blocks < 500; ++i) {
    SoundBufferPtr& voice = voices[random() % voices.size()];
    if (voice == nullptr) {
      voice = random() % 2 == 0 ? DuplicateSoundBuffer(shared).buffer : Mono(Frames(1 + random() % 300, 2));
      continue;
    }
    switch (random() % 8) {
      case 0: voice->Stop(); break;
      case 1: voice->SetCurrentPosition(random() % 4); break;
      case 2: voice->SetFrequency(1 + static_cast<int32_t>(random() % 200000)); break;
      case 3: voice->SetVolume(-static_cast<int32_t>(random() % 10001)); break;
      case 4: voice.reset(); break;
      case 5: voice->Play(true); break;
      case 6: voice->Playing(); break;
      default: voice->Play(false);
    }
  }
  // Whatever went before, the last order holds.
  for (SoundBufferPtr& voice : voices) {
    if (voice == nullptr) voice = DuplicateSoundBuffer(shared).buffer;
    voice->SetVolume(0);
    voice->SetFrequency(44100);
    voice->SetCurrentPosition(0);
    voice->Play(true);
    EXPECT_TRUE(voice->Playing());
  }
  const int soFar = blocks;
  while (blocks < soFar + 2) std::this_thread::yield();
  for (const SoundBufferPtr& voice : voices) EXPECT_TRUE(voice->Playing());
  for (const SoundBufferPtr& voice : voices) voice->Stop();
  ending = true;
  device.join();
  EXPECT_EQ(RenderMono(2), Frames({0, 0}));

  for (const SoundBufferPtr& voice : voices) voice->SetCurrentPosition(0);
  for (const SoundBufferPtr& voice : voices) voice->Play(false);
  const int16_t sum = RenderMono(1)[0];
  EXPECT_GE(sum, 128);  // each of the 64 sounds with 2 or 3
  EXPECT_LE(sum, 192);
}

}  // namespace
}  // namespace platform
