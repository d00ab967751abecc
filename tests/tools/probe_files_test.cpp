// The probe's commands for files of the game: `keys` and `dump`.
#include "tests/tools/probe.h"

#include "platform/files.h"

namespace qlm {
namespace {

TEST_F(ProbeTest, NewKeyFileStartsFromTheDefaultKeys) {
  const ProcessResult result =
      Probe({"keys", At("k.dat"), "--set", "260=7", "--set", "44=12", "--set", "31=0"});
  EXPECT_EQ(result.exitStatus, 0) << result.errors;
  ExpectKeysInOrder(result.output, {"functions", "unknown"});
  EXPECT_TRUE(Holds(result.output, "{\"code\": 11, \"inputs\": [], \"text\": \"11\\u0009\"}"));
  EXPECT_TRUE(Holds(result.output, "{\"code\": 12, \"inputs\": [44], \"text\": \"12\\u0009[44]\"}"));
  EXPECT_TRUE(Holds(result.output, "{\"code\": 16, \"inputs\": [42, 57], \"text\": \"16\\u0009[42][57]\"}"));
  EXPECT_TRUE(Holds(result.output, "{\"code\": 7, \"inputs\": [260], \"text\": \"07→\\u0009[260]\"}"));
  EXPECT_EQ(ReadBytes(platform::InnerPath(At("k.dat"))).size(), 802U);
  EXPECT_EQ(Probe({"keys", At("k.dat")}).output, result.output);
}

TEST_F(ProbeTest, KeyFileIsChangedInItsPlace) {
  Probe({"keys", At("k.dat"), "--set", "260=7"});
  const std::string output = Probe({"keys", At("k.dat"), "--set", "261=7"}).output;
  EXPECT_TRUE(Holds(output, "\"07→\\u0009[260][261]\""));
}

TEST_F(ProbeTest, FunctionsStandInTheOrderOfTheList) {
  const std::string output = Probe({"keys", At("k.dat"), "--set", "260=7"}).output;
  size_t from = 0;
  for (const int code :
       {11, 12, 13, 14, 15, 16, 17, 18, 19, 21, 22, 23, 24, 25, 26, 27, 28, 29, 1, 2, 3, 4, 5, 6, 7, 8}) {
    const size_t at = output.find("{\"code\": " + std::to_string(code) + ",", from);
    ASSERT_NE(at, std::string::npos) << code;
    from = at;
  }
}

TEST_F(ProbeTest, KeyFileThatCannotBeReadOrWrittenIsRefused) {
  EXPECT_EQ(Probe({"keys", At("none.dat")}).exitStatus, 1);
  EXPECT_EQ(Probe({"keys", SystemFolder(), "--set", "44=11"}).exitStatus, 1);
  EXPECT_EQ(Probe({"keys", At("no/such/k.dat"), "--set", "44=11"}).exitStatus, 1);
  for (const std::string set : {"44", "0=11", "401=11", "44=9", "44=10", "44=20", "44=30", "44=-1", "x=11"}) {
    EXPECT_EQ(Probe({"keys", At("k.dat"), "--set", set}).exitStatus, 2) << set;
  }
  EXPECT_EQ(Probe({"keys"}).exitStatus, 2);
}

TEST_F(ProbeTest, DumpOfAKeyFileIsItsKeys) {
  Probe({"keys", At("qlm_keycnf.dat"), "--set", "300=8"});
  const ProcessResult result = Probe({"dump", At("qlm_keycnf.dat")});
  EXPECT_EQ(result.exitStatus, 0) << result.errors;
  EXPECT_EQ(result.output, Probe({"keys", At("qlm_keycnf.dat")}).output);
  WriteData(u"odd\\qlm_keycnf.dat", std::string("\0\0\x63\0\xFF\xFF", 6));
  EXPECT_TRUE(Holds(Probe({"dump", At("odd/qlm_keycnf.dat")}).output,
                    "\"unknown\": [\n    [1, 99],\n    [2, -1]\n  ]"));
}

TEST_F(ProbeTest, DumpTellsWhatTheGameTakesFromItsSettings) {
  WriteText(u"_qlmfiles\\qlm_conf.ini",
            u"[Setting]\r\nHiSpeed=2.5\r\nSleep=abc\r\nSCRATCH1P=1\r\nMine=x\r\n[MainForm]\r\nLeft=3\r\n"
            u"[quillmarch]\r\nLoadBudget=9\r\n");
  const ProcessResult result = Probe({"dump", At("_qlmfiles/qlm_conf.ini")});
  EXPECT_EQ(result.exitStatus, 0) << result.errors;
  ExpectKeysInOrder(result.output, {"settings", "absent", "refused", "unknown"});
  EXPECT_TRUE(Holds(result.output, "[\"Setting\", \"HiSpeed\", 2.5]"));
  EXPECT_TRUE(Holds(result.output, "[\"Setting\", \"SCRATCH1P\", true]"));
  EXPECT_TRUE(Holds(result.output, "[\"Setting\", \"CourseLoadMode\", 1]"));
  EXPECT_TRUE(Holds(result.output, "\"refused\": [\n    [\"Setting\", \"Sleep\"]\n  ]"));
  EXPECT_TRUE(Holds(result.output, "\"unknown\": [\n    [\"Setting\", \"Mine\", \"x\"]\n  ]"));
}

}  // namespace
}  // namespace qlm
