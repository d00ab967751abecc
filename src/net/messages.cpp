// The messages of a battle, field by field, in both directions.
#include "net/messages.h"

#include <algorithm>
#include <cmath>
#include <cstddef>
#include <string>

#include "base/log.h"
#include "base/numbers.h"
#include "base/rnd.h"
#include "net/fields.h"
#include "net/gates.h"
#include "net/players.h"
#include "platform/clock.h"
#include "platform/session.h"
#include "state/chart.h"
#include "state/gauge.h"
#include "state/lists.h"
#include "state/message.h"
#include "state/network.h"
#include "state/session.h"
#include "state/timeline.h"

namespace qlm {
namespace {

constexpr uint8_t kLastSlot = 100;  // the song is over

void SendToAll(MessageWriter& message) { platform::SendToSession(0, message.Take()); }

// The row in hand, as far as the others see it.
void TakeHeldSong(NetUser& own) {
  const bool held = listCursor >= 0 && listCursor <= lastSong;
  const SongEntry row = held ? songList[static_cast<size_t>(listCursor)] : SongEntry();
  own.songA = row.genre;
  own.songB = row.title;
  own.songC = row.artist;
  own.level = RoundTo<uint8_t>(row.playLevel).value_or(0);
  own.songValue = row.numWav;
  own.notes = RoundTo<int16_t>(TotalNotes[0]).value_or(0);
}

MessageWriter SongMessage(MessageType type, const NetUser& user) {
  MessageWriter message(type);
  message.String(user.songA).String(user.songB).String(user.songC);
  message.Byte(user.level).Long(user.songValue).Short(user.notes);
  return message;
}

// The digits of a number as it is drawn; a number too long for its table loses its last ones.
template <size_t Count>
void SplitDigits(std::array<uint8_t, Count>& digits, float value) {
  const std::optional<int32_t> whole = Round(value);
  if (!whole) return;
  const bool negative = *whole < 0;
  const Text text =
      Join(negative ? u"-" : u"", Padded(std::abs(int64_t{*whole}), negative ? Count - 1 : Count));
  for (size_t i = 0; i < Count; ++i) digits[i] = text[i] == u'-' ? 10 : static_cast<uint8_t>(text[i] - u'0');
}

void SplitFigures(NetUser& user) {
  SplitDigits(user.gaugeDigits, user.gauge);
  SplitDigits(user.jptsDigits, user.jpts);
}

// Gauge, accuracy, score and counts of the own play. False when its slot is past what a byte holds: the play
// was paused for that long.
bool SendFigures(int32_t slot, uint8_t gauge) {
  const std::optional<uint8_t> place = RoundTo<uint8_t>(slot);
  if (!place) return false;
  OwnNetUser().netSlot = *place;
  MessageWriter message(MessageType::kGauge);
  message.Byte(*place).Byte(gauge).Single(JPts[0]).Single(static_cast<float>(Score[0])).Short(0);
  for (const int32_t count : JudgeCount[0]) message.Short(RoundTo<int16_t>(count).value_or(INT16_MAX));
  SendToAll(message);
  return true;
}

void WriteUser(MessageWriter& message, int32_t id, TextView name) { message.Long(id).String(name); }

// Loading, or loaded and waiting for the others.
bool AwaitsStart() { return OwnNetUser().inSong && (LoadRunning || GameState == kStateBattleStart); }

bool StillInSession(int32_t id) {
  const auto& players = platform::SessionPlayers();
  return !platform::SessionIsOpen() || std::ranges::count(players, id, &platform::SessionPlayer::id) > 0;
}

// From the host alone. Its list may be older than what the session has told since.
void ReceiveInit(int32_t from, MessageReader& message) {
  if (!network.awaitsInit || from != network.awaitedHost) return;
  uint8_t users = 0;
  message.Byte(users);
  DebugLog(Join(u"Receive: [Init] users:", int32_t{users}));
  ForgetPlayers();
  for (int32_t user = 0; user < users; ++user) {
    int32_t id = 0;
    Text name;
    message.Long(id);
    message.String(name);
    if (id != 0 && StillInSession(id)) joinplayer(id, name);
  }
  JoinMissingPlayers();
  message.Long(GameState);
  network.awaitsInit = false;
}

void TakeSong(NetUser& user, MessageReader& message) {
  message.String(user.songA);
  message.String(user.songB);
  message.String(user.songC);
  message.Byte(user.level);
  message.Long(user.songValue);
  message.Short(user.notes);
}

// Who decides is through with the song before.
void ReceiveDecision(NetUser& user, int32_t index, MessageReader& message) {
  TakeSong(user, message);
  DebugLog(Join(u"Receive [USERDETECTSONG] Command from ", index));
  DebugLog(Join(u"[", user.songA, u"] ", user.songB, u" / ", user.songC));
  // The own row is only ever sent back to a newcomer, and tells nothing of what it decided.
  if (user.id == network.NetMyId) return;
  user.detected = true;
  user.standby = user.ended = user.inSong = false;
  NetChkDecideSong();
}

void ReceiveReady() {
  DebugLog(u"Receive [READY] Command");
  const NetUser& own = OwnNetUser();
  if (!own.detected || own.inSong) return;
  BeginSong();
  network.NetPlaying = true;
  network.step = BattleStep::kLoad;
}

void ReceiveStandby(NetUser& user, int32_t index) {
  DebugLog(Join(u"Receive [STANDBY] Command from ", index));
  user.standby = user.inSong = true;
  if (AwaitsStart()) GameState = kStateBattleStart;
  NetChkStartSong();
}

void ReceiveStart() {
  DebugLog(u"Receive [STARTSONG] Command");
  if (!AwaitsStart()) return;
  network.NetPlaying = true;
  GameState = kStatePlay;
  network.step = BattleStep::kStart;
}

void ReceiveEnd(NetUser& user, int32_t index) {
  DebugLog(Join(u"Receive [END] Command from ", index));
  user.ended = true;
  NetEndSong();
}

void ReceiveAllEnd() {
  DebugLog(u"Receive [ALL-END] Command");
  FinishSong();
}

void ReceiveGauge(NetUser& user, int32_t index, MessageReader& message) {
  uint8_t gauge = 0;
  int16_t unused = 0;
  message.Byte(user.netSlot);
  message.Byte(gauge);
  message.Single(user.jpts);
  message.Single(user.score);
  message.Short(unused);
  for (int16_t& count : user.counts) message.Short(count);
  user.gauge = gauge;
  user.history.Put(user.netSlot, gauge);
  SplitFigures(user);
  DebugLog(Join(u"NETusr[", index, u"] : ", Padded(gauge, 3), u"% , jpts:", user.jpts));
}

// A running effect gives way to the new one.
void ReceiveAttack(MessageReader& message) {
  uint8_t kind = 0;
  message.Byte(kind);
  DebugLog(u"Receive [Attack] Command");
  AttackKind = kind;
  AttackStart = platform::Now();
}

void ReceiveFrom(NetUser& user, MessageType type, MessageReader& message) {
  const auto index = static_cast<int32_t>(&user - network.NetUsers.begin());
  switch (type) {
    case MessageType::kInit: break;
    case MessageType::kSongShown: TakeSong(user, message); break;
    case MessageType::kSongDecided: ReceiveDecision(user, index, message); break;
    case MessageType::kSongReady: ReceiveReady(); break;
    case MessageType::kStandby: ReceiveStandby(user, index); break;
    case MessageType::kSongStart: ReceiveStart(); break;
    case MessageType::kEnd: ReceiveEnd(user, index); break;
    case MessageType::kAllEnd: ReceiveAllEnd(); break;
    case MessageType::kGauge: ReceiveGauge(user, index, message); break;
    case MessageType::kAttack: ReceiveAttack(message); break;
  }
}

}  // namespace

void SendCurSongData(bool decided) {
  NetUser& own = OwnNetUser();
  TakeHeldSong(own);
  if (decided) own.detected = true;
  MessageWriter message = SongMessage(decided ? MessageType::kSongDecided : MessageType::kSongShown, own);
  SendToAll(message);
  if (decided) NetChkDecideSong();
}

void SendStandby() {
  DebugLog(u"Send [STANDBY]");
  GameState = kStateBattleStart;
  OwnNetUser().standby = true;
  MessageWriter message(MessageType::kStandby);
  SendToAll(message);
  NetChkStartSong();
}

void SendGaugeData(uint8_t sample) {
  const int32_t slot = static_cast<int32_t>(HistoryNext[0]) / kSamplesASlot;
  if (SendFigures(slot, sample)) DebugLog(Join(u"GAUGEDATA SENT : ", slot, u",", int32_t{sample}));
}

void SendEnd() {
  // Quirk: it stands in the slot of the end, and is the gauge of a third of the song.
  const uint8_t gauge = GaugeHistory[0][kLastSlot];
  SendFigures(kLastSlot, gauge);
  DebugLog(Join(u"GAUGEDATA SENT : ", HistoryNext[0], u",", int32_t{gauge}, u",jpts:", JPts[0]));
  DebugLog(u"Send [End] Command");
  OwnNetUser().ended = true;
  MessageWriter message(MessageType::kEnd);
  SendToAll(message);
  NetEndSong();
}

void SendAttack(int32_t position) {
  constexpr float kKinds = 4;
  MessageWriter message(MessageType::kAttack);
  message.Byte(static_cast<uint8_t>(std::floor(Rnd() * kKinds) + 1));
  if (position < 1 || position > static_cast<int32_t>(network.NetUserKeys.size())) return;
  const int32_t item = network.NetUserKeys[static_cast<size_t>(position) - 1].index;
  platform::SendToSession(item, message.Take());
  ShowMessage(Join(u"ATTACK! to ", item, u":", network.NetUsers[item].name));
}

void NetSendInit(bool ownInit, int32_t id) {
  DebugLog(Join(u"[Net:SendInit]", ownInit ? u" (own-init)" : u"", u" to ", id));
  const auto& players = platform::SessionPlayers();
  MessageWriter message(MessageType::kInit);
  message.Byte(static_cast<uint8_t>(players.size()));
  JoinMissingPlayers();
  for (auto player = players.rbegin(); player != players.rend(); ++player) {
    WriteUser(message, player->id, player->name);
  }
  platform::SendToSession(id, message.Long(GameState).Take());
}

void NetWelcome(int32_t id) {
  MessageWriter message(MessageType::kInit);
  message.Byte(static_cast<uint8_t>(network.NetUserCount));
  for (int32_t i = 0; i < network.NetUserCount; ++i) {
    WriteUser(message, network.NetUsers[i].id, network.NetUsers[i].name);
  }
  platform::SendToSession(id, message.Long(GameState).Take());
  for (int32_t i = 0; i < network.NetUserCount; ++i) {
    const NetUser& user = network.NetUsers[i];
    const auto type = user.detected ? MessageType::kSongShown : MessageType::kSongDecided;
    platform::SendToSession(id, SongMessage(type, user).Take(), user.id);
  }
}

void ReceiveMessage(int32_t from, std::string_view body) {
  MessageReader message(body);
  int32_t type = -1;
  message.Long(type);
  if (type == static_cast<int32_t>(MessageType::kInit)) return ReceiveInit(from, message);
  if (NetUser* const user = FindNetUser(from)) ReceiveFrom(*user, static_cast<MessageType>(type), message);
}

void StoreOwnGauge(int32_t slot, uint8_t sample) {
  NetUser* const own = network.NetUsers.Find(network.NetMyIndex);
  if (own == nullptr) return;
  own->slot = slot;
  own->gauge = sample;
  own->jpts = JPts[0];
  Assign(own->score, Narrow(Score[0]));
  own->history.Put(slot, sample);
  SplitFigures(*own);
}

}  // namespace qlm
