// The game of one player: its engine, its list, and the hand that follows the script.
#include "tools/qlmprobe/battle_player.h"

#include <sys/socket.h>
#include <unistd.h>
#include <csignal>
#include <cstdio>

#include <algorithm>
#include <array>
#include <chrono>
#include <thread>
#include <utility>

#include "base/hooks.h"
#include "base/json.h"
#include "base/log.h"
#include "base/paths.h"
#include "graphics/present.h"
#include "input/input.h"
#include "library/song_list.h"
#include "net/session.h"
#include "platform/clock.h"
#include "platform/session.h"
#include "platform/text.h"
#include "platform/timers.h"
#include "screens/list_cursor.h"
#include "screens/song_select.h"
#include "shell/main_form.h"
#include "sound/play.h"
#include "state/key_numbers.h"
#include "state/lists.h"
#include "state/network.h"
#include "state/session.h"
#include "state/settings.h"
#include "tools/qlmprobe/engine.h"

namespace probe {
namespace {

using Clock = std::chrono::steady_clock;
using Kind = BattleStep::Kind;

constexpr auto kRestOfAFrame = std::chrono::milliseconds(2);

// The player of this process.
struct Hand {
  const BattlePlayer* player = nullptr;
  PlayerSeat seat;
  double speed = 1;
  Clock::time_point begin;
  size_t next = 0;                  // step
  std::vector<std::string> deadly;  // beginnings of log lines
  int32_t held = 0;                 // key
  int32_t mostPlayers = 0;          // that have been there at once
  bool saidDone = false;
  bool inPlay = false;
};
Hand hand;

void Say(char kind, std::string_view text = {}) {
  const std::string line = kind + std::string(text) + "\n";
  for (size_t sent = 0; sent < line.size();) {
    const ssize_t count = send(hand.seat.channel, line.data() + sent, line.size() - sent, MSG_NOSIGNAL);
    if (count <= 0) _exit(kRefused);
    sent += static_cast<size_t>(count);
  }
}

// Whether a line of the log tells of the battle.
bool TellsOfBattle(std::string_view line) {
  static constexpr std::array<std::string_view, 12> kBeginnings = {
      "joinplayer",    "leaveplayer", "Player is out", "I am host.", "[Net:", "Receive",
      "receive ready", "NetChk",      "NetEndSong",    "Send [",     "GAUGE", "NETusr["};
  return std::ranges::any_of(kBeginnings, [&](std::string_view begin) { return line.starts_with(begin); });
}

// Each who comes has a line of the log, before anybody else can have gone.
void TellLastLine() {
  hand.mostPlayers = std::max(hand.mostPlayers, qlm::network.NetUserCount);
  std::string line = platform::EncodeUtf8(logLines.back());
  line.erase(0, std::min(line.find_first_not_of(' '), line.size()));
  if (TellsOfBattle(line)) Say(kSaysLog, line);
  for (const std::string& begin : hand.deadly) {
    if (line.starts_with(begin)) raise(SIGKILL);
  }
}

// Until the next pump.
void Press(int32_t key) {
  qlm::DispatchKey(key, true);
  hand.held = key;
}

void Release() {
  if (const int32_t key = std::exchange(hand.held, 0); key != 0) qlm::DispatchKey(key, false);
}

// The list takes keys.
bool AtTheList() { return qlm::GameState == qlm::kStateSongSelect && !qlm::ListIsBusy(); }

// False as long as the row is not in hand.
bool GoTo(int32_t row) {
  if (!AtTheList()) return false;
  if (qlm::listCursor == row) return true;
  Press(qlm::kKeyDown);
  return false;
}

bool Plays() { return platform::TimerArmed(platform::kTimerPlay); }

[[noreturn]] void End() {
  qlm::LeaveBattle();
  _exit(kDone);
}

bool Attack(int32_t place) {
  constexpr std::array<int32_t, 5> kKeys = {qlm::kKeyPad0, qlm::kKeyPad1, qlm::kKeyPad2, qlm::kKeyPad3,
                                            qlm::kKeyPad4};
  if (!Plays() || place >= static_cast<int32_t>(kKeys.size())) return false;
  Press(kKeys[static_cast<size_t>(place)]);
  return true;
}

// True when the step is done.
bool Take(const BattleStep& step) {
  switch (step.kind) {
    case Kind::kAwait: return hand.mostPlayers >= step.number;
    case Kind::kShow: return GoTo(step.number);
    case Kind::kDecide:
      if (!GoTo(step.number)) return false;
      Press(qlm::kKeyEnter);
      return true;
    case Kind::kAttack: return Attack(step.number);
    case Kind::kDie: hand.deadly.push_back(step.text); return true;
    case Kind::kLeave: End();
  }
  return true;
}

void FollowScript() {
  const std::vector<BattleStep>& steps = hand.player->steps;
  // Several keys in one pump would be more than a hand can do.
  if (hand.next < steps.size()) {
    if (Take(steps[hand.next])) ++hand.next;
  } else if (AtTheList() && !hand.saidDone) {
    hand.saidDone = true;
    Say(kSaysDone);
  }
}

void LeaveResults() {
  constexpr int32_t kKeyZ = 44;  // the first lane
  if (qlm::GameState == qlm::kStateResults) Press(kKeyZ);
}

void TellStarts() {
  const bool plays = Plays();
  if (plays && !hand.inPlay) {
    const auto now = Clock::now().time_since_epoch();
    Say(kSaysStart, std::to_string(std::chrono::duration_cast<std::chrono::microseconds>(now).count()));
  }
  hand.inPlay = plays;
}

void PutUser(qlm::Json& json, const qlm::NetUser& user) {
  json.BeginObject();
  json.Put("name", qlm::TextView(user.name));
  json.Put("id", user.id);
  json.Put("song", std::array<qlm::TextView, 3>{user.songA, user.songB, user.songC});
  json.Put("level", int32_t{user.level});
  json.Put("notes", user.notes);
  json.Put("detected", user.detected);
  json.Put("standby", user.standby);
  json.Put("ended", user.ended);
  json.Put("slot", int32_t{user.netSlot});
  json.Put("gauge", user.gauge);
  json.Put("jpts", user.jpts);
  json.Put("score", user.score);
  json.Put("counts", user.counts);
  json.EndObject();
}

void TellTable() {
  qlm::Json json(qlm::JsonLayout::kOneLine);
  json.Put("host", qlm::network.NetHost);
  json.Put("state", qlm::GameState);
  json.Put("index", qlm::network.NetMyIndex);
  json.Key("users").BeginArray();
  for (int32_t i = 0; i < qlm::network.NetUserCount; ++i) PutUser(json, qlm::network.NetUsers[i]);
  json.EndArray();
  std::string text = json.Take();
  std::erase(text, '\n');
  Say(kSaysTable, text);
}

void HearCommand() {
  char letter = 0;
  const ssize_t count = recv(hand.seat.channel, &letter, 1, MSG_DONTWAIT);
  if (count == 0) _exit(kRefused);  // the command is gone
  if (count < 0) return;
  if (letter == kTellTable) TellTable();
  if (letter == kTellEnd) End();
}

void Pumped() {
  HearCommand();
  TellStarts();
  Release();
  LeaveResults();
  FollowScript();
}

// The clock of the game, which may run faster than the world's.
uint32_t NextTime(uint32_t) {
  const std::chrono::duration<double, std::milli> passed = Clock::now() - hand.begin;
  return 1'000'000 + static_cast<uint32_t>(passed.count() * hand.speed);
}

void StartGame(Arguments& arguments, const BattleScript& script) {
  StartEngine(arguments);
  qlm::AppPath = GamePath(hand.seat.folder);
  qlm::logOutput.afterLine = TellLastLine;
  qlm::ConnectHooks();
  qlm::hooks.fatalError = [](qlm::TextView, qlm::TextView) { _exit(kRefused); };
  qlm::hooks.closeRequested = End;
  qlm::hooks.pumped = Pumped;
  qlm::hooks.framePresented = [] { std::this_thread::sleep_for(kRestOfAFrame); };
  qlm::MyName = platform::DecodeUtf8(hand.player->name);
  qlm::NetPort = 0;
  qlm::DEMOMode = true;
  qlm::BMSPreview = 0;
  qlm::PrepareForm();
  qlm::InitDS(platform::SoundOutput::kOffline);
  for (const std::string& chart : script.charts) qlm::AddSong(GamePath(chart));
  hand.begin = Clock::now();
  platform::SetFrameClock(NextTime);
}

bool Enter() {
  if (hand.seat.address.empty()) {
    if (!qlm::HostBattle()) return false;
    Say(kSaysPort, std::to_string(platform::SessionPort()));
  } else if (!qlm::JoinBattle(hand.seat.address)) {
    return false;
  }
  // The hand rests until the game begins.
  const size_t first = std::exchange(hand.next, SIZE_MAX);
  hand.saidDone = true;
  while (qlm::network.awaitsInit) qlm::PresentFrame();
  hand.next = first;
  hand.saidDone = false;
  return qlm::StartBattle();
}

}  // namespace

void RunBattlePlayer(Arguments& arguments, const BattleScript& script, const BattlePlayer& player,
                     const PlayerSeat& seat) {
  hand.player = &player;
  hand.seat = seat;
  hand.speed = script.speed;
  StartGame(arguments, script);
  if (!Enter()) {
    Say(kSaysRefused);
    _exit(kDone);
  }
  Say(kSaysEntered);
  qlm::GameState = qlm::kStateSongSelect;
  qlm::selectLocked = false;
  while (true) qlm::ListTurn();
}

}  // namespace probe
