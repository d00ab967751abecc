// The outputs of the sound device that need no sound card: the null output, which goes by the clock, and some
// of the system's drivers.
#include <sys/resource.h>
#include <unistd.h>

#include <algorithm>
#include <chrono>
#include <cstdlib>
#include <cstring>
#include <filesystem>
#include <string>
#include <thread>
#include <vector>

#include "platform/clock.h"
#include "tests/platform/sound_test.h"
#include "tests/support/whole_file.h"

namespace platform {
namespace {

// The most memory that the program has held since its start.
int64_t MostKibHeld() {
  rusage usage{};
  getrusage(RUSAGE_SELF, &usage);
  return usage.ru_maxrss;
}

// 441 frames last 10 ms.
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
  CloseSoundDevice();
  unsetenv("SDL_DISKAUDIOFILE");

  const std::string bytes = qlm::WholeFile(file);
  std::filesystem::remove(file);
  Frames written(bytes.size() / 2);
  std::memcpy(written.data(), bytes.data(), 2 * written.size());
  const auto first = std::find_if(written.begin(), written.end(), [](int16_t sample) { return sample != 0; });
  ASSERT_GE(written.end() - first, 1000);
  EXPECT_EQ(Frames(first, first + 1000), played);
  EXPECT_TRUE(std::all_of(first + 1000, written.end(), [](int16_t sample) { return sample == 0; }));
}

}  // namespace
}  // namespace platform
