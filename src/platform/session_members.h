// Who is in a session, and who has received what: the part of a session that knows of no sockets, no threads
// and no clock. It is told what happened on the links to the others, and says what is to be done.
//
// Every member is linked with every other. A newcomer asks the host. The host's game is told first; in the
// moment in which it takes that news from its queue, the host lets the newcomer in and tells the others, in
// the same stream as all that the host's game sends. So what the host's game says to a newcomer is on its way
// before any later newcomer is heard of, and all members learn of newcomers in one order.
//
// What one survivor has received of a dead player, every survivor receives. Each player's messages to all are
// numbered and say who is to get them, and each member keeps those of the others until all have them. When a
// player is gone for a member, it takes nothing more of it, sends the others all that it kept of it, and then
// says "gone". Who has heard that from all that remain knows the same messages as they do, and gives its
// game the missing ones, and then the news that the player is gone. Another death meanwhile begins this again
// for all the dead together, so that what only the second one had said of the first is settled too. Who is
// done says so; what it says later belongs to the time after the death, and others hold it back until they
// are done as well.
//
// Who has not heard a member for three seconds gives it up. The word of an older member that one is gone is
// taken; that of a younger one is not, but the link between the two is dead, so that the older one soon says
// it of the younger. So of two that do not hear each other the younger goes, and all agree.
#pragma once

#include <cstdint>
#include <deque>
#include <functional>
#include <map>
#include <optional>
#include <set>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

#include "platform/session.h"
#include "platform/session_wire.h"

namespace platform {

using LinkId = uint32_t;

// What is to be done on the network.
struct LinkTask {
  enum class Kind {
    kConnect,      // to `address`
    kSend,         // in order, with a guarantee
    kSendLoosely,  // without
    kClose,        // at once
    kFinish        // when all that was sent has arrived
  };
  Kind kind = Kind::kSend;
  LinkId link = 0;
  std::string bytes = {};
  SessionAddress address = {};
};

// A message for the game; `name` is the newcomer's where one came.
struct GameNews {
  SessionMessage message;
  std::u16string name = {};
};

class SessionMembers {
 public:
  enum class State { kClosed, kJoining, kIn };

  static constexpr int64_t kGivenUpAfter = 3000;      // milliseconds without a word
  static constexpr int64_t kMostWaitForHost = 10000;  // for the host's game to let a newcomer in
  static constexpr int kMostMessagesASecond = 500;
  static constexpr int kMostFramesASecond = 4000;  // of whatever kind

  // `random` gives numbers that nobody can guess.
  explicit SessionMembers(std::function<uint64_t()> random) : random_(std::move(random)) {}

  // A session with this one as host.
  void Open(std::u16string_view name);
  // Asks the host at an address. State() turns from kJoining to kIn, or to kClosed when it fails.
  void Join(const SessionAddress& host, std::u16string_view name);
  void Leave();

  // The time of all that follows, in milliseconds.
  void SetTime(int64_t now) { now_ = now; }
  // What is to be done now and then: signs of life, and who gave none. Behind all that arrived until now.
  void Tick();

  // The network's news. A link that came in gets its number here.
  LinkId LinkCame(const SessionAddress& from);
  void LinkMade(LinkId link);
  void LinkLost(LinkId link);
  void Received(LinkId link, std::string_view bytes);

  // The game's orders.
  void SendToAll(std::string_view body, int32_t from);
  void SendToOne(int32_t to, std::string_view body, int32_t from);
  // The game has received the news that a player came.
  void NewcomerTaken(int32_t id);
  // Its messages are more than the game can take.
  void GiveUp(int32_t id, std::u16string_view why);

  State GetState() const { return state_; }
  int32_t OwnId() const { return self_.id; }
  bool IsHost() const;
  // With this one, the newest first: as it came in.
  std::vector<SessionPlayer> FirstPlayers() const;
  // What a search is told; nothing when no one can come in here.
  std::optional<SearchAnswer> AnswerSearch() const;

  // What has come together since the last call.
  std::vector<LinkTask> TakeTasks() { return std::exchange(tasks_, {}); }
  std::vector<GameNews> TakeNews() { return std::exchange(news_, {}); }
  std::vector<std::u16string> TakeNotes() { return std::exchange(notes_, {}); }

 private:
  enum class Phase {
    kSilent,     // came in and has not said what it wants
    kApplicant,  // waits at the host to be let in
    kUnproven,   // says it is a newcomer that has not been announced yet
    kCalling,    // called by us
    kAsking,     // the host, asked to let us in
    kProving,    // a member, told who we are
    kUp          // a member's
  };
  struct Link {
    SessionAddress address = {};
    Phase phase = Phase::kSilent;
    int32_t member = 0;  // whose it is, or will be
    int64_t since = 0;   // of the phase
    int64_t heard = 0;
    std::u16string name = {};  // an applicant's
    bool told = false;         // the game knows of the applicant
    uint64_t token = 0;        // said by an unproven one, or to be said
    // How many messages, and frames of any kind, it may still send.
    double messages = kGivenUpAfter * kMostMessagesASecond / 1000.0;
    double frames = kGivenUpAfter * kMostFramesASecond / 1000.0;
    int64_t countedAt = 0;
  };
  struct Kept {
    ItemFrame item = {};
    int64_t since = 0;
  };
  // Something of a player on its way to the game.
  struct Delivery {
    ItemKind kind = ItemKind::kMessage;
    int32_t from = 0;
    std::string body = {};
    PlayerEntry newcomer = {};
  };
  struct Member {
    PlayerEntry player = {};
    LinkId link = 0;                       // 0 as long as there is none
    int64_t since = 0;                     // it is known; of its end when it is gone
    std::vector<std::string> unsent = {};  // until the link is up
    std::map<uint32_t, Kept> kept;         // its messages that not all have yet
    uint32_t received = 0;                 // the number of its last message that arrived
    std::map<int32_t, uint32_t> has;       // what it says it received of the others
    std::deque<Delivery> undelivered;
    bool introduced = false;  // the game has been told of it
    bool taken = false;       // the game has received that
    bool heldBack = false;    // it is ahead of us: what it says belongs behind the dead ones' end
    bool gone = false;
    bool settled = false;         // gone, and the game has been told
    std::set<int32_t> saidGone;   // in its last word on who is gone
    std::set<int32_t> settledBy;  // those who settled its death
  };

  // Null when there is none.
  Member* Find(int32_t id);
  Link* FindLink(LinkId id);
  // Whose link it is; null as long as it is nobody's.
  Member* SenderOn(LinkId id);
  // Runs for each member that is not gone.
  template <typename Run>
  void ForRemaining(Run run) {
    for (auto& [id, member] : members_) {
      if (!member.gone) run(member);
    }
  }
  size_t Remaining() const;
  size_t Applicants() const;

  void Note(std::u16string text);
  void Post(LinkTask task) { tasks_.push_back(std::move(task)); }
  void SendOn(LinkId link, const Frame& frame);
  void SendTo(Member& member, std::string bytes);
  LinkId Call(const SessionAddress& address, int32_t member, uint64_t token);
  void Drop(LinkId id, LinkTask::Kind how);
  void Reject(LinkId link, std::u16string_view why);
  void FailJoin(std::u16string_view why);

  // A frame that has arrived.
  void Take(LinkId link, const HelloFrame& hello);
  void Take(LinkId link, const RefusalFrame& refusal);
  void Take(LinkId link, const WelcomeFrame& welcome);
  void Take(LinkId link, const ExpectFrame& expect);
  void Take(LinkId link, const LinkFrame& frame);
  void Take(LinkId link, const LinkedFrame& linked);
  void Take(LinkId link, ItemFrame& item);
  void Take(LinkId link, DirectFrame& direct);
  void Take(LinkId link, const ForwardFrame& forward);
  void Take(LinkId link, const GoneFrame& gone);
  void Take(LinkId link, const SettledFrame& settled);
  void Take(LinkId link, const AliveFrame& alive);

  // Joining, links and time.
  bool Floods(Link& link, bool isMessage);
  void ConsiderApplicants();
  void LetIn(LinkId link);
  void ApplicantLost(const Link& link);
  void Prove(LinkId link);
  static bool MakesSense(const WelcomeFrame& welcome);
  void KnowAll(const WelcomeFrame& welcome);
  void FinishJoin();
  void LinkIsUp(LinkId id, Member& member);
  Member& AddMember(const PlayerEntry& player);
  void GiveUpLateLinks();
  void GiveUpUnlinked();
  void GiveSign();

  // Messages.
  void NewcomerAnnounced(int32_t origin, const PlayerEntry& newcomer);
  bool MayAnnounce(const Member& origin);
  bool SpeaksForOthers(const Member& sender) const;
  void SendItem(ItemFrame item, bool toTakenOnly);
  void DeliverWhatMay();
  void Deliver(Member& sender);
  void Tell(SessionEvent event, int32_t player, std::u16string_view name = {});
  bool Confirmed(const Member& sender, const Kept& kept, int32_t recipient) const;
  void ForgetReceived(Member& sender);
  bool MakeRoom(Member& sender);

  // Deaths.
  void MarkGone(int32_t id, std::u16string_view why);
  void TellGone(Member& to);
  void SettleDeaths();
  void GiveUpWhoDoNotSettle();
  void ForgetSettled();

  std::function<uint64_t()> random_;
  int64_t now_ = 0;
  State state_ = State::kClosed;
  uint64_t session_ = 0;
  PlayerEntry self_ = {};
  uint32_t number_ = 0;     // of the own last message to all
  uint32_t lastPlace_ = 0;  // given to a member
  int64_t joinBegan_ = 0;
  int64_t signBegan_ = 0;  // of the last sign of life
  LinkId lastLink_ = 0;
  LinkId hostLink_ = 0;  // while joining
  std::map<LinkId, Link> links_;
  std::map<int32_t, Member> members_;     // without this one
  std::map<int32_t, uint64_t> expected_;  // tokens of newcomers that are not announced yet
  std::set<int32_t> past_;                // every id that has gone
  std::vector<SessionPlayer> firstPlayers_ = {};
  std::vector<LinkTask> tasks_ = {};
  std::vector<GameNews> news_ = {};
  std::vector<std::u16string> notes_ = {};
};

}  // namespace platform
