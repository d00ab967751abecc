// Any news and messages of a battle's session: the players' table stays whole, and can be drawn.
#include <cmath>
#include <cstddef>
#include <cstdint>
#include <cstdlib>
#include <memory>
#include <string_view>

#include "base/cursor.h"
#include "base/log.h"
#include "net/messages.h"
#include "net/session.h"
#include "play_screen/net_status.h"
#include "state/network.h"
#include "state/reset.h"
#include "state/session.h"
#include "state/surfaces.h"
#include "tests/net/scripted_session.h"

namespace qlm {
namespace {

constexpr int32_t kFirstId = 0x10001;

// A step of the input: what happens, to whom, and of a message its length and bytes.
void Take(Cursor& input) {
  const uint8_t what = input.U8();
  const int32_t player = kFirstId + input.U8() % 7;
  switch (what % 10) {
    case 0: session.waiting.push_back({0, platform::SessionEvent::kPlayerCreated, player, {}}); break;
    case 1: session.waiting.push_back({0, platform::SessionEvent::kPlayerDestroyed, player, {}}); break;
    case 2: session.waiting.push_back({0, platform::SessionEvent::kHostMovedHere, 0, {}}); break;
    case 3: GameState = player % 13; break;
    case 4: SendCurSongData(what >= 128); break;
    case 5: SendStandby(); break;
    case 6: SendEnd(); break;
    default: {
      const std::string_view body = input.Bytes(input.U8());
      session.waiting.push_back({player, platform::SessionEvent::kNone, 0, std::string(body)});
    }
  }
  NetPoll();
  network.step = BattleStep::kNone;
}

void CheckTable() {
  const auto count = static_cast<size_t>(network.NetUserCount);
  if (network.NetUserCount < 0 || count > 5 || network.NetUserKeys.size() != count) std::abort();
  if (!network.NetUsers.Holds(network.NetMyIndex)) std::abort();
  for (const NetUserKey& key : network.NetUserKeys) {
    if (key.index < 0 || key.index >= network.NetUserCount) std::abort();
    const NetUser& user = network.NetUsers[key.index];
    if (user.id != key.id || user.name.size() > platform::kLongestPlayerName) std::abort();
    if (!std::isfinite(user.jpts) || !std::isfinite(user.score)) std::abort();
  }
}

}  // namespace
}  // namespace qlm

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size) {
  using namespace qlm;
  ResetState();
  logOutput.file = false;
  session = {};
  Cursor input(std::string_view(reinterpret_cast<const char*>(data), size));
  if (input.U8() % 2 == 0) {
    HostBattle();
    StartBattle();
  } else {
    JoinBattle("there");
  }
  while (input.Left() > 0) {
    Take(input);
    CheckTable();
  }
  static const platform::SurfacePtr screen = std::make_shared<platform::Surface>(640, 480);
  DDBack = screen;
  GameState = kStateResults;
  DrawNetStatus();
  LeaveBattle();
  return 0;
}
