// What of a skin's load stands already: its lines in the log, and which skin is in use.
#include "graphics/skin.h"

#include "base/paths.h"
#include "state/skin.h"
#include "tests/support/game_test.h"

namespace qlm {
namespace {

class Skin : public GameTest {};

TEST_F(Skin, LoadingLogsTheNameAndSetsThePath) {
  const Text path = WriteData(u"_qlmfiles\\ink.brd", "#TITLE ink\r\n");
  loadSkin(path, false);
  EXPECT_EQ(log, std::vector<Text>{u"[loadSkin] : ink.brd"});
  EXPECT_EQ(SkinPath, path);
}

TEST_F(Skin, AMissingSkinIsLoggedAndTheOneInUseStays) {
  SkinPath = u"\\old.brd";
  loadSkin(Join(AppPath, u"\\none.brd"), false);
  EXPECT_EQ(log, (std::vector<Text>{u"[loadSkin] : none.brd", u"SKIN NOT EXIST!"}));
  EXPECT_EQ(SkinPath, u"\\old.brd");
}

}  // namespace
}  // namespace qlm
