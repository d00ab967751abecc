// Opening and joining of a session before the game starts.
#include "shell/meeting.h"

#include <cstdio>

#include "graphics/present.h"
#include "net/session.h"
#include "platform/clock.h"
#include "platform/session.h"
#include "state/network.h"
#include "state/settings.h"

namespace qlm {
namespace {

bool Open() {
  if (HostBattle()) {
    std::fprintf(stderr, "quillmarch: a battle is open at port %d\n", int{platform::SessionPort()});
    return true;
  }
  std::fprintf(stderr, "quillmarch: no battle can be opened at port %d; is it taken?\n", int{NetPort});
  return false;
}

bool Join(const std::string& address) {
  std::fprintf(stderr, "quillmarch: connecting to %s ...\n", address.c_str());
  if (JoinBattle(address)) return true;
  std::fprintf(stderr, "quillmarch: no battle at %s lets this program in\n", address.c_str());
  return false;
}

// The host's game may be busy with a load.
void AwaitInit() {
  constexpr uint32_t kRestMs = 10;
  while (network.awaitsInit) {
    DoEvents();
    platform::SleepFor(kRestMs);
  }
}

}  // namespace

bool MeetOthers(const Launch& launch) {
  if (!launch.host && launch.connect.empty()) return true;
  if (!(launch.host ? Open() : Join(launch.connect))) return false;
  AwaitInit();
  if (StartBattle()) return true;
  std::fputs("quillmarch: nobody is there any more; the game goes on alone\n", stderr);
  return true;
}

}  // namespace qlm
