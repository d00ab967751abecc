// Peers that are hostile or broken: each frame here is written by hand.
#include <gtest/gtest.h>

#include <algorithm>
#include <string>
#include <vector>

#include "platform/session_members.h"
#include "platform/session_wire.h"

namespace platform {
namespace {

constexpr int32_t kSomeId = 0x20000;
constexpr int32_t kFirstId = 0x10001;

// To a session of two.
WelcomeFrame SomeWelcome() {
  WelcomeFrame welcome;
  welcome.session = 1;
  welcome.you.id = kFirstId + 1;
  welcome.you.place = 1;
  welcome.members.resize(1);
  welcome.members[0].player.id = kFirstId;
  return welcome;
}

// A host whose peers are the test.
class Peers : public testing::Test {
 protected:
  Peers() { host.Open(u"host"); }

  // A link that came in from 127.0.0.1:PORT.
  LinkId Come(uint16_t port = 1) { return host.LinkCame({0x7F000001, port}); }
  void Say(LinkId link, const Frame& frame) { host.Received(link, EncodeFrame(frame)); }

  // One that is a player: its link.
  LinkId Enter(const std::u16string& name = u"b") {
    const LinkId link = Come();
    Say(link, HelloFrame{.name = name});
    for (const GameNews& news : host.TakeNews()) {
      if (news.message.event != SessionEvent::kPlayerCreated) continue;
      lastId = news.message.player;
      lastName = news.name;
      host.NewcomerTaken(lastId);
    }
    host.TakeTasks();
    return link;
  }

  ItemFrame Message(uint32_t number, const std::string& body = "x") const {
    return {.number = number, .recipients = {host.OwnId()}, .body = body};
  }

  // Whether a link was closed since the last look.
  bool Closed(LinkId link) {
    const std::vector<LinkTask> tasks = host.TakeTasks();
    return std::any_of(tasks.begin(), tasks.end(), [link](const LinkTask& task) {
      return task.link == link &&
             (task.kind == LinkTask::Kind::kClose || task.kind == LinkTask::Kind::kFinish);
    });
  }
  // The events and bodies that came for the game.
  std::vector<std::string> News() {
    std::vector<std::string> all;
    for (const GameNews& news : host.TakeNews()) {
      all.push_back(news.message.event == SessionEvent::kNone
                        ? news.message.body
                        : std::to_string(static_cast<int>(news.message.event)));
    }
    return all;
  }
  std::string Notes() {
    std::string all;
    for (const std::u16string& note : host.TakeNotes()) all.append(note.begin(), note.end()).append("|");
    return all;
  }

  SessionMembers host{[count = uint64_t{0}]() mutable { return ++count; }};
  int32_t lastId = 0;
  std::u16string lastName;
};

TEST_F(Peers, AnotherVersionIsRefusedAndBothSayWhy) {
  const LinkId link = Come(4711);
  Say(link, HelloFrame{.version = 2, .name = u"new"});
  EXPECT_EQ(Notes(), "Dropped 127.0.0.1:4711: it is of version 2, this is 1|");
  // What it is answered tells it the same.
  SessionMembers joiner([] { return uint64_t{1}; });
  joiner.Join({0x7F000001, 4711}, u"new");
  const LinkId asked = joiner.TakeTasks().at(0).link;
  joiner.LinkMade(asked);
  for (const LinkTask& task : host.TakeTasks()) {
    if (task.kind == LinkTask::Kind::kSend) joiner.Received(asked, task.bytes);
  }
  EXPECT_EQ(joiner.GetState(), SessionMembers::State::kClosed);
  EXPECT_EQ(joiner.TakeNotes(),
            (std::vector<std::u16string>{u"Could not join: the session is of version 1, this is 1"}));
}

TEST_F(Peers, WhoSaysNothingForTwoSecondsIsDropped) {
  const LinkId link = Come();
  host.SetTime(2000);
  host.Tick();
  EXPECT_FALSE(Closed(link));
  host.SetTime(2001);
  host.Tick();
  EXPECT_TRUE(Closed(link));
}

TEST_F(Peers, EightStrangersAreHeardAndTheNinthIsNot) {
  for (int i = 0; i < 8; ++i) EXPECT_FALSE(Closed(Come()));
  EXPECT_TRUE(Closed(Come()));
}

TEST_F(Peers, WhatIsNoFrameDropsItsSender) {
  const std::string good = EncodeFrame(HelloFrame{.name = u"b"});
  for (const std::string& bad : {std::string(), std::string(1, '\x7F'), good.substr(0, good.size() - 1),
                                 good + "x", std::string(kLargestFrame + 1, '\0')}) {
    const LinkId link = Come();
    host.Received(link, bad);
    EXPECT_TRUE(Closed(link)) << bad.size() << " bytes";
  }
  EXPECT_EQ(News(), std::vector<std::string>{});
}

TEST_F(Peers, AStrangerSaysNothingToTheGame) {
  const std::vector<Frame> frames = {Message(1),
                                     DirectFrame{0, "x"},
                                     ForwardFrame{host.OwnId(), Message(1)},
                                     GoneFrame{{host.OwnId()}},
                                     SettledFrame{{1}},
                                     ExpectFrame{kSomeId, 1},
                                     SomeWelcome(),
                                     LinkedFrame(),
                                     RefusalFrame()};
  for (const Frame& frame : frames) {
    const LinkId link = Come();
    Say(link, frame);
    EXPECT_TRUE(Closed(link)) << "frame " << frame.index();
  }
  EXPECT_EQ(News(), std::vector<std::string>{});
}

TEST_F(Peers, AMessageOfFourKibibytesPassesAndALongerOneDropsItsSender) {
  const LinkId link = Enter();
  Say(link, Message(1, std::string(4096, 'x')));
  EXPECT_EQ(News().size(), 1U);
  Say(link, Message(2, std::string(4097, 'x')));
  EXPECT_TRUE(Closed(link));
  EXPECT_EQ(News(), (std::vector<std::string>{"5"}));
}

// Three seconds of silence are forgiven, and so is what was sent in them when it comes at once.
TEST_F(Peers, MoreThanFiveHundredMessagesASecondDropTheirSender) {
  const LinkId link = Enter();
  uint32_t number = 0;
  for (int i = 0; i < 1500; ++i) Say(link, Message(++number));
  EXPECT_FALSE(Closed(link));
  // From here on 500 a second pass for ever.
  for (int64_t now = 100; now <= 5000; now += 100) {
    host.SetTime(now);
    for (int i = 0; i < 50; ++i) Say(link, Message(++number));
  }
  EXPECT_FALSE(Closed(link));
  Say(link, Message(++number));
  EXPECT_TRUE(Closed(link));
  const std::vector<std::string> news = News();
  EXPECT_EQ(news.size(), 4001U);
  EXPECT_EQ(news.back(), "5");
  EXPECT_NE(Notes().find("it sends too much"), std::string::npos);
}

TEST_F(Peers, OtherFramesAreCountedToo) {
  const LinkId link = Enter();
  for (int i = 0; i < 12'000 - 1; ++i) Say(link, AliveFrame{});  // its greeting counts too
  EXPECT_FALSE(Closed(link));
  Say(link, AliveFrame{});
  EXPECT_TRUE(Closed(link));
}

TEST_F(Peers, NumbersThatDoNotGrowDropTheirSender) {
  const LinkId link = Enter();
  Say(link, Message(5));
  Say(link, Message(5));
  EXPECT_TRUE(Closed(link));
  EXPECT_EQ(News(), (std::vector<std::string>{"x", "5"}));
}

TEST_F(Peers, OnlyTheHostAnnouncesNewcomers) {
  const LinkId link = Enter();
  Say(link, ItemFrame{.number = 1,
                      .recipients = {host.OwnId()},
                      .kind = ItemKind::kNewcomer,
                      .newcomer = {kSomeId, 9, u"invented"}});
  Say(link, ExpectFrame{kSomeId, 1});
  EXPECT_EQ(News(), std::vector<std::string>{});
  const LinkId other = Come();
  Say(other, LinkFrame{.session = 1, .id = kSomeId, .token = 1});
  host.SetTime(6001);
  host.Tick();
  EXPECT_TRUE(Closed(other));
}

// A link of one's own to the host does not make one another player there.
TEST_F(Peers, NobodyTakesAnothersLink) {
  Enter();
  const LinkId link = Come();
  Say(link, LinkFrame{.session = 1, .id = lastId, .token = 0});
  EXPECT_TRUE(Closed(link));
  EXPECT_NE(Notes().find("it is not who it says it is"), std::string::npos);
}

TEST_F(Peers, AMemberDoesNotPutAnOlderOneOut) {
  const LinkId b = Enter();
  const int32_t idOfB = lastId;
  const LinkId c = Enter();
  Say(c, GoneFrame{{idOfB}});
  EXPECT_FALSE(Closed(b));
  EXPECT_EQ(News(), std::vector<std::string>{});
}

// B lives, and never says that it knows of C's end.
TEST_F(Peers, WhoIsSilentAboutADeathDoesNotHoldUpTheOthers) {
  const LinkId b = Enter();
  const LinkId c = Enter();
  host.LinkLost(c);
  for (int64_t now = 0; now <= 8000; now += 1000) {
    host.SetTime(now);
    Say(b, AliveFrame{});
    host.Tick();
  }
  EXPECT_EQ(News(), std::vector<std::string>{});
  host.SetTime(8001);
  host.Tick();
  EXPECT_EQ(News(), (std::vector<std::string>{"5", "5"}));
}

// A member whose host is the test.
class Newcomers : public testing::Test {
 protected:
  Newcomers() {
    member.Join({0x7F000001, 1}, u"me");
    toHost = member.TakeTasks().at(0).link;
    member.LinkMade(toHost);
    HostSays(SomeWelcome());
  }
  void HostSays(const Frame& frame) { member.Received(toHost, EncodeFrame(frame)); }
  void HostAnnounces(int32_t id) {
    HostSays(ItemFrame{
        .number = 1, .recipients = {member.OwnId()}, .kind = ItemKind::kNewcomer, .newcomer = {id, 9, u"n"}});
  }
  // Whether one that says it is `id` is taken for it.
  bool IsTaken(int32_t id, uint64_t token) {
    const LinkId link = member.LinkCame({0x7F000001, 2});
    member.TakeTasks();
    member.Received(link, EncodeFrame(LinkFrame{.session = 1, .id = id, .token = token}));
    const std::vector<LinkTask> tasks = member.TakeTasks();
    return !tasks.empty() && tasks[0].kind == LinkTask::Kind::kSend &&
           std::holds_alternative<LinkedFrame>(*DecodeFrame(tasks[0].bytes));
  }

  SessionMembers member{[] { return uint64_t{1}; }};
  LinkId toHost = 0;
};

TEST_F(Newcomers, ProveThemselvesByWhatTheHostTold) {
  HostSays(ExpectFrame{kSomeId, 7});
  HostAnnounces(kSomeId);
  EXPECT_FALSE(IsTaken(kSomeId, 8));
  EXPECT_TRUE(IsTaken(kSomeId, 7));
  EXPECT_FALSE(IsTaken(kSomeId, 7)) << "it is here already";
}

TEST_F(Newcomers, AreExpectedHoweverManyDidNotCome) {
  for (int32_t i = 0; i < 20; ++i) HostSays(ExpectFrame{kSomeId + i, 7});
  HostAnnounces(kSomeId + 19);
  EXPECT_TRUE(IsTaken(kSomeId + 19, 7));
}

// Another member's word on what the host said counts only when the host is gone.
TEST(Forwarded, NewcomersOfALivingHostDoNotCount) {
  WelcomeFrame welcome = SomeWelcome();
  welcome.you.place = 2;
  welcome.members.push_back(welcome.members[0]);
  welcome.members[1].player.id = kSomeId;
  welcome.members[1].player.place = 1;
  SessionMembers member([] { return uint64_t{1}; });
  member.Join({0x7F000001, 1}, u"me");
  const LinkId toHost = member.TakeTasks().at(0).link;
  member.LinkMade(toHost);
  member.Received(toHost, EncodeFrame(welcome));
  LinkId toOther = 0;
  for (const LinkTask& task : member.TakeTasks()) {
    if (task.kind == LinkTask::Kind::kConnect) toOther = task.link;
  }
  member.LinkMade(toOther);
  member.Received(toOther, EncodeFrame(LinkedFrame()));
  ASSERT_EQ(member.GetState(), SessionMembers::State::kIn);
  const ItemFrame newcomer = {.number = 1,
                              .recipients = {member.OwnId()},
                              .kind = ItemKind::kNewcomer,
                              .newcomer = {kSomeId + 1, 9, u"n"}};
  member.Received(toOther, EncodeFrame(ForwardFrame{kFirstId, newcomer}));
  const auto sentTo = [&] {
    member.SendToOne(kSomeId + 1, "hello", 0);
    member.SetTime(6001);
    member.Received(toHost, EncodeFrame(AliveFrame{}));
    member.Received(toOther, EncodeFrame(AliveFrame{}));
    member.Tick();
    return member.TakeNotes().size();
  };
  EXPECT_EQ(sentTo(), 0U) << "nobody is awaited, and nobody given up";
  // The host is gone, and what it had said counts now.
  member.LinkLost(toHost);
  member.TakeNotes();
  member.Received(toOther, EncodeFrame(GoneFrame{{kFirstId}}));
  EXPECT_TRUE(member.TakeNews().empty()) << "the newcomer has not said what it knows";
}

// C says that it is there, and never that it received anything.
TEST_F(Peers, WhoConfirmsNothingGoesAndNotWhoSends) {
  const LinkId b = Enter();
  const LinkId c = Enter();
  const int32_t idOfC = lastId;
  for (uint32_t i = 1; i <= 4097; ++i) {
    host.SetTime(i * 2);
    ItemFrame item = Message(i);
    item.recipients.push_back(idOfC);
    Say(b, item);
    if (i % 500 == 0) {
      Say(c, AliveFrame{});
      host.Tick();
    }
  }
  const std::vector<LinkTask> tasks = host.TakeTasks();
  const auto closed = [&](LinkId link) {
    return std::any_of(tasks.begin(), tasks.end(), [link](const LinkTask& task) {
      return task.link == link && task.kind == LinkTask::Kind::kClose;
    });
  };
  EXPECT_TRUE(closed(c));
  EXPECT_FALSE(closed(b));
}

TEST_F(Peers, WhatIsToldOfALivingPlayerIsNotDelivered) {
  Enter();
  const int32_t idOfB = lastId;
  const LinkId c = Enter();
  Say(c, ForwardFrame{idOfB, Message(1, "forged")});
  EXPECT_EQ(News(), std::vector<std::string>{});
}

TEST_F(Peers, NamesAreCutAndFreedOfWhatCannotBeShown) {
  Enter(
      u"a\x01\n\x7F\x9F"
      u"b");
  EXPECT_EQ(lastName, u"ab");
  Enter(std::u16string(40, u'n'));
  EXPECT_EQ(lastName, std::u16string(32, u'n'));
}

TEST(PlayerNames, PairsStayTogetherAndHalvesGo) {
  EXPECT_EQ(CleanPlayerName(u"\xD83D\xDE00"), u"\xD83D\xDE00");
  EXPECT_EQ(CleanPlayerName(std::u16string(u"\xD83D") + u"x\xDE00"), u"x");
  // 31 letters, and a pair that would be letters 32 and 33.
  EXPECT_EQ(CleanPlayerName(std::u16string(31, u'n') + u"\xD83D\xDE00"), std::u16string(31, u'n'));
  EXPECT_EQ(CleanPlayerName(u""), u"");
}

TEST_F(Peers, AWelcomeThatMakesNoSenseEndsTheJoin) {
  const WelcomeFrame good = SomeWelcome();
  std::vector<WelcomeFrame> bad(6, good);
  bad[0].members.clear();
  bad[1].members.assign(5, good.members[0]);
  bad[2].you.id = kFirstId;
  bad[3].you.place = 0;
  bad[4].members[0].player.id = 3;
  bad[5].gone = {kFirstId};
  for (size_t i = 0; i <= bad.size(); ++i) {
    SessionMembers joiner([] { return uint64_t{1}; });
    joiner.Join({0x7F000001, 1}, u"me");
    const LinkId asked = joiner.TakeTasks().at(0).link;
    joiner.LinkMade(asked);
    joiner.Received(asked, EncodeFrame(i < bad.size() ? bad[i] : good));
    EXPECT_EQ(joiner.GetState(), i < bad.size() ? SessionMembers::State::kClosed : SessionMembers::State::kIn)
        << i;
  }
}

TEST(SessionWire, EachFrameIsReadAsItWasWritten) {
  const ItemFrame message = {
      .number = 7, .recipients = {kSomeId, kFirstId}, .from = kSomeId, .body = std::string("a\0b", 3)};
  WelcomeFrame welcome = SomeWelcome();
  welcome.members[0].address = {0x7F000001, 80};
  welcome.gone = {77};
  const std::vector<Frame> frames = {
      HelloFrame{.name = u"n"},
      RefusalFrame{.reason = Refusal::kNotHost},
      welcome,
      ExpectFrame{kSomeId, 0x123456789ABCDEF0},
      LinkFrame{.session = 1, .id = kSomeId, .token = 2},
      LinkedFrame(),
      message,
      DirectFrame{kSomeId, "body"},
      ForwardFrame{kFirstId, message},
      GoneFrame{{1, 2, 3}},
      SettledFrame{{}},
      AliveFrame{{{kSomeId, 9}}},
  };
  ASSERT_EQ(frames.size(), std::variant_size_v<Frame>);
  for (const Frame& frame : frames) {
    const std::string bytes = EncodeFrame(frame);
    const std::optional<Frame> read = DecodeFrame(bytes);
    ASSERT_TRUE(read.has_value()) << frame.index();
    EXPECT_EQ(read->index(), frame.index());
    EXPECT_EQ(EncodeFrame(*read), bytes);
  }
  const auto read = std::get<ItemFrame>(*DecodeFrame(EncodeFrame(message)));
  EXPECT_EQ(read.number, 7U);
  EXPECT_EQ(read.recipients, (std::vector<int32_t>{kSomeId, kFirstId}));
  EXPECT_EQ(read.from, kSomeId);
  EXPECT_EQ(read.body, std::string("a\0b", 3));
}

TEST(SessionWire, BytesOfAMessage) {
  const ItemFrame item = {.number = 0x01020304, .recipients = {0x10002}, .from = 0, .body = "hi"};
  const std::string bytes = EncodeFrame(item);
  EXPECT_EQ(bytes, std::string("\x06\x04\x03\x02\x01\x01\x02\0\x01\0\x01\0\0\0\0hi", 17));
}

TEST(SessionWire, AnAnswerIsNeverLongerThanItsQuestion) {
  const size_t question = EncodeQuestion({1}).size();
  EXPECT_LE(EncodeAnswer({1, 2, 4, std::u16string(kLongestPlayerName, u'n')}).size(), question);
  std::string cut = EncodeQuestion({1});
  cut.pop_back();
  EXPECT_FALSE(DecodeQuestion(cut).has_value());
}

}  // namespace
}  // namespace platform
