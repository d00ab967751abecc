// Settings and play options by name.
#include "shell/set_value.h"

#include "state/gauge.h"
#include "state/options.h"
#include "state/session.h"
#include "state/settings.h"
#include "tests/support/game_test.h"

namespace qlm {
namespace {

class SetValueTest : public GameTest {};

TEST_F(SetValueTest, TakesSettingsInAnyLetterCase) {
  EXPECT_EQ(SetValue(u"hispeed", u"2.5"), std::nullopt);
  EXPECT_EQ(SetValue(u"NOBGA", u"True"), std::nullopt);
  EXPECT_EQ(SetValue(u"DRAWLIMIT", u"3"), std::nullopt);
  EXPECT_EQ(SetValue(u"MyName", u"me"), std::nullopt);
  EXPECT_EQ(HiSpeed, 2.5F);
  EXPECT_TRUE(NoBGA);
  EXPECT_EQ(DRAWLIMIT, 3);
  EXPECT_EQ(MyName, u"me");
}

TEST_F(SetValueTest, TakesEveryPlayOption) {
  const std::pair<TextView, bool*> options[] = {{u"Hidden", &Hidden},
                                                {u"Sudden", &Sudden},
                                                {u"Stealth", &Stealth},
                                                {u"Accel", &Accel},
                                                {u"Quil", &Quil},
                                                {u"HalfField", &HalfField},
                                                {u"Random", &Random},
                                                {u"ExRandom", &ExRandom},
                                                {u"FourDMode", &FourDMode},
                                                {u"Pressure", &Pressure},
                                                {u"HazardGauge", &HazardGauge},
                                                {u"RandomHiSpeed", &RandomHiSpeed},
                                                {u"ComboHiSpeed", &ComboHiSpeed},
                                                {u"EchoEnabled", &EchoEnabled}};
  for (const auto& [name, flag] : options) {
    EXPECT_EQ(SetValue(name, u"1"), std::nullopt) << Utf8(name);
    EXPECT_TRUE(*flag) << Utf8(name);
    EXPECT_EQ(SetValue(name, u"False"), std::nullopt);
    EXPECT_FALSE(*flag) << Utf8(name);
    EXPECT_NE(SetValue(name, u"maybe"), std::nullopt) << Utf8(name);
  }
}

TEST_F(SetValueTest, PlayerForceIsNoneToDoublePlay) {
  EXPECT_EQ(SetValue(u"PlayerForce", u"3"), std::nullopt);
  EXPECT_EQ(PlayerForce, 3);
  EXPECT_NE(SetValue(u"PlayerForce", u"4"), std::nullopt);
  EXPECT_NE(SetValue(u"PlayerForce", u"-1"), std::nullopt);
  EXPECT_EQ(PlayerForce, 3);
}

TEST_F(SetValueTest, AutoLanesAreChannelsJoinedByPlus) {
  EXPECT_EQ(SetValue(u"AutoLane", u"11+17+29"), std::nullopt);
  std::array<bool, kLanes> expected{};
  expected[0] = expected[5] = expected[18] = true;
  EXPECT_EQ(AutoLane, expected);
  EXPECT_NE(SetValue(u"AutoLane", u"11+20"), std::nullopt);
  EXPECT_NE(SetValue(u"AutoLane", u"x"), std::nullopt);
  EXPECT_EQ(AutoLane, expected);
  EXPECT_EQ(SetValue(u"AutoLane", u""), std::nullopt);
  EXPECT_EQ(AutoLane, (std::array<bool, kLanes>{}));
}

TEST_F(SetValueTest, UnknownNamesAndUnfitValuesAreTold) {
  EXPECT_EQ(SetValue(u"Speed", u"1"), u"there is no setting and no play option by the name Speed");
  EXPECT_EQ(SetValue(u"Sleep", u"long"), u"\"long\" is no value for Sleep");
}

}  // namespace
}  // namespace qlm
