// The sound device: when its buffers begin and end, what they share, and what it refuses, to the sample.
#include "platform/sound_device.h"

#include <atomic>
#include <random>
#include <thread>
#include <vector>

#include "tests/platform/sound_test.h"

namespace platform {
namespace {

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
