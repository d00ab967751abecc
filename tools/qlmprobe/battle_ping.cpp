// One question after the other, as the search for sessions asks them.
#include "tools/qlmprobe/battle_ping.h"

#include <algorithm>
#include <cstdio>
#include <vector>

#include "platform/clock.h"
#include "platform/session_search.h"
#include "platform/text.h"
#include "state/settings.h"
#include "tools/qlmprobe/engine.h"

namespace probe {

int PingBattle(const std::string& address) {
  constexpr int kQuestions = 10;
  constexpr int kMostMilliseconds = 500;
  std::vector<double> times;
  platform::FoundSession session;
  for (int i = 0; i < kQuestions; ++i) {
    const auto ping = platform::PingSession(address, static_cast<uint16_t>(qlm::NetPort), kMostMilliseconds);
    if (!ping) continue;
    times.push_back(ping->milliseconds);
    session = ping->session;
  }
  Json json;
  json.Put("asked", kQuestions);
  json.Put("answered", static_cast<int64_t>(times.size()));
  if (times.empty()) {
    std::fprintf(stderr,
                 "qlmprobe: %s: no answer. Is a battle open there, with room for one more? Do both machines' "
                 "firewalls let UDP through to this port?\n",
                 address.c_str());
    return Print(json, kRefused);
  }
  std::sort(times.begin(), times.end());
  json.Put("address", session.address);
  json.Put("host", platform::EncodeUtf8(session.name));
  json.Put("players", session.players);
  json.Put("leastMs", times.front());
  json.Put("middleMs", times[times.size() / 2]);
  json.Put("mostMs", times.back());
  return Print(json, kDone);
}

}  // namespace probe
