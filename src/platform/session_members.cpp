// Joining, the links to the others, the streams of messages, and what happens at a death.
#include "platform/session_members.h"

#include <algorithm>
#include <utility>

namespace platform {
namespace {

constexpr int32_t kLowestId = 0x10001;
constexpr int64_t kSignEvery = 200;          // milliseconds between signs of life
constexpr int64_t kMostSilence = 2000;       // of a link that came in, until it says what it wants
constexpr int64_t kMostCalling = 4000;       // by then a call that is lost has been repeated four times
constexpr int64_t kMostLinking = 6000;       // from a newcomer's announcement until its link is up
constexpr int64_t kMostSettling = 8000;      // from a death until all have said what they know of it
constexpr int64_t kKeptForUnknown = 10'000;  // for recipients of whom nobody has told yet
constexpr size_t kMostKept = 4096;           // messages of one player that somebody does not confirm
constexpr size_t kMostUnsent = 4096;
constexpr size_t kMostStrangers = 8;  // links that have not said what they want
constexpr size_t kMostNotes = 100;

bool IsLoopback(const SessionAddress& address) { return address.host >> 24 == 127; }

std::u16string Digits(int64_t number) {
  const std::string digits = std::to_string(number);
  return {digits.begin(), digits.end()};
}

bool Contains(const std::vector<int32_t>& ids, int32_t id) {
  return std::find(ids.begin(), ids.end(), id) != ids.end();
}

std::u16string Words(const SessionAddress& address) {
  std::u16string text;
  for (int shift = 24; shift >= 0; shift -= 8)
    text += Digits(address.host >> shift & 0xFF) + (shift > 0 ? u"." : u":");
  return text + Digits(address.port);
}

}  // namespace

SessionMembers::Member* SessionMembers::Find(int32_t id) {
  const auto found = members_.find(id);
  return found == members_.end() ? nullptr : &found->second;
}

SessionMembers::Link* SessionMembers::FindLink(LinkId id) {
  const auto found = links_.find(id);
  return found == links_.end() ? nullptr : &found->second;
}

SessionMembers::Member* SessionMembers::SenderOn(LinkId id) {
  const Link& link = links_.at(id);
  return link.phase == Phase::kUp ? Find(link.member) : nullptr;
}

size_t SessionMembers::Remaining() const {
  return static_cast<size_t>(
      std::count_if(members_.begin(), members_.end(), [](const auto& each) { return !each.second.gone; }));
}

size_t SessionMembers::Applicants() const {
  return static_cast<size_t>(std::count_if(
      links_.begin(), links_.end(), [](const auto& each) { return each.second.phase == Phase::kApplicant; }));
}

bool SessionMembers::IsHost() const {
  return state_ == State::kIn && std::all_of(members_.begin(), members_.end(), [this](const auto& each) {
           return each.second.settled || each.second.player.place > self_.place;
         });
}

std::vector<SessionPlayer> SessionMembers::FirstPlayers() const { return firstPlayers_; }

std::optional<SearchAnswer> SessionMembers::AnswerSearch() const {
  const size_t players = Remaining() + 1 + Applicants();
  if (!IsHost() || players >= kMostPlayers) return std::nullopt;
  return SearchAnswer{.session = session_, .players = static_cast<uint8_t>(players), .name = self_.name};
}

void SessionMembers::Note(std::u16string text) {
  if (notes_.size() < kMostNotes) notes_.push_back(std::move(text));
}

// ---- Opening, joining, leaving

void SessionMembers::Open(std::u16string_view name) {
  state_ = State::kIn;
  session_ = random_();
  self_.name = CleanPlayerName(name);
  self_.place = 0;
  self_.id = kLowestId + static_cast<int32_t>(random_() % (INT32_MAX - kLowestId));
  firstPlayers_ = {{self_.id, self_.name}};
}

void SessionMembers::Join(const SessionAddress& host, std::u16string_view name) {
  state_ = State::kJoining;
  joinBegan_ = now_;
  self_.name = CleanPlayerName(name);
  hostLink_ = Call(host, 0, 0);
}

void SessionMembers::FailJoin(std::u16string_view why) {
  if (state_ != State::kJoining) return;
  Note(u"Could not join: " + std::u16string(why));
  Leave();
}

void SessionMembers::Leave() {
  if (state_ == State::kClosed) return;
  SendItem({.kind = ItemKind::kLeave}, false);
  for (const auto& [id, link] : links_) Post({LinkTask::Kind::kFinish, id, {}, {}});
  links_.clear();
  state_ = State::kClosed;
}

LinkId SessionMembers::Call(const SessionAddress& address, int32_t member, uint64_t token) {
  const LinkId id = ++lastLink_;
  links_[id] = {.address = address,
                .phase = Phase::kCalling,
                .member = member,
                .since = now_,
                .heard = now_,
                .token = token};
  Post({LinkTask::Kind::kConnect, id, {}, address});
  return id;
}

void SessionMembers::Drop(LinkId id, LinkTask::Kind how) {
  const auto found = links_.find(id);
  if (found == links_.end()) return;
  const Link link = std::move(found->second);
  links_.erase(found);
  Post({how, id, {}, {}});
  ApplicantLost(link);
}

// What a peer sent is wrong: it is dropped, and if it is a member, given up.
void SessionMembers::Reject(LinkId id, std::u16string_view why) {
  const Link* const link = FindLink(id);
  if (link == nullptr) return;
  if (link->phase == Phase::kUp) {
    MarkGone(link->member, why);
    return;
  }
  Note(u"Dropped " + Words(link->address) + u": " + std::u16string(why));
  const bool ours =
      link->phase == Phase::kCalling || link->phase == Phase::kAsking || link->phase == Phase::kProving;
  Drop(id, LinkTask::Kind::kFinish);
  if (ours) FailJoin(why);
}

void SessionMembers::SendOn(LinkId link, const Frame& frame) {
  Post({LinkTask::Kind::kSend, link, EncodeFrame(frame), {}});
}

void SessionMembers::SendTo(Member& member, std::string bytes) {
  if (member.gone) return;
  if (member.link != 0) {
    Post({LinkTask::Kind::kSend, member.link, std::move(bytes), {}});
  } else if (member.unsent.size() < kMostUnsent) {
    member.unsent.push_back(std::move(bytes));
  }
}

LinkId SessionMembers::LinkCame(const SessionAddress& from) {
  const LinkId id = ++lastLink_;
  links_[id] = {.address = from, .since = now_, .heard = now_};
  const auto strangers = std::count_if(links_.begin(), links_.end(), [](const auto& each) {
    return each.second.phase == Phase::kSilent || each.second.phase == Phase::kUnproven;
  });
  if (state_ == State::kClosed || static_cast<size_t>(strangers) > kMostStrangers)
    Drop(id, LinkTask::Kind::kClose);
  return id;
}

void SessionMembers::LinkMade(LinkId id) {
  Link* const link = FindLink(id);
  if (link == nullptr || link->phase != Phase::kCalling) return;
  link->since = link->heard = now_;
  if (link->member == 0) {
    link->phase = Phase::kAsking;
    SendOn(id, HelloFrame{.name = self_.name});
  } else {
    link->phase = Phase::kProving;
    SendOn(id, LinkFrame{.session = session_, .id = self_.id, .token = link->token});
  }
}

void SessionMembers::LinkLost(LinkId id) {
  const Link* const found = FindLink(id);
  if (found == nullptr) return;
  const Link link = *found;
  links_.erase(id);
  switch (link.phase) {
    case Phase::kUp: MarkGone(link.member, u"the connection is lost"); break;
    case Phase::kCalling:
    case Phase::kAsking: FailJoin(u"there is no answer"); break;
    case Phase::kProving: FailJoin(u"a member does not answer"); break;
    case Phase::kApplicant: ApplicantLost(link); break;
    case Phase::kSilent:
    case Phase::kUnproven: break;
  }
}

void SessionMembers::Received(LinkId id, std::string_view bytes) {
  Link* const link = FindLink(id);
  if (link == nullptr) return;
  link->heard = now_;
  std::optional<Frame> frame = DecodeFrame(bytes);
  if (!frame) return Reject(id, u"what it sent is no message");
  const bool isMessage =
      std::holds_alternative<ItemFrame>(*frame) || std::holds_alternative<DirectFrame>(*frame);
  if (Floods(*link, isMessage)) return Reject(id, u"it sends too much");
  std::visit([&](auto& fields) { Take(id, fields); }, *frame);
}

// A link that was quiet for as long as is forgiven may bring all that was sent meanwhile at once.
bool SessionMembers::Floods(Link& link, bool isMessage) {
  const auto grows = [&](double& allowed, int perSecond) {
    allowed = std::min(allowed + static_cast<double>((now_ - link.countedAt) * perSecond) / 1000.0,
                       kGivenUpAfter * perSecond / 1000.0);
  };
  grows(link.messages, kMostMessagesASecond);
  grows(link.frames, kMostFramesASecond);
  link.countedAt = now_;
  if (isMessage) --link.messages;
  return link.messages < 0 || --link.frames < 0;
}

void SessionMembers::Take(LinkId id, const HelloFrame& hello) {
  Link& link = links_.at(id);
  if (link.phase != Phase::kSilent || hello.magic != kSessionMagic)
    return Reject(id, u"it does not greet as a player does");
  const auto refuse = [&](Refusal reason, std::u16string_view why) {
    SendOn(id, RefusalFrame{.reason = reason});
    Reject(id, why);
  };
  if (hello.version != kSessionVersion) {
    return refuse(Refusal::kVersion,
                  u"it is of version " + Digits(hello.version) + u", this is " + Digits(kSessionVersion));
  }
  const bool isHost =
      state_ == State::kIn && std::all_of(members_.begin(), members_.end(), [this](const auto& each) {
        return each.second.gone || each.second.player.place > self_.place;
      });
  if (!isHost) return refuse(Refusal::kNotHost, u"it asks to come in, and this is not the host");
  if (Remaining() + 1 + Applicants() >= kMostPlayers) return refuse(Refusal::kFull, u"the session is full");
  link.phase = Phase::kApplicant;
  link.since = now_;
  link.name = hello.name;
  ConsiderApplicants();
}

void SessionMembers::Take(LinkId id, const RefusalFrame& refusal) {
  if (links_.at(id).phase != Phase::kAsking || refusal.magic != kSessionMagic)
    return Reject(id, u"it refuses what was not asked");
  if (refusal.reason == Refusal::kVersion) {
    return FailJoin(u"the session is of version " + Digits(refusal.version) + u", this is " +
                    Digits(kSessionVersion));
  }
  FailJoin(refusal.reason == Refusal::kFull ? u"the session is full" : u"that player is not the host");
}

// The game hears of one applicant after the other, and of none while a death is being settled: it would count
// a player too many.
void SessionMembers::ConsiderApplicants() {
  if (!IsHost()) return;
  for (const auto& [id, member] : members_) {
    if (!member.settled && member.link == 0) return;  // a newcomer could not be told its address
  }
  for (auto& [id, link] : links_) {
    if (link.phase != Phase::kApplicant || link.told) continue;
    do {
      link.member = kLowestId + static_cast<int32_t>(random_() % (INT32_MAX - kLowestId));
    } while (link.member == self_.id || members_.contains(link.member) || past_.contains(link.member));
    link.told = true;
    Tell(SessionEvent::kPlayerCreated, link.member, link.name);
  }
}

void SessionMembers::NewcomerTaken(int32_t id) {
  if (Member* const member = Find(id)) {
    member->taken = true;
    return;
  }
  const auto link = std::find_if(links_.begin(), links_.end(), [id](const auto& each) {
    return each.second.phase == Phase::kApplicant && each.second.member == id;
  });
  if (link != links_.end()) LetIn(link->first);
}

// The game has heard, or will hear, of one that went again before it was let in.
void SessionMembers::ApplicantLost(const Link& link) {
  if (link.phase != Phase::kApplicant || !link.told) return;
  past_.insert(link.member);
  Tell(SessionEvent::kPlayerDestroyed, link.member);
}

// The others hear of a newcomer here and not earlier, and all that the host's game sends from now on comes
// behind: so whoever came before has all that the host said to it when it hears of the next.
void SessionMembers::LetIn(LinkId id) {
  Link& link = links_.at(id);
  WelcomeFrame welcome{
      .session = session_, .you = {link.member, ++lastPlace_, link.name}, .members = {{.player = self_}}};
  ForRemaining([&](Member& member) {
    const uint64_t token = random_();
    SendTo(member, EncodeFrame(ExpectFrame{welcome.you.id, token}));
    const Link* const others = FindLink(member.link);
    welcome.members.push_back({member.player, others != nullptr ? others->address : SessionAddress(), token});
  });
  for (const auto& [gone, member] : members_) {
    if (member.gone) welcome.gone.push_back(gone);
  }
  SendItem({.kind = ItemKind::kNewcomer, .newcomer = welcome.you}, false);
  SendOn(id, welcome);
  Member& member = AddMember(welcome.you);
  member.link = id;
  member.introduced = member.taken = true;
  link.phase = Phase::kUp;
}

SessionMembers::Member& SessionMembers::AddMember(const PlayerEntry& player) {
  Member& member = members_[player.id];
  member.player = player;
  member.since = now_;
  lastPlace_ = std::max(lastPlace_, player.place);
  return member;
}

// All are different players, and the newcomer is the last of them.
bool SessionMembers::MakesSense(const WelcomeFrame& welcome) {
  std::set<int32_t> ids = {welcome.you.id};
  std::set<uint32_t> places = {welcome.you.place};
  for (const WelcomeMember& each : welcome.members) {
    ids.insert(each.player.id);
    places.insert(each.player.place);
  }
  ids.insert(welcome.gone.begin(), welcome.gone.end());
  const size_t players = welcome.members.size() + 1;
  return !welcome.members.empty() && players <= kMostPlayers && ids.size() == players + welcome.gone.size() &&
         places.size() == players && *places.rbegin() == welcome.you.place && *ids.begin() >= kLowestId;
}

// Who is here, and who has gone.
void SessionMembers::KnowAll(const WelcomeFrame& welcome) {
  session_ = welcome.session;
  self_ = welcome.you;
  lastPlace_ = self_.place;
  hostLink_ = 0;
  // What others settle among themselves is settled for who was not there.
  for (const int32_t gone : welcome.gone) {
    Member& member = AddMember({.id = gone});
    member.gone = member.settled = true;
    past_.insert(gone);
  }
  for (const WelcomeMember& each : welcome.members) {
    Member& member = AddMember(each.player);
    member.introduced = member.taken = true;
  }
  // The newest first.
  firstPlayers_ = {{self_.id, self_.name}};
  std::vector<PlayerEntry> others;
  for (const WelcomeMember& each : welcome.members) others.push_back(each.player);
  std::sort(others.begin(), others.end(), [](const auto& a, const auto& b) { return a.place > b.place; });
  for (const PlayerEntry& other : others) firstPlayers_.push_back({other.id, other.name});
}

void SessionMembers::Take(LinkId id, const WelcomeFrame& welcome) {
  Link& link = links_.at(id);
  if (link.phase != Phase::kAsking) return Reject(id, u"it welcomes whom it was not asked for");
  if (!MakesSense(welcome)) return Reject(id, u"its welcome makes no sense");
  KnowAll(welcome);
  link.phase = Phase::kUp;
  link.member = welcome.members.front().player.id;
  link.since = now_;
  members_.at(link.member).link = id;
  const uint32_t hostAt = link.address.host;
  for (size_t i = 1; i < welcome.members.size(); ++i) {
    // One on the host's own machine may be known there by an address that leads nowhere from here.
    SessionAddress address = welcome.members[i].address;
    if (IsLoopback(address)) address.host = hostAt;
    Call(address, welcome.members[i].player.id, welcome.members[i].token);
  }
  for (auto& [other, member] : members_) {
    if (!member.gone) TellGone(member);
  }
  FinishJoin();
}

// In, when every member that was there before and remains is linked.
void SessionMembers::FinishJoin() {
  if (state_ != State::kJoining || self_.id == 0) return;
  bool linked = true;
  ForRemaining([&](const Member& member) {
    linked = linked && (member.link != 0 || member.player.place > self_.place);
  });
  if (!linked) return;
  state_ = State::kIn;
  SettleDeaths();
}

void SessionMembers::Take(LinkId id, const ExpectFrame& expect) {
  const Member* const sender = SenderOn(id);
  if (sender == nullptr) return Reject(id, u"it is no member");
  if (!MayAnnounce(*sender)) return;
  // The announcement follows at once: who was not announced until now never will be.
  std::erase_if(expected_, [this](const auto& each) { return Find(each.first) == nullptr; });
  if (expected_.size() < kMostPlayers) expected_[expect.id] = expect.token;
}

void SessionMembers::Take(LinkId id, const LinkFrame& frame) {
  Link& link = links_.at(id);
  if (link.phase != Phase::kSilent || frame.magic != kSessionMagic || frame.version != kSessionVersion ||
      (self_.id != 0 && frame.session != session_)) {
    return Reject(id, u"it does not greet as a member does");
  }
  link.phase = Phase::kUnproven;
  link.since = now_;
  link.member = frame.id;
  link.token = frame.token;
  Prove(id);
}

// The link is the newcomer's when the host has announced it and told its token.
void SessionMembers::Prove(LinkId id) {
  Link& link = links_.at(id);
  Member* const member = Find(link.member);
  if (member == nullptr) return;  // not announced yet
  const auto expected = expected_.find(link.member);
  if (member->gone || member->link != 0 || expected == expected_.end() || expected->second != link.token) {
    return Reject(id, u"it is not who it says it is");
  }
  expected_.erase(expected);
  SendOn(id, LinkedFrame());
  LinkIsUp(id, *member);
  ConsiderApplicants();
}

void SessionMembers::Take(LinkId id, const LinkedFrame&) {
  const Link& link = links_.at(id);
  Member* const member = Find(link.member);
  if (link.phase != Phase::kProving || member == nullptr) return Reject(id, u"it answers what was not asked");
  LinkIsUp(id, *member);
  FinishJoin();
}

// It is sent what has waited for it.
void SessionMembers::LinkIsUp(LinkId id, Member& member) {
  Link& link = links_.at(id);
  link.phase = Phase::kUp;
  link.since = now_;
  member.link = id;
  for (std::string& bytes : std::exchange(member.unsent, {})) SendTo(member, std::move(bytes));
}

// ---- Messages

// One that is gone for this end alone, and lives on with the others, is to get it from them.
void SessionMembers::SendItem(ItemFrame item, bool toTakenOnly) {
  item.number = ++number_;
  for (const auto& [id, member] : members_) {
    if (!member.settled && (!toTakenOnly || member.taken)) item.recipients.push_back(id);
  }
  const std::string bytes = EncodeFrame(item);
  ForRemaining([&](Member& member) {
    if (Contains(item.recipients, member.player.id)) SendTo(member, bytes);
  });
}

void SessionMembers::SendToAll(std::string_view body, int32_t from) {
  SendItem({.from = from == self_.id ? 0 : from, .body = std::string(body)}, true);
}

void SessionMembers::SendToOne(int32_t to, std::string_view body, int32_t from) {
  if (Member* const member = Find(to)) {
    SendTo(*member, EncodeFrame(DirectFrame{from == self_.id ? 0 : from, std::string(body)}));
  }
}

bool SessionMembers::MayAnnounce(const Member& origin) {
  bool oldest = origin.player.place < self_.place;
  ForRemaining([&](const Member& member) { oldest = oldest && member.player.place >= origin.player.place; });
  return oldest;
}

// Whether it is the host for the game: those whose end the game has not been told of count too.
bool SessionMembers::SpeaksForOthers(const Member& sender) const {
  return sender.player.place < self_.place &&
         std::all_of(members_.begin(), members_.end(), [&](const auto& each) {
           return each.second.settled || each.second.player.place >= sender.player.place;
         });
}

void SessionMembers::Take(LinkId id, ItemFrame& item) {
  Member* const sender = SenderOn(id);
  if (sender == nullptr) return Reject(id, u"it is no member");
  if (item.number <= sender->received || !Contains(item.recipients, self_.id))
    return Reject(id, u"its numbers make no sense");
  sender->received = item.number;
  sender->undelivered.push_back({item.kind, item.from, item.body, item.newcomer});
  sender->kept[item.number] = {item, now_};
  if (sender->kept.size() > kMostKept && !MakeRoom(*sender))
    return Reject(id, u"nobody can have what it sends");
  const int32_t origin = sender->player.id;
  if (item.kind == ItemKind::kNewcomer) NewcomerAnnounced(origin, item.newcomer);
  DeliverWhatMay();
  if (item.kind == ItemKind::kLeave) MarkGone(origin, u"it left");
}

void SessionMembers::Take(LinkId id, DirectFrame& direct) {
  Member* const sender = SenderOn(id);
  if (sender == nullptr) return Reject(id, u"it is no member");
  sender->undelivered.push_back({ItemKind::kMessage, direct.from, std::move(direct.body), {}});
  DeliverWhatMay();
}

// The newcomer counts from here on, though the game hears of it only in its turn.
void SessionMembers::NewcomerAnnounced(int32_t origin, const PlayerEntry& newcomer) {
  const Member* const sender = Find(origin);
  if (sender == nullptr || !MayAnnounce(*sender) || newcomer.id < kLowestId || newcomer.id == self_.id ||
      newcomer.place <= lastPlace_ || Find(newcomer.id) != nullptr || past_.contains(newcomer.id) ||
      Remaining() + 1 >= kMostPlayers + 1) {
    return;
  }
  Member& member = AddMember(newcomer);
  TellGone(member);
  std::vector<LinkId> unproven;
  for (const auto& [id, link] : links_) {
    if (link.phase == Phase::kUnproven && link.member == newcomer.id) unproven.push_back(id);
  }
  for (const LinkId link : unproven) Prove(link);
}

void SessionMembers::DeliverWhatMay() {
  // A delivery can introduce a player whose own messages wait for that.
  for (size_t before = ~size_t{0}; before != news_.size();) {
    before = news_.size();
    ForRemaining([this](Member& member) {
      if (member.introduced && !member.heldBack) Deliver(member);
    });
  }
}

void SessionMembers::Deliver(Member& sender) {
  for (; !sender.undelivered.empty(); sender.undelivered.pop_front()) {
    Delivery& delivery = sender.undelivered.front();
    if (delivery.kind == ItemKind::kMessage) {
      const bool forAnother = delivery.from != 0 && delivery.from != sender.player.id;
      if (forAnother && (!SpeaksForOthers(sender) || delivery.from < kLowestId)) {
        Note(u"Dropped a message of " + Digits(sender.player.id) + u": it speaks for another player");
        continue;
      }
      GameNews& news = news_.emplace_back();
      news.message.from = forAnother ? delivery.from : sender.player.id;
      news.message.body = std::move(delivery.body);
    } else if (delivery.kind == ItemKind::kNewcomer) {
      Member* const newcomer = Find(delivery.newcomer.id);
      if (newcomer == nullptr || newcomer->introduced) continue;
      newcomer->introduced = true;
      Tell(SessionEvent::kPlayerCreated, newcomer->player.id, newcomer->player.name);
    }
  }
}

void SessionMembers::Tell(SessionEvent event, int32_t player, std::u16string_view name) {
  GameNews& news = news_.emplace_back();
  news.message.event = event;
  news.message.player = player;
  news.name = name;
}

// Whether one of a message's recipients has it, or does not need it any more.
bool SessionMembers::Confirmed(const Member& sender, const Kept& kept, int32_t recipient) const {
  const uint32_t number = kept.item.number;
  if (recipient == self_.id) return number <= sender.received;  // others may have told of it first
  if (past_.contains(recipient)) return true;
  const auto found = members_.find(recipient);
  if (found == members_.end()) return now_ - kept.since > kKeptForUnknown;
  const auto has = found->second.has.find(sender.player.id);
  return has != found->second.has.end() && has->second >= number;
}

// Forgets the messages that everybody has.
void SessionMembers::ForgetReceived(Member& sender) {
  std::erase_if(sender.kept, [&](const auto& each) {
    const Kept& kept = each.second;
    return std::all_of(kept.item.recipients.begin(), kept.item.recipients.end(),
                       [&](int32_t recipient) { return Confirmed(sender, kept, recipient); });
  });
}

// Gives up who does not confirm the oldest of a player's messages. False when that is nobody here.
bool SessionMembers::MakeRoom(Member& sender) {
  ForgetReceived(sender);
  if (sender.kept.size() <= kMostKept) return true;
  const Kept oldest = sender.kept.begin()->second;
  std::vector<int32_t> behind;
  ForRemaining([&](const Member& member) {
    const int32_t id = member.player.id;
    if (Contains(oldest.item.recipients, id) && !Confirmed(sender, oldest, id)) behind.push_back(id);
  });
  for (const int32_t id : behind) MarkGone(id, u"it does not confirm what it is sent");
  return !behind.empty();
}

void SessionMembers::Take(LinkId id, const AliveFrame& alive) {
  Member* const sender = SenderOn(id);
  if (sender == nullptr) return;  // only a sign of life
  for (const auto& [origin, number] : alive.received) {
    Member* const other = Find(origin);
    if (other == nullptr || other->gone) continue;
    uint32_t& has = sender->has[origin];
    has = std::max(has, number);
    ForgetReceived(*other);
  }
}

// ---- Deaths

void SessionMembers::GiveUp(int32_t id, std::u16string_view why) { MarkGone(id, why); }

void SessionMembers::MarkGone(int32_t id, std::u16string_view why) {
  Member* const member = Find(id);
  if (member == nullptr || member->gone) return;
  Note(u"Player " + Digits(id) + u" is gone: " + std::u16string(why));
  member->gone = true;
  member->since = now_;
  member->unsent.clear();
  past_.insert(id);
  expected_.erase(id);
  if (member->link != 0) Drop(member->link, LinkTask::Kind::kClose);
  member->link = 0;
  std::erase_if(links_, [&](const auto& each) {
    if (each.second.member != id) return false;
    Post({LinkTask::Kind::kClose, each.first, {}, {}});
    return true;
  });
  const std::map<uint32_t, Kept> kept = member->kept;
  for (const auto& [number, each] : kept) {
    if (each.item.kind == ItemKind::kNewcomer) NewcomerAnnounced(id, each.item.newcomer);
  }
  ForRemaining([this](Member& remaining) { TellGone(remaining); });
  FinishJoin();
  SettleDeaths();
}

// All that is kept of the gone ones, and then that they are gone.
void SessionMembers::TellGone(Member& to) {
  GoneFrame gone;
  SettledFrame settled;
  for (const auto& [id, member] : members_) {
    if (!member.gone) continue;
    for (const auto& [number, kept] : member.kept) SendTo(to, EncodeFrame(ForwardFrame{id, kept.item}));
    gone.ids.push_back(id);
    if (member.settled) settled.ids.push_back(id);
  }
  if (!gone.ids.empty()) SendTo(to, EncodeFrame(gone));
  if (!settled.ids.empty()) SendTo(to, EncodeFrame(settled));
}

void SessionMembers::Take(LinkId id, const ForwardFrame& forward) {
  const Link& link = links_.at(id);
  if (link.phase != Phase::kUp) return Reject(id, u"it is no member");
  Member* const origin = Find(forward.origin);
  if (origin == nullptr || forward.origin == link.member) return;
  if (origin->kept.size() >= kMostKept) return Reject(id, u"it forwards too much");
  origin->kept.try_emplace(forward.item.number, Kept{forward.item, now_});
  // While the origin lives it says itself who comes in.
  if (origin->gone && forward.item.kind == ItemKind::kNewcomer)
    NewcomerAnnounced(forward.origin, forward.item.newcomer);
}

void SessionMembers::Take(LinkId id, const GoneFrame& gone) {
  Member* const sender = SenderOn(id);
  if (sender == nullptr) return Reject(id, u"it is no member");
  const int32_t senderId = sender->player.id;
  const uint32_t place = sender->player.place;
  sender->saidGone = {gone.ids.begin(), gone.ids.end()};
  if (Contains(gone.ids, self_.id)) return MarkGone(senderId, u"it has given up this one");
  for (const int32_t each : gone.ids) {
    const Member* const member = Find(each);
    if (member != nullptr && place < member->player.place) MarkGone(each, u"an older player gave it up");
  }
  SettleDeaths();
}

void SessionMembers::Take(LinkId id, const SettledFrame& settled) {
  Member* const sender = SenderOn(id);
  if (sender == nullptr) return Reject(id, u"it is no member");
  for (const int32_t each : settled.ids) {
    Member* const dead = Find(each);
    if (dead == nullptr || !dead->gone) continue;
    dead->settledBy.insert(sender->player.id);
    if (!dead->settled) sender->heldBack = true;
  }
  ForgetSettled();
}

// Tells the game of the dead when all that remain have said the same.
void SessionMembers::SettleDeaths() {
  std::vector<Member*> dead;
  for (auto& [id, member] : members_) {
    if (member.gone && !member.settled) dead.push_back(&member);
  }
  if (dead.empty() || state_ != State::kIn) return;
  bool all = true;
  ForRemaining([&](const Member& member) {
    for (const Member* each : dead) all = all && member.saidGone.contains(each->player.id);
  });
  if (!all) return;

  std::sort(dead.begin(), dead.end(),
            [](const Member* a, const Member* b) { return a->player.place < b->player.place; });
  const bool wasHost = IsHost();
  bool becomesHost = !wasHost;
  ForRemaining([&](const Member& member) { becomesHost = becomesHost && member.player.place > self_.place; });
  ForRemaining([](Member& member) { member.heldBack = false; });
  for (Member* const each : dead) {
    for (const auto& [number, kept] : each->kept) {
      if (number <= each->received || !Contains(kept.item.recipients, self_.id)) continue;
      each->undelivered.push_back({kept.item.kind, kept.item.from, kept.item.body, kept.item.newcomer});
    }
    if (!each->introduced) DeliverWhatMay();  // somebody who was ahead had announced it
    if (each->introduced) {
      Deliver(*each);
      if (std::exchange(becomesHost, false)) Tell(SessionEvent::kHostMovedHere, self_.id);
      Tell(SessionEvent::kPlayerDestroyed, each->player.id);
    }
    each->settled = true;
    each->undelivered.clear();
  }
  SettledFrame settled;
  for (const Member* each : dead) settled.ids.push_back(each->player.id);
  const std::string bytes = EncodeFrame(settled);
  ForRemaining([&](Member& member) { SendTo(member, bytes); });
  DeliverWhatMay();
  ForgetSettled();
  ConsiderApplicants();
}

// Nobody holds up the others by silence about the dead.
void SessionMembers::GiveUpWhoDoNotSettle() {
  std::set<int32_t> silent;
  for (const auto& [id, dead] : members_) {
    if (!dead.gone || dead.settled || now_ - dead.since <= kMostSettling) continue;
    for (const auto& [other, member] : members_) {
      if (!member.gone && !member.saidGone.contains(id)) silent.insert(other);
    }
  }
  for (const int32_t id : silent) MarkGone(id, u"it does not say what it knows of one that is gone");
}

// What is settled is kept until all have settled it, or should have.
void SessionMembers::ForgetSettled() {
  std::erase_if(members_, [this](const auto& each) {
    const Member& dead = each.second;
    if (!dead.settled) return false;
    return now_ - dead.since > 2 * kMostSettling ||
           std::all_of(members_.begin(), members_.end(), [&](const auto& other) {
             return other.second.gone || dead.settledBy.contains(other.first);
           });
  });
}

// ---- Time

void SessionMembers::Tick() {
  if (state_ == State::kClosed) return;
  GiveUpLateLinks();
  if (hostLink_ != 0 && now_ - joinBegan_ > kMostWaitForHost) FailJoin(u"the host does not let us in");
  GiveUpUnlinked();
  GiveUpWhoDoNotSettle();
  if (now_ - signBegan_ < kSignEvery) return;
  signBegan_ = now_;
  ForgetSettled();
  GiveSign();
}

void SessionMembers::GiveUpLateLinks() {
  // Giving one up can take others away.
  const std::vector<std::pair<LinkId, Link>> links(links_.begin(), links_.end());
  for (const auto& [id, link] : links) {
    if (FindLink(id) == nullptr) continue;
    const int64_t lasts = now_ - link.since;
    const bool silent = now_ - link.heard > kGivenUpAfter;
    switch (link.phase) {
      case Phase::kSilent:
        if (lasts > kMostSilence) Reject(id, u"it does not say what it wants");
        break;
      case Phase::kUnproven:
        if (lasts > kMostLinking) Reject(id, u"nobody announced it");
        break;
      case Phase::kCalling:
        if (lasts > kMostCalling) Reject(id, u"it does not answer");
        break;
      case Phase::kProving:
        if (lasts > kMostLinking) Reject(id, u"it does not answer");
        break;
      case Phase::kApplicant:
      case Phase::kAsking:
        if (silent) Reject(id, u"it does not answer");
        break;
      case Phase::kUp:
        if (silent) MarkGone(link.member, u"nothing was heard of it for three seconds");
        break;
    }
  }
}

// Newcomers that were announced and have made no link to this one.
void SessionMembers::GiveUpUnlinked() {
  std::vector<int32_t> unlinked;
  ForRemaining([&](const Member& member) {
    if (member.link == 0 && member.player.place > self_.place && now_ - member.since > kMostLinking)
      unlinked.push_back(member.player.id);
  });
  for (const int32_t id : unlinked) MarkGone(id, u"it did not link with this one");
}

// A sign of life, which says what was received of each.
void SessionMembers::GiveSign() {
  AliveFrame alive;
  ForRemaining([&](Member& member) {
    ForgetReceived(member);
    alive.received.emplace_back(member.player.id, member.received);
  });
  const std::string bytes = EncodeFrame(alive);
  for (const auto& [id, link] : links_) {
    if (link.phase == Phase::kUp || link.phase == Phase::kApplicant || link.phase == Phase::kAsking) {
      Post({LinkTask::Kind::kSendLoosely, id, bytes, {}});
    }
  }
}

}  // namespace platform
