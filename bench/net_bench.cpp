// What a battle costs: the poll of each twentieth of a second, the players on the screen, a message there and
// back between two games of this machine.
#include <benchmark/benchmark.h>
#include <signal.h>
#include <sys/wait.h>
#include <unistd.h>

#include <chrono>
#include <string>
#include <thread>

#include "base/log.h"
#include "bench/support/bench_game.h"
#include "graphics/display.h"
#include "net/messages.h"
#include "net/session.h"
#include "platform/clock.h"
#include "platform/session.h"
#include "platform/timers.h"
#include "play_screen/net_status.h"
#include "state/chart.h"
#include "state/lists.h"
#include "state/network.h"
#include "state/session.h"
#include "state/settings.h"
#include "state/surfaces.h"

namespace qlm {
namespace {

void PollWithoutMessages(benchmark::State& state) {
  const BenchGame game;
  NetPort = 0;
  if (!HostBattle()) return state.SkipWithError("no session can be opened");
  StartBattle();
  for (auto _ : state) NetPoll();
  LeaveBattle();
}
BENCHMARK(PollWithoutMessages);

void DrawFivePlayers(benchmark::State& state) {
  const BenchGame game;
  InitDD(DisplayOutput::kUnseen);
  CreateSurfaces();
  network.NetActive = true;
  network.NetUserCount = 5;
  for (NetUser& user : network.NetUsers) {
    user.name = u"Someone";
    user.songA = u"MARCH";
    user.songB = u"羽ペンの行進";
    user.songC = u"quillmarch";
    user.netSlot = 99;
    user.history.Fill(70);
  }
  GameState = kStatePlay;
  for (auto _ : state) DrawNetStatus();
  ReleaseDD();
}
BENCHMARK(DrawFivePlayers)->Unit(benchmark::kMicrosecond);

// One turn of a game at 60 frames a second, or of one that does nothing but poll.
void Turn(bool frames) {
  if (frames) {
    platform::RunDueTimers();
    platform::WaitForBeat(60);
  } else {
    NetPoll();
    std::this_thread::sleep_for(std::chrono::microseconds(50));
  }
}

void ShowTitle(const Text& title) {
  songList[0].title = title;
  SendCurSongData(false);
}

// Whether the player at that place shows the title.
bool Shows(int32_t index, const Text& title) { return network.NetUsers[index].songB == title; }

// Says back what the first player shows, until it is ended.
[[noreturn]] void Echo(const std::string& address, bool frames) {
  songList.resize(1);
  lastSong = 0;
  if (!JoinBattle(address)) _exit(1);
  while (network.awaitsInit) Turn(false);
  for (Text last;;) {
    Turn(frames);
    if (Shows(0, last)) continue;
    last = network.NetUsers[0].songB;
    ShowTitle(last);
  }
}

// A title shown to another game, which shows it too.
void ThereAndBack(benchmark::State& state) {
  const bool frames = state.range(0) != 0;
  const BenchGame game;
  platform::UseRealClock();
  NetPort = 0;
  // The other game comes from a process that has no thread yet.
  int port[2];
  if (pipe(port) != 0) return state.SkipWithError("no pipe");
  const pid_t other = fork();
  if (other == 0) {
    uint16_t number = 0;
    if (read(port[0], &number, sizeof number) != sizeof number) _exit(1);
    Echo("127.0.0.1:" + std::to_string(number), frames);
  }
  songList.resize(1);
  lastSong = 0;
  HostBattle();
  StartBattle();
  const uint16_t number = platform::SessionPort();
  if (write(port[1], &number, sizeof number) != sizeof number) state.SkipWithError("no pipe");
  while (network.NetUserCount < 2) {
    Turn(false);
    if (waitpid(other, nullptr, WNOHANG) == other) return state.SkipWithError("the other game cannot join");
  }
  int64_t message = 0;
  for (auto _ : state) {
    const Text title = ToText(++message);
    ShowTitle(title);
    while (!Shows(1, title)) Turn(frames);
  }
  LeaveBattle();
  kill(other, SIGKILL);
  waitpid(other, nullptr, 0);
  close(port[0]);
  close(port[1]);
}
BENCHMARK(ThereAndBack)->ArgName("frames")->Arg(0)->Arg(1)->UseRealTime()->Unit(benchmark::kMillisecond);

}  // namespace
}  // namespace qlm
