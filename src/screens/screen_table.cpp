// The table of screens.
#include "screens/screen_table.h"

#include "base/table.h"
#include "play/input.h"
#include "screens/course_editor.h"
#include "screens/course_editor_frame.h"
#include "screens/course_name.h"
#include "screens/lane_choice.h"
#include "screens/list_cursor.h"
#include "screens/name_entry.h"
#include "screens/results.h"
#include "screens/song_find.h"
#include "screens/song_select.h"
#include "screens/song_select_keys.h"
#include "state/session.h"
#include "state/song_find.h"

namespace qlm {
namespace {

using ScreenTable = Table<Screen, kStateAutoLanes>;

ScreenTable MakeTable() {
  ScreenTable table;
  for (const int32_t list : {kStateSongSelect, kStateLists, kStateCourses}) {
    table[list] = {
        .frame = ListFrame, .key = ProcessKey_SongSelect, .mouse = DragList, .wheel = TurnListWheel};
  }
  for (const int32_t wait : {kStateBattleSongs, kStateBattleStart}) table[wait] = {.frame = ListFrame};
  table[kStateCourseSongs] = {.frame = ListFrame, .key = ProcessKey_SongSelect};
  table[kStatePlay] = {.key = ProcessKey_Play};
  table[kStateResults] = {.key = ProcessKey_Results};
  // Quirk: the keys of the settings work while the name of a course is typed.
  table[kStateEnterCourse] = {.frame = mEditCourse, .character = ProcessKey_EnterCourse};
  table[kStateEditCourse] = {.frame = mEditCourse, .key = ProcessKey_EditCourse, .settingKeys = false};
  table[kStateEnterName] = {.character = ProcessKey_EnterName, .settingKeys = false};
  table[kStateAutoLanes] = {.frame = DrawLaneChoice, .key = ProcessKey_AutoLanes};
  return table;
}

}  // namespace

const Screen& ScreenOf(int32_t gameState) {
  static const ScreenTable table = MakeTable();
  static const Screen unknown;
  static const Screen findLine = {
      .frame = ListFrame, .character = TypeInFindLine, .wheel = TurnListWheel, .settingKeys = false};
  if (songFind.typing && IsListState(gameState)) return findLine;
  const Screen* const screen = table.Find(gameState);
  return screen != nullptr ? *screen : unknown;
}

}  // namespace qlm
