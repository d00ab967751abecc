// The ground of the battle's tests: this machine in a session with others, who speak by script.
#pragma once

#include <string>

#include "net/fields.h"
#include "net/session.h"
#include "state/network.h"
#include "state/settings.h"
#include "tests/net/scripted_session.h"
#include "tests/support/game_test.h"

namespace qlm {

class BattleTest : public GameTest {
 protected:
  static constexpr int32_t kFirst = 0x10001;  // the first machine, which opened the session
  static constexpr int32_t kSecond = 0x10002;
  static constexpr int32_t kThird = 0x10003;

  BattleTest() {
    session = {};
    MyName = u"Me";
  }

  // This machine opens the session, and `others` come in.
  static void BecomeHost(int others = 0) {
    HostBattle();
    StartBattle();
    for (int i = 0; i < others; ++i) Come(kSecond + i);
    session.sent.clear();
  }

  // This machine is the second one, and `others` come in behind it.
  static void BecomeClient(int others = 0) {
    JoinBattle("there");
    MessageWriter init(MessageType::kInit);
    init.Byte(2).Long(kFirst).String(u"Host").Long(kSecond).String(u"Me").Long(0);
    Say(kFirst, init);
    StartBattle();
    for (int i = 0; i < others; ++i) Come(kThird + i);
    session.sent.clear();
  }

  static void Happen(platform::SessionEvent event, int32_t player = 0) {
    session.waiting.push_back({0, event, player, {}});
    NetPoll();
  }
  static void Come(int32_t player) { Happen(platform::SessionEvent::kPlayerCreated, player); }
  static void Go(int32_t player) { Happen(platform::SessionEvent::kPlayerDestroyed, player); }

  static void Say(int32_t from, MessageWriter& message) {
    session.waiting.push_back({from, platform::SessionEvent::kNone, 0, message.Take()});
    NetPoll();
  }
  static void Say(int32_t from, MessageType type) {
    MessageWriter message(type);
    Say(from, message);
  }

  // The types of what was sent, in order.
  static std::vector<int32_t> SentTypes() {
    std::vector<int32_t> types;
    for (const SentMessage& sent : session.sent) {
      int32_t type = -1;
      MessageReader(sent.body).Long(type);
      types.push_back(type);
    }
    return types;
  }

  static NetUser& User(int32_t index) { return network.NetUsers[index]; }
};

}  // namespace qlm
