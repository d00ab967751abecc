// Counting of the players at each gate.
#include "net/gates.h"

#include <algorithm>
#include <span>

#include "base/log.h"
#include "net/fields.h"
#include "net/players.h"
#include "platform/session.h"
#include "state/network.h"
#include "state/session.h"

namespace qlm {
namespace {

std::span<NetUser> Players() {
  return std::span(network.NetUsers.begin(), static_cast<size_t>(network.NetUserCount));
}

void LogCount(TextView check, bool NetUser::*passed) {
  const auto count = static_cast<int32_t>(std::ranges::count(Players(), true, passed));
  DebugLog(Join(check, u": ", count, u"/", network.NetUserCount));
}

bool AllInSong(bool NetUser::*passed) {
  return std::ranges::all_of(Players(), [&](const NetUser& user) { return user.*passed || !user.inSong; });
}

void SendCommand(MessageType type, TextView name) {
  platform::SendToSession(0, MessageWriter(type).Take());
  DebugLog(Join(u"Send [", name, u"] Command"));
}

}  // namespace

void NetChkDecideSong() {
  if (!network.NetHost) return;
  LogCount(u"NetChkDecideSong", &NetUser::detected);
  // A newcomer may decide while the others still play.
  if (OwnNetUser().inSong || !std::ranges::all_of(Players(), &NetUser::detected)) return;
  SendCommand(MessageType::kSongReady, u"SONG READY");
  BeginSong();
  GameState = kStateBattleStart;
  network.step = BattleStep::kLoad;
}

void NetChkStartSong() {
  if (!network.NetHost) return;
  LogCount(u"NetChkStartSong", &NetUser::standby);
  if (GameState != kStateBattleStart || !OwnNetUser().standby || !AllInSong(&NetUser::standby)) return;
  SendCommand(MessageType::kSongStart, u"SONGSTART");
  GameState = kStatePlay;
  network.NetPlaying = true;
  network.step = BattleStep::kStart;
}

void NetEndSong() {
  if (!network.NetHost) return;
  LogCount(u"NetEndSong", &NetUser::ended);
  if (!OwnNetUser().ended || !AllInSong(&NetUser::ended)) return;
  SendCommand(MessageType::kAllEnd, u"ALL-END");
  FinishSong();
}

void CheckGateOnLeave() {
  switch (GameState) {
    case kStateSongSelect:
    case kStateBattleSongs: NetChkDecideSong(); break;
    case kStateBattleStart: NetChkStartSong(); break;
    case kStatePlay:
    case kStatePlayOver:
    case kStateResults: NetEndSong(); break;
    default: break;
  }
}

void BeginSong() {
  for (NetUser& user : Players()) user.inSong = user.detected;
}

void FinishSong() {
  network.NetPlaying = false;
  for (NetUser& user : Players()) {
    if (user.inSong) user.detected = user.standby = user.ended = user.inSong = false;
  }
}

}  // namespace qlm
