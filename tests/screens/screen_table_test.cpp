// The table of screens: which routines each state of the game has.
#include "screens/screen_table.h"

#include <gtest/gtest.h>

#include <map>

#include "play/input.h"
#include "screens/course_editor.h"
#include "screens/course_name.h"
#include "screens/lane_choice.h"
#include "screens/name_entry.h"
#include "screens/results.h"
#include "screens/song_select_keys.h"

namespace qlm {
namespace {

TEST(ScreenTable, EachStateHasItsOwnRoutineForKeys) {
  const std::map<int32_t, void (*)(int32_t)> routines = {
      {0, ProcessKey_SongSelect},  {3, ProcessKey_Play},       {5, ProcessKey_Results},
      {6, ProcessKey_SongSelect},  {7, ProcessKey_SongSelect}, {8, ProcessKey_SongSelect},
      {10, ProcessKey_EditCourse}, {12, ProcessKey_AutoLanes},
  };
  for (int32_t state = -2; state <= 20; ++state) {
    const auto found = routines.find(state);
    EXPECT_EQ(ScreenOf(state).key, found != routines.end() ? found->second : nullptr) << state;
  }
}

TEST(ScreenTable, OnlyTheEntriesOfNamesTakeCharacters) {
  const std::map<int32_t, void (*)(int32_t)> routines = {{9, ProcessKey_EnterCourse},
                                                         {11, ProcessKey_EnterName}};
  for (int32_t state = -2; state <= 20; ++state) {
    const auto found = routines.find(state);
    EXPECT_EQ(ScreenOf(state).character, found != routines.end() ? found->second : nullptr) << state;
  }
}

TEST(ScreenTable, KeysOfTheSettingsWorkButInTheCourseEditorAndTheEntryOfAName) {
  for (int32_t state = -2; state <= 20; ++state) {
    EXPECT_EQ(ScreenOf(state).settingKeys, state != 10 && state != 11) << state;
  }
}

}  // namespace
}  // namespace qlm
