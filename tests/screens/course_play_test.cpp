// A whole course, from its loading to its end.
#include <array>
#include <vector>

#include "screens/road.h"
#include "state/courses.h"
#include "state/judgement.h"
#include "state/keys.h"
#include "state/session.h"
#include "state/settings.h"
#include "tests/play/play_test.h"

namespace qlm {
namespace {

class CoursePlay : public PlayTest {};

TEST_F(CoursePlay, RunsThroughItsJoins) {
  CourseMode = true;
  CourseSongs.resize(2);
  CourseSongs[0].title = u"One";
  CourseSongs[0].bpm = 150;
  CourseSongs[0].player = 1;
  CourseSongs[0].path = WriteText(u"song\\a.bms", u"\r\n#TITLE One\r\n#BPM 150\r\n#RANK 3\r\n#00011:01\r\n");
  CourseSongs[1] = CourseSongs[0];
  CourseSongs[1].title = u"Two";
  CourseSongs[1].bpm = 75;
  CourseSongs[1].path = WriteText(u"song\\b.bms", u"\r\n#TITLE Two\r\n#BPM 75\r\n#RANK 1\r\n#00011:02\r\n");
  numsongs = 2;
  CourseLoadMode = 1;
  DEMOMode = true;
  std::vector<Text> titles;
  RunFrames(10, [&](int32_t) {
    if (titles.empty() || titles.back() != HdrTitle) titles.push_back(HdrTitle);
    if (GameState == kStateResults) LaneDown[0] = true;
  });
  ReadyBMS(u"");
  titles.clear();
  StartPlay();
  // The join leaves the last song's header; each change puts its own song's there.
  EXPECT_EQ(titles, (std::vector<Text>{u"Two", u"One", u"Two"}));
  EXPECT_EQ(JudgeWindow, (std::array<int32_t, 4>{2, 4, 12, 16}));
  EXPECT_TRUE(PlayCleared);
  ASSERT_EQ(played.starts.size(), 2U);
  EXPECT_EQ(played.starts[0].slot, 1);
  EXPECT_EQ(played.starts[1].slot, 2);
  // Until its first tempo object the course runs at the last song's 75 BPM, 0.06 units a millisecond:
  // measures 0 (192 units) and 1 (19.2) take 3520 ms. Measure 2 at 150 BPM takes 1600 ms, measure 3 too,
  // measure 4 a tenth; the second song's note lies there, behind 3360 ms.
  EXPECT_EQ(played.starts[0].clock, 3520);
  EXPECT_EQ(played.starts[1].clock, 3520 + 1760);
}

}  // namespace
}  // namespace qlm
