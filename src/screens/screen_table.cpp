// The table of screens.
#include "screens/screen_table.h"

#include "base/table.h"
#include "play/input.h"
#include "screens/course_editor.h"
#include "screens/lane_choice.h"
#include "screens/name_entry.h"
#include "screens/results.h"
#include "screens/song_select_keys.h"
#include "state/session.h"

namespace qlm {
namespace {

using ScreenTable = Table<Screen, kStateAutoLanes>;

ScreenTable MakeTable() {
  ScreenTable table;
  for (const int32_t list : {kStateSongSelect, kStateLists, kStateCourses, kStateCourseSongs}) {
    table[list] = {.key = ProcessKey_SongSelect};
  }
  table[kStatePlay] = {.key = ProcessKey_Play};
  table[kStateResults] = {.key = ProcessKey_Results};
  table[kStateEditCourse] = {.key = ProcessKey_EditCourse, .settingKeys = false};
  table[kStateEnterName] = {.character = ProcessKey_EnterName, .settingKeys = false};
  table[kStateAutoLanes] = {.key = ProcessKey_AutoLanes};
  return table;
}

}  // namespace

const Screen& ScreenOf(int32_t gameState) {
  static const ScreenTable table = MakeTable();
  static const Screen unknown;
  const Screen* const screen = table.Find(gameState);
  return screen != nullptr ? *screen : unknown;
}

}  // namespace qlm
