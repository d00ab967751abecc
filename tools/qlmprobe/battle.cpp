// The command `battle`: players of the real game in processes of their own, on this machine.
#include <poll.h>
#include <sys/socket.h>
#include <sys/wait.h>
#include <unistd.h>

#include <algorithm>
#include <csignal>
#include <cstdio>
#include <cstdlib>
#include <filesystem>
#include <optional>
#include <vector>

#include "base/json.h"
#include "platform/clock.h"
#include "platform/files.h"
#include "tools/qlmprobe/battle_ping.h"
#include "tools/qlmprobe/battle_player.h"
#include "tools/qlmprobe/battle_script.h"
#include "tools/qlmprobe/commands.h"
#include "tools/qlmprobe/engine.h"

namespace probe {
namespace {

namespace fs = std::filesystem;

// A player's process, as the command knows it.
struct Seat {
  const BattlePlayer* player = nullptr;
  pid_t process = 0;  // 0 before it comes
  int channel = -1;   // -1 before it comes and when it has gone
  bool entered = false;
  bool refused = false;
  bool died = false;
  bool done = false;
  std::string unread;
  std::vector<std::string> log;
  std::vector<int64_t> starts;  // microseconds
  std::string table;

  bool Here() const { return channel >= 0; }
  bool Settled() const { return done || refused || (process != 0 && !Here()); }
};

class Battle {
 public:
  Battle(Arguments& arguments, const BattleScript& script, std::string folder)
      : arguments_(arguments), script_(script), folder_(std::move(folder)) {
    for (const BattlePlayer& player : script.players) seats_.emplace_back().player = &player;
  }

  // False when its time is over before all players are through.
  bool Run() {
    const uint32_t begin = platform::Now();
    const auto late = [&] { return platform::Elapsed(platform::Now(), begin) > 1000 * script_.seconds; };
    while (!AllSettled() && !late()) {
      LetPlayersCome();
      Listen();
    }
    const bool complete = AllSettled();
    Tell(kTellTable);
    ListenUntil([this] { return AllTables(); });
    Tell(kTellEnd);
    EndProcesses();
    return complete;
  }

  void Put(Json& json) const {
    json.Key("players").BeginArray();
    for (const Seat& seat : seats_) PutSeat(json, seat);
    json.EndArray();
  }

 private:
  static constexpr int kListenMs = 20;
  static constexpr int32_t kMostMsForAnswers = 20'000;  // on a busy machine

  bool AllSettled() const {
    return std::ranges::all_of(seats_, [](const Seat& seat) { return seat.Settled(); });
  }
  bool AllTables() const {
    return std::ranges::all_of(seats_, [](const Seat& seat) { return !seat.Here() || !seat.table.empty(); });
  }

  bool MayCome(size_t index) const {
    const BattlePlayer& player = *seats_[index].player;
    if (!player.afterPlayer.empty()) {
      const auto other = std::ranges::find_if(
          seats_, [&](const Seat& seat) { return seat.player->name == player.afterPlayer; });
      return std::ranges::any_of(other->log,
                                 [&](const std::string& line) { return line.starts_with(player.afterLine); });
    }
    if (index == 0) return true;
    const Seat& before = seats_[index - 1];
    return before.entered || before.Settled();
  }

  void LetPlayersCome() {
    for (size_t index = 0; index < seats_.size(); ++index) {
      const bool canJoin = index == 0 || !address_.empty();
      if (seats_[index].process == 0 && canJoin && MayCome(index)) Start(index);
    }
  }

  void Start(size_t index) {
    Seat& seat = seats_[index];
    int ends[2];
    if (socketpair(AF_UNIX, SOCK_STREAM | SOCK_CLOEXEC, 0, ends) != 0) return;
    const std::string folder = folder_ + "/" + std::to_string(index);
    fs::create_directories(folder);
    seat.process = fork();
    if (seat.process == 0) {
      close(ends[0]);
      for (const Seat& other : seats_) {
        if (other.Here()) close(other.channel);
      }
      RunBattlePlayer(arguments_, script_, *seat.player, {ends[1], folder, index == 0 ? "" : address_});
    }
    close(ends[1]);
    seat.channel = ends[0];
  }

  template <typename Condition>
  void ListenUntil(Condition condition) {
    const uint32_t begin = platform::Now();
    while (!condition() && platform::Elapsed(platform::Now(), begin) < kMostMsForAnswers) Listen();
  }

  // Takes what the players say, for a short while.
  void Listen() {
    std::vector<pollfd> channels;
    for (const Seat& seat : seats_) channels.push_back({seat.channel, POLLIN, 0});
    if (poll(channels.data(), channels.size(), kListenMs) <= 0) return;
    for (size_t index = 0; index < seats_.size(); ++index) {
      if (channels[index].revents != 0) Hear(seats_[index]);
    }
  }

  void Hear(Seat& seat) {
    char bytes[4096];
    const ssize_t count = recv(seat.channel, bytes, sizeof bytes, 0);
    if (count <= 0) {
      close(seat.channel);
      seat.channel = -1;
      return;
    }
    seat.unread.append(bytes, static_cast<size_t>(count));
    for (size_t end = seat.unread.find('\n'); end != std::string::npos; end = seat.unread.find('\n')) {
      TakeLine(seat, seat.unread.substr(0, end));
      seat.unread.erase(0, end + 1);
    }
  }

  void TakeLine(Seat& seat, const std::string& line) {
    const std::string text = line.substr(1);
    switch (line[0]) {
      case kSaysPort: address_ = "127.0.0.1:" + text; break;
      case kSaysEntered: seat.entered = true; break;
      case kSaysRefused: seat.refused = true; break;
      case kSaysLog: seat.log.push_back(text); break;
      case kSaysStart: seat.starts.push_back(std::strtoll(text.c_str(), nullptr, 10)); break;
      case kSaysDone: seat.done = true; break;
      case kSaysTable: seat.table = text; break;
      default: break;
    }
  }

  void Tell(char letter) {
    for (const Seat& seat : seats_) {
      if (seat.Here()) send(seat.channel, &letter, 1, MSG_NOSIGNAL);
    }
  }

  // Who does not end by itself is ended.
  void EndProcesses() {
    ListenUntil([this] { return std::ranges::none_of(seats_, &Seat::Here); });
    for (Seat& seat : seats_) {
      if (seat.process <= 0) continue;
      if (seat.Here()) {
        kill(seat.process, SIGKILL);
        close(seat.channel);
      }
      int status = 0;
      waitpid(seat.process, &status, 0);
      seat.died = WIFSIGNALED(status);
    }
  }

  static void PutSeat(Json& json, const Seat& seat) {
    json.BeginObject();
    json.Put("name", seat.player->name);
    json.Put("entered", seat.entered);
    json.Put("died", seat.died);
    json.Put("done", seat.done);
    json.Key("starts").BeginArray();
    for (const int64_t start : seat.starts) json.Value(start);
    json.EndArray();
    json.Key("log").BeginArray();
    for (const std::string& line : seat.log) json.Value(std::string_view(line));
    json.EndArray();
    if (!seat.table.empty()) json.Key("table").Raw(seat.table);
    json.EndObject();
  }

  Arguments& arguments_;
  const BattleScript& script_;
  std::string folder_;
  std::string address_;
  std::vector<Seat> seats_;
};

// Charts stand in a script as seen from its folder.
bool FindCharts(BattleScript& script, const std::string& file) {
  for (std::string& chart : script.charts) {
    if (fs::path(chart).is_relative()) chart = (fs::path(file).parent_path() / chart).string();
    if (!CheckReadableChart(chart)) return false;
    chart = fs::absolute(chart).string();
  }
  return true;
}

}  // namespace

int BattleCommand(Arguments& arguments) {
  if (!arguments.Good()) return kWrongUsage;
  const std::string& file = arguments.Files()[0];
  if (arguments.Flag("--ping")) return PingBattle(file);
  if (!CheckReadable(file)) return kRefused;
  std::string wrong;
  std::optional<BattleScript> script =
      ParseBattleScript(platform::ReadFile(GamePath(file)).value_or(""), wrong);
  if (!script) {
    std::fprintf(stderr, "qlmprobe: %s: %s\n", file.c_str(), wrong.c_str());
    return kRefused;
  }
  if (!FindCharts(*script, file)) return kRefused;

  std::string folder = (fs::temp_directory_path() / "qlmprobe-battle-XXXXXX").string();
  if (mkdtemp(folder.data()) == nullptr) {
    std::fputs("qlmprobe: no folder can be made for the players\n", stderr);
    return kRefused;
  }
  Battle battle(arguments, *script, folder);
  const bool complete = battle.Run();
  std::error_code error;
  fs::remove_all(folder, error);
  Json json;
  json.Put("complete", complete);
  battle.Put(json);
  if (!complete) std::fprintf(stderr, "qlmprobe: %s: its time is over\n", file.c_str());
  return Print(json, complete ? kDone : kRefused);
}

}  // namespace probe
