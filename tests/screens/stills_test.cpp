// What a display that comes back leads to.
#include "screens/stills.h"

#include "state/session.h"
#include "state/skin.h"
#include "tests/play/play_test.h"

namespace qlm {
namespace {

class Stills : public PlayTest {
 protected:
  Stills() {
    SkinPath = u"\\skins\\ink.brd";
    Paused = true;
    PlayAlive = true;
    log.clear();
  }
};

TEST_F(Stills, APlayReadsItsSkinAnewAndGoesOn) {
  GameState = kStatePlay;
  RestorePictures();
  EXPECT_EQ(log[0], u"[loadSkin] : ink.brd");
  EXPECT_FALSE(Paused);
}

TEST_F(Stills, ResultsGoOnToo) {
  GameState = kStateResults;
  RestorePictures();
  EXPECT_FALSE(Paused);
}

TEST_F(Stills, OtherScreensAndAPlayThatIsOverStayPaused) {
  for (const int32_t state : {kStateSongSelect, kStateLists}) {
    GameState = state;
    RestorePictures();
    EXPECT_TRUE(Paused) << state;
  }
  GameState = kStatePlay;
  PlayAlive = false;
  RestorePictures();
  EXPECT_TRUE(Paused);
}

}  // namespace
}  // namespace qlm
