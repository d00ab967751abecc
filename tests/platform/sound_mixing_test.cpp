// What the sound device makes of volumes, of several voices at once, and of other rates than its own, to the
// sample.
#include <algorithm>
#include <cmath>
#include <random>
#include <vector>

#include "tests/platform/sound_test.h"

namespace platform {
namespace {

class SoundMixing : public OfflineSound {};

// -600 is 10^-0.3 = 0.501187...; -2000 is a tenth.
TEST_F(SoundMixing, VolumeIsInHundredthsOfADecibel) {
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

TEST_F(SoundMixing, TheLowestVolumeIsSilenceAndTimePassesInIt) {
  const SoundBufferPtr sound = Mono({32767, 32767, 32767, 4});
  EXPECT_EQ(sound->SetVolume(-10000), kSoundOk);
  sound->Play(false);
  EXPECT_EQ(RenderMono(3), Frames({0, 0, 0}));
  sound->SetVolume(0);
  EXPECT_EQ(RenderMono(2), Frames({4, 0}));
}

TEST_F(SoundMixing, AVolumeOutsideTheRangeIsRefusedAndChangesNothing) {
  const SoundBufferPtr sound = Mono({1000, 1000, 1000});
  sound->SetVolume(-2000);
  EXPECT_EQ(sound->SetVolume(50), kSoundInvalidParam);
  EXPECT_EQ(sound->SetVolume(1), kSoundInvalidParam);
  EXPECT_EQ(sound->SetVolume(-10001), kSoundInvalidParam);
  sound->Play(false);
  EXPECT_EQ(RenderMono(1), Frames({100}));
}

TEST_F(SoundMixing, AVolumeSetWhilePlayingHoldsFromTheNextBlock) {
  const SoundBufferPtr sound = Mono({1000, 1000, 1000});
  sound->Play(false);
  EXPECT_EQ(RenderMono(1), Frames({1000}));
  sound->SetVolume(-2000);
  EXPECT_EQ(RenderMono(1), Frames({100}));
}

TEST_F(SoundMixing, VoicesAddUpAndTheSumIsClipped) {
  const SoundBufferPtr first = Stereo({30000, -30000, 100, -1, 20000, -20000});
  const SoundBufferPtr second = Stereo({30000, -30000, 50, -2, 12767, -12768});
  first->Play(false);
  second->Play(false);
  EXPECT_EQ(Render(3), Frames({32767, -32768, 150, -3, 32767, -32768}));
}

// The sum may pass the limit on its way: 30000 + 30000 - 30000.
TEST_F(SoundMixing, OnlyTheFinishedSumIsClipped) {
  const SoundBufferPtr first = Mono({30000});
  const SoundBufferPtr second = Mono({30000});
  const SoundBufferPtr third = Mono({-30000});
  for (const SoundBufferPtr& sound : {first, second, third}) sound->Play(false);
  EXPECT_EQ(RenderMono(1), Frames({30000}));
}

// Half way between two samples stands (-x0 + 9 x1 + 9 x2 - x3) / 16, with silence around the sound:
// (9*1600 + 9*3200 + 1600) / 16 = 2800, (-1600 + 9*3200 - 9*1600) / 16 = 800,
// (-3200 - 9*1600) / 16 = -1100, 1600 / 16 = 100.
TEST_F(SoundMixing, ASoundAtHalfTheRateIsInterpolated) {
  const SoundBufferPtr sound = Mono({1600, 3200, -1600, 0}, 22050);
  EXPECT_EQ(sound->Frequency(), 22050);
  sound->Play(false);
  EXPECT_EQ(RenderMono(10), Frames({1600, 2800, 3200, 800, -1600, -1100, 0, 100, 0, 0}));
  EXPECT_FALSE(sound->Playing());
}

TEST_F(SoundMixing, BothSidesAreInterpolatedApart) {
  const SoundBufferPtr sound = Stereo({1600, 0, 3200, 160, -1600, 160, 0, 0}, 22050);
  sound->Play(false);
  // Right: (9*160 - 160) / 16 = 80 before it, (9*160 + 9*160) / 16 = 180 in the middle.
  EXPECT_EQ(Render(4), Frames({1600, 0, 2800, 80, 3200, 160, 800, 180}));
}

// At the seam of a loop the neighbours are those across it: x = 0 160 320 160, and around again.
// Between 160 and 0: (-320 + 9*160 + 0 - 160) / 16 = 60. Between 0 and 160: (-160 + 0 + 9*160 - 320) / 16
// = 60.
TEST_F(SoundMixing, ALoopIsInterpolatedAcrossItsSeam) {
  const SoundBufferPtr sound = Mono({0, 160, 320, 160}, 22050);
  sound->Play(true);
  // Between 160 and 320: (0 + 9*160 + 9*320 - 160) / 16 = 260.
  EXPECT_EQ(RenderMono(10), Frames({0, 60, 160, 260, 320, 260, 160, 60, 0, 60}));
}

// 9 * 8 / 16 = 4.5, 9 * 24 / 16 = 13.5.
TEST_F(SoundMixing, HalvesRoundToEven) {
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
TEST_F(SoundMixing, AStraightLineStaysOneAtAnyRatio) {
  Frames line;
  for (int i = 0; i < 400; ++i) line.push_back(static_cast<int16_t>(80 * i - 16000));
  const SoundBufferPtr sound = Mono(line);
  EXPECT_EQ(sound->SetFrequency(33075), kSoundOk);
  sound->Play(false);
  const Frames out = RenderMono(500);
  for (int i = 2; i < 500; ++i) ASSERT_EQ(out[i], 60 * i - 16000) << i;
}

TEST_F(SoundMixing, TwiceTheFrequencyTakesEverySecondSample) {
  const SoundBufferPtr sound = Mono({1, 20, 3, 40, 5, 60, 7});
  sound->SetFrequency(88200);
  sound->Play(false);
  EXPECT_EQ(RenderMono(5), Frames({1, 3, 5, 7, 0}));
}

TEST_F(SoundMixing, AFrequencySetWhilePlayingHoldsFromTheNextBlock) {
  const SoundBufferPtr sound = Mono({0, 16, 32, 48, 64, 80, 96, 112, 128});
  sound->Play(false);
  EXPECT_EQ(RenderMono(2), Frames({0, 16}));
  sound->SetFrequency(22050);
  EXPECT_EQ(RenderMono(3), Frames({32, 40, 48}));
  sound->SetFrequency(88200);  // goes on from 56
  EXPECT_EQ(RenderMono(2), Frames({56, 88}));
}

TEST_F(SoundMixing, FrequenciesGoFromOneTo200000) {
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

TEST_F(SoundMixing, AtOneHertzASampleLastsASecond) {
  const SoundBufferPtr sound = Mono({1000, 1000});
  sound->SetFrequency(1);
  sound->Play(false);
  EXPECT_EQ(RenderMono(44100).front(), 1000);
  EXPECT_TRUE(sound->Playing());
  Render(44101);
  EXPECT_FALSE(sound->Playing());
}

TEST_F(SoundMixing, AtTheHighestFrequencyASoundEndsOnTime) {
  const SoundBufferPtr sound = Mono(Frames(200000, 77));
  sound->SetFrequency(200000);
  sound->Play(false);
  const Frames out = RenderMono(44100);
  EXPECT_EQ(out[44000], 77);
  EXPECT_TRUE(sound->Playing() || out.back() == 77);
  Render(1);
  EXPECT_FALSE(sound->Playing());
}

TEST_F(SoundMixing, HowAStretchIsCutIntoBlocksMakesNoDifference) {
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

TEST_F(SoundMixing, AnOddSampleAtTheEndOfABlockIsSilent) {
  const SoundBufferPtr sound = Stereo({1, 2, 3, 4});
  sound->Play(false);
  Frames out(3, 99);
  RenderSound(out);
  EXPECT_EQ(out, Frames({1, 2, 0}));
}

}  // namespace
}  // namespace platform
