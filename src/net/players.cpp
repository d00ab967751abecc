// Joining and leaving of the players' table.
#include "net/players.h"

#include <algorithm>

#include "base/log.h"
#include "platform/session.h"

namespace qlm {
namespace {

auto KeyOf(int32_t id) { return std::ranges::find(network.NetUserKeys, id, &NetUserKey::id); }

Text NewestName() {
  const auto& players = platform::SessionPlayers();
  return players.empty() ? Text() : players.front().name;
}

void FollowOwnId() {
  const auto own = KeyOf(network.NetMyId);
  if (own != network.NetUserKeys.end()) network.NetMyIndex = own->index;
}

}  // namespace

void joinplayer(int32_t id, TextView name) {
  const int32_t index = network.NetUserCount;
  if (!network.NetUsers.Holds(index) || KeyOf(id) != network.NetUserKeys.end()) return;
  ++network.NetUserCount;
  NetUser& user = network.NetUsers[index] = {};
  user.name = name.empty() ? NewestName() : Text(name.substr(0, platform::kLongestPlayerName));
  user.id = id;
  DebugLog(Join(u"joinplayer : ", index, u",", id));
  network.NetUserKeys.push_back({id, index});
  FollowOwnId();
}

void leaveplayer(int32_t id) {
  const auto key = KeyOf(id);
  if (key == network.NetUserKeys.end()) return;
  const int32_t index = key->index;
  network.NetUserKeys.erase(key);
  DebugLog(Join(u"leaveplayer : ", index, u",", id));
  const auto gone = network.NetUsers.begin() + index;
  std::move(gone + 1, network.NetUsers.end(), gone);
  network.NetUsers[network.NetUsers.kLast] = {};
  --network.NetUserCount;
  for (NetUserKey& other : network.NetUserKeys) {
    if (other.index > index) --other.index;
  }
  FollowOwnId();
}

void ForgetPlayers() {
  network.NetUsers.Clear();
  network.NetUserKeys.clear();
  network.NetUserCount = network.NetMyIndex = 0;
}

void JoinMissingPlayers() {
  const auto& players = platform::SessionPlayers();
  for (auto player = players.rbegin(); player != players.rend(); ++player) {
    joinplayer(player->id, player->name);
  }
}

NetUser* FindNetUser(int32_t id) {
  const auto key = KeyOf(id);
  return key == network.NetUserKeys.end() ? nullptr : network.NetUsers.Find(key->index);
}

NetUser& OwnNetUser() { return network.NetUsers[network.NetMyIndex]; }

}  // namespace qlm
