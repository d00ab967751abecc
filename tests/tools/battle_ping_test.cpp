// `battle --ping`, against sessions on this machine.
#include "platform/session_service.h"
#include "tests/tools/probe.h"

namespace qlm {
namespace {

TEST_F(ProbeTest, PingTellsWhoHostsABattleAndHowLongAnswersTake) {
  const auto session = platform::SessionService::Open(0, u"Ann");
  const std::string address = "127.0.0.1:" + std::to_string(session->Port());
  const ProcessResult result = Probe({"battle", "--ping", address});
  EXPECT_EQ(result.exitStatus, 0);
  EXPECT_TRUE(Holds(result.output, "\"asked\": 10"));
  EXPECT_TRUE(Holds(result.output, "\"answered\": 10"));
  EXPECT_TRUE(Holds(result.output, "\"address\": \"" + address + "\""));
  EXPECT_TRUE(Holds(result.output, "\"host\": \"Ann\""));
  EXPECT_TRUE(Holds(result.output, "\"players\": 1"));
  EXPECT_TRUE(Holds(result.output, "\"middleMs\": "));
}

TEST_F(ProbeTest, PingWithoutAnAnswerSaysWhatToLookAt) {
  for (const std::string address : {"127.0.0.1:9", "127.0.0.1:0"}) {
    const ProcessResult result = Probe({"battle", "--ping", address});
    EXPECT_EQ(result.exitStatus, 1);
    EXPECT_TRUE(Holds(result.output, "\"answered\": 0"));
    EXPECT_TRUE(Holds(result.errors, address + ": no answer"));
  }
}

}  // namespace
}  // namespace qlm
