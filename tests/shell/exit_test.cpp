// The ends of the program, each in a process of its own: what it saves and gives back, and in which order.
#include "shell/exit.h"

#include <sys/inotify.h>
#include <unistd.h>

#include <array>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <vector>

#include "base/log.h"
#include "base/paths.h"
#include "files/key_table.h"
#include "platform/sound_device.h"
#include "platform/timers.h"
#include "state/keys.h"
#include "state/last_play.h"
#include "state/options.h"
#include "state/settings.h"
#include "state/sounds.h"
#include "state/surfaces.h"
#include "tests/support/game_test.h"

namespace qlm {
namespace {

constexpr std::array<int, 4> kTimers = {platform::kTimerPlay, platform::kTimerPreview,
                                        platform::kTimerNetwork99, platform::kTimerNetwork};

// On standard error: what is given back, behind which line of the log, and what still stands then.
void TellRelease(const char* what) {
  int running = 0;
  for (const int timer : kTimers) running += platform::TimerArmed(timer) ? 1 : 0;
  std::fprintf(stderr, "%s go behind <%s>: %d timers, %d controllers\n", what,
               Utf8(logOutput.lines->back()).c_str(), running, int{JoyCount});
}

// A running game, as far as an end has something to give back.
void RunGame() {
  setenv("SDL_VIDEODRIVER", "dummy", 1);
  for (const int timer : kTimers) platform::SetTimer(timer, 1000, [] {});
  DDPrimary = SurfacePtr(new Surface(1, 1), [](Surface* surface) {
    TellRelease("surfaces");
    delete surface;
  });
  platform::OpenSoundDevice(platform::SoundOutput::kOffline);
  const platform::SoundFormat format{.tag = 1, .channels = 1, .samplesPerSec = 44100, .bitsPerSample = 16};
  const SoundBufferPtr sound = platform::CreateSoundBuffer({.flags = 0, .bytes = 2}, format).buffer;
  SystemSound[0] = SoundBufferPtr(sound.get(), [sound](platform::SoundBuffer*) { TellRelease("sounds"); });
  JoyCount = 3;
  std::atexit([] { std::fprintf(stderr, "at the end: %d controllers\n", int{JoyCount}); });
  DebugLog(u"running");
}

// Names of files of one folder in the order in which they are written, or put in their place.
class Writes {
 public:
  explicit Writes(const std::string& folder) : queue_(inotify_init1(IN_NONBLOCK)) {
    EXPECT_GE(inotify_add_watch(queue_, folder.c_str(), IN_MODIFY | IN_MOVED_TO), 0);
  }
  ~Writes() { close(queue_); }
  Writes(const Writes&) = delete;
  Writes& operator=(const Writes&) = delete;

  // So far; a file that is written several times in a row counts once. Without the temporary files.
  std::string Names() const {
    alignas(inotify_event) std::array<char, 65536> bytes{};
    const ssize_t read = ::read(queue_, bytes.data(), bytes.size());
    std::string names;
    std::string last;
    for (ssize_t at = 0; at < read;) {
      inotify_event event{};
      std::memcpy(&event, bytes.data() + at, sizeof event);
      const std::string name = bytes.data() + at + sizeof event;
      at += static_cast<ssize_t>(sizeof event + event.len);
      const bool kept = name == "debug.txt" || name == "qlm_keycnf.dat" || name == "qlm_conf.ini";
      if (kept && name != last) names += name + " ";
      if (kept) last = name;
    }
    return names;
  }

 private:
  int queue_;
};

class ExitTest : public GameTest {
 protected:
  // The log of the process that has ended, without its times.
  std::vector<std::string> LogLines() const {
    std::vector<std::string> lines;
    for (const Text& line : Split(AsText(ReadBytes(DataPath(u"debug.txt"))), kCrLf)) {
      if (line.size() > 10) lines.push_back(Utf8(line.substr(10)));
    }
    return lines;
  }
  static Text AsText(const std::string& bytes) { return {bytes.begin(), bytes.end()}; }

  const std::vector<std::string> kEndLines = {"running", "[ExitApp]", "saving settings...", "Kill timers...",
                                              "complete."};
};

TEST_F(ExitTest, TimersEndAndThenSurfacesSoundsAndControllersAreGivenBack) {
  EXPECT_EXIT(
      {
        RunGame();
        ExitApp(7);
      },
      testing::ExitedWithCode(7),
      "^surfaces go behind <complete\\.>: 0 timers, 3 controllers\n"
      "sounds go behind <complete\\.>: 0 timers, 3 controllers\n"
      "at the end: 0 controllers\n$");
  EXPECT_EQ(LogLines(), kEndLines);
}

TEST_F(ExitTest, KeysAreSavedAndThenTheSettings) {
  KeyMap[30] = 11;
  HiSpeed = 2.5F;
  const Writes writes(SystemFolder() + "/_qlmfiles");
  EXPECT_EXIT(ExitApp(), testing::ExitedWithCode(0), "");
  // The log is written before, and again behind.
  EXPECT_EQ(writes.Names(), "debug.txt qlm_keycnf.dat qlm_conf.ini debug.txt ");
  EXPECT_EQ(ReadBytes(DataPath(u"qlm_keycnf.dat")), KeyTableBytes());
  EXPECT_NE(ReadBytes(DataPath(u"qlm_conf.ini")).find("HiSpeed=2.5\r\n"), std::string::npos);
}

TEST_F(ExitTest, TheLateBlocksOfThePlayAreKept) {
  EXPECT_EXIT(
      {
        lateBlocks = 3;
        ExitApp();
      },
      testing::ExitedWithCode(0), "");
  EXPECT_EQ(ReadBytes(DataPath(u"late_blocks.txt")), "3");
}

TEST_F(ExitTest, ASettingOfThisRunAloneIsNotSaved) {
  EXPECT_EXIT(
      {
        Windowed = false;
        DirectBlt = true;
        UseThisRun(Windowed, true);
        UseThisRun(DirectBlt, true);
        if (!Windowed || !DirectBlt) std::_Exit(9);
        ExitApp();
      },
      testing::ExitedWithCode(0), "");
  const std::string saved = ReadBytes(DataPath(u"qlm_conf.ini"));
  EXPECT_NE(saved.find("Windowed=False\r\n"), std::string::npos);
  EXPECT_NE(saved.find("DirectBlt=True\r\n"), std::string::npos);
}

TEST_F(ExitTest, WhatThePlayerChangesBackStays) {
  EXPECT_EXIT(
      {
        DEMOMode = false;
        UseThisRun(DEMOMode, true);
        DEMOMode = false;
        ExitApp();
      },
      testing::ExitedWithCode(0), "");
  EXPECT_NE(ReadBytes(DataPath(u"qlm_conf.ini")).find("DEMOMode=False\r\n"), std::string::npos);
}

TEST_F(ExitTest, AFatalErrorGivesBackSurfacesAndSoundsTellsAndEnds) {
  EXPECT_EXIT(
      {
        RunGame();
        EndOnFatalError(u"oops", u"it broke");
      },
      testing::ExitedWithCode(1),
      "^surfaces go behind <running>: 4 timers, 3 controllers\n"
      "sounds go behind <running>: 4 timers, 3 controllers\n"
      "oops: it broke\n\nI'm sorry, I can't continue, but this error is fatal\\.\n"
      "at the end: 0 controllers\n$");
  EXPECT_EQ(LogLines(), kEndLines);
}

}  // namespace
}  // namespace qlm
