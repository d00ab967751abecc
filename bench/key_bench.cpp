// From a key to its sound: a key goes down at the X server, and the first block that sounds is noted. A play
// of the stock song runs in its window, at the screen's own pace; the keys come by chance, all over its
// frames.
//
// In the measured path: the server's event, the pump, the key's lane, its voice, the mix. Not in it: the
// keyboard's wire in front, and behind it the device, which plays a block while it asks for the next one. The
// blocks are asked for by a thread of this program, each at its time by the clock, as a device would.
//
//     xvfb-run -a build/release/key_bench [PRESSES] [BLOCK]
#include <algorithm>
#include <atomic>
#include <chrono>
#include <cstdio>
#include <cstdlib>
#include <memory>
#include <random>
#include <thread>
#include <vector>

#include "base/hooks.h"
#include "base/paths.h"
#include "bench/support/bench_game.h"
#include "chart/loading.h"
#include "graphics/display.h"
#include "input/input.h"
#include "platform/clock.h"
#include "platform/files.h"
#include "platform/sound_device.h"
#include "platform/window.h"
#include "play/input.h"
#include "play/position.h"
#include "play/reset.h"
#include "play/turn.h"
#include "state/chart.h"
#include "state/keys.h"
#include "state/options.h"
#include "state/session.h"
#include "state/settings.h"
#include "state/skin.h"
#include "state/sounds.h"
#include "state/surfaces.h"
#include "state/timeline.h"

// Behind the others, since its macros take names of theirs.
#include <X11/extensions/XTest.h>
#include <X11/keysym.h>

namespace qlm {
namespace {

using Clock = std::chrono::steady_clock;

constexpr int32_t kKeyZ = 44;

struct CloseDisplay {
  void operator()(Display* display) const { XCloseDisplay(display); }
};

// Asks for blocks as a device does, and tells when the first one sounded after a moment that is armed.
class Listener {
 public:
  explicit Listener(int32_t block) : thread_([this, block] { Run(block); }) {}
  ~Listener() {
    ends_ = true;
    thread_.join();
  }
  void Arm() { heard_ = 0; }
  // Microseconds(); 0 as long as all is silent.
  int64_t Heard() const { return heard_; }

 private:
  void Run(int32_t block) {
    std::vector<int16_t> samples(static_cast<size_t>(block) * 2);
    const Clock::time_point begin = Clock::now();
    for (int64_t blocks = 1; !ends_; ++blocks) {
      std::this_thread::sleep_until(
          begin + std::chrono::nanoseconds(blocks * block * 1'000'000'000 / platform::kSoundRate));
      const int64_t now = platform::Microseconds();
      platform::RenderSound(samples);
      const bool silent = std::all_of(samples.begin(), samples.end(), [](int16_t s) { return s == 0; });
      if (!silent && heard_ == 0) heard_ = now;
    }
  }

  std::atomic<bool> ends_ = false;
  std::atomic<int64_t> heard_ = 1;
  std::thread thread_;
};

// Every sound of the chart becomes one of a millisecond that begins with its first sample.
void ReplaceSoundsByClicks() {
  const platform::SoundFormat format{
      .tag = 1, .channels = 1, .samplesPerSec = platform::kSoundRate, .bitsPerSample = 16};
  const std::vector<unsigned char> click(88, 0x20);
  for (int32_t slot = 1; slot <= 255; ++slot) {
    WavBuffer[slot] =
        platform::CreateSoundBuffer({.bytes = static_cast<uint32_t>(click.size())}, format).buffer;
    WavBuffer[slot]->Write(0, click);
    WavLoaded[slot] = 255;
    WavFrequency[slot] = platform::kSoundRate;
  }
}

void BeginPlay() {
  FadeState = kFadeNone;
  PlayAlive = true;
  PlayFailed = PlayEnd = false;
  GameState = kStatePlay;
  SeekChart(0, true);
}

// Presses the key so many times at moments of chance, and gives the milliseconds to each one's sound.
std::vector<double> Press(Listener& listener, int presses) {
  const std::unique_ptr<Display, CloseDisplay> display(XOpenDisplay(nullptr));
  if (!display) return {};
  const KeyCode key = XKeysymToKeycode(display.get(), XK_z);
  const auto set = [&](bool down) {
    XTestFakeKeyEvent(display.get(), key, down ? True : False, CurrentTime);
    XFlush(display.get());
  };
  std::mt19937 chance(12);
  std::uniform_int_distribution<int> between(60'000, 140'000);
  std::vector<double> latencies;
  for (int press = 0; press < presses; ++press) {
    std::this_thread::sleep_for(std::chrono::microseconds(between(chance)));
    listener.Arm();
    const int64_t pressed = platform::Microseconds();
    set(true);
    for (int ms = 0; listener.Heard() == 0 && ms < 500; ++ms) {
      std::this_thread::sleep_for(std::chrono::milliseconds(1));
    }
    if (const int64_t heard = listener.Heard()) {
      latencies.push_back(static_cast<double>(heard - pressed) / 1000);
    }
    set(false);
  }
  return latencies;
}

void Tell(const char* name, std::vector<double> latencies, int presses, double framesPerSecond) {
  std::sort(latencies.begin(), latencies.end());
  if (latencies.empty()) {
    std::printf("%-14s heard none of %d keys\n", name, presses);
    return;
  }
  const auto at = [&](double part) {
    return latencies[static_cast<size_t>(part * static_cast<double>(latencies.size() - 1))];
  };
  std::printf("%-14s median %5.2f ms, a tenth below %5.2f, a tenth above %5.2f, longest %6.2f; ", name,
              at(0.5), at(0.1), at(0.9), latencies.back());
  std::printf("heard %zu of %d keys, %.1f frames a second\n", latencies.size(), presses, framesPerSecond);
}

// One play with the setting on or off.
void Measure(const char* name, bool atOnce, int presses, int32_t block) {
  KeysAtOnce = atOnce;
  BeginPlay();
  Listener listener(block);
  std::vector<double> latencies;
  std::atomic<bool> done = false;
  for (int frame = 0; frame < 60; ++frame) PlayStep();
  std::thread hand([&] {
    latencies = Press(listener, presses);
    done = true;
  });
  const int64_t frames = platform::WindowFrames();
  const int64_t begin = platform::Microseconds();
  while (!done) {
    if (objCursor >= objCount) BeginPlay();
    PlayStep();
  }
  hand.join();
  const double seconds = static_cast<double>(platform::Microseconds() - begin) / 1e6;
  Tell(name, latencies, presses, static_cast<double>(platform::WindowFrames() - frames) / seconds);
}

int Run(int presses, int32_t block) {
  const BenchGame game;
  platform::UseRealClock();
  AppPath = platform::InnerPath(QLM_BINARY_DIR);
  SkinMapPath[0] = DataPath(u"default.brd");
  Windowed = DirectBlt = true;
  InitDD();
  CreateSurfaces();
  platform::OpenSoundDevice(platform::SoundOutput::kOffline);
  HiSpeed = RealHiSpeed = 1;
  ShowBGA = UserPlay = true;
  KeyMap[kKeyZ] = 11;
  hooks.keyDown = ProcessKey_Play;
  hooks.keyUp = [](int32_t key) { ReleaseLane(LaneChannel(key)); };
  if (!platform::WindowOpen() || BMSLoad(Join(AppPath, u"\\songs\\march\\march7.bme")) < 1) {
    std::fprintf(stderr, "key_bench: no display, or no stock song\n");
    return 1;
  }
  ReplaceSoundsByClicks();
  ResetPlay();
  std::printf("%d keys each, blocks of %d frames (%.1f ms), a screen of %d frames a second\n", presses, block,
              block * 1000.0 / platform::kSoundRate, platform::RefreshRate());
  Measure("once a turn", false, presses, block);
  Measure("keys at once", true, presses, block);
  ReleaseDD();
  platform::CloseSoundDevice();
  return 0;
}

}  // namespace
}  // namespace qlm

int main(int count, char** words) {
  // What is no number counts as 0, and so as the least.
  const auto number = [&](int word, int fallback) {
    return count > word ? static_cast<int>(std::strtol(words[word], nullptr, 10)) : fallback;
  };
  return qlm::Run(std::clamp(number(1, 300), 1, 100'000), std::clamp(number(2, 128), 16, 4096));
}
