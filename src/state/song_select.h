// What the list screens remember: the motion of the wheel, the row in hand, and what comes after it.
#pragma once

#include <array>
#include <cstddef>
#include <cstdint>
#include <optional>

#include "base/text.h"
#include "state/lists.h"

namespace qlm {

// FadeState values of the list screens: the ground of the course list comes or goes.
constexpr uint8_t kFadeToCourses = 21;
constexpr uint8_t kFadeFromCourses = 22;

// The key of the keyboard that steps through a list, while it is held.
constexpr size_t kRepeatedKeys = 4;
struct HeldListKey {
  std::array<bool, kRepeatedKeys> wasDown{};
  int32_t key = 0;     // that went down last; 0 none
  uint32_t start = 0;  // clock of its press
  uint32_t last = 0;   // clock of its last step
};

// Lines of the course editor. From 0 to courseNumSongs - 1 they are songs; courseNumSongs adds one.
constexpr int32_t kCourseNameLine = -2;
constexpr int32_t kCourseStarsLine = -1;

struct SongSelect {
  // The wheel. Rows stand still when listScroll is 0.
  float listScroll = 0;  // rows that the wheel is still off its place
  float listSettle = 3;  // eases towards listSettleGoal
  uint8_t listSettleGoal = 1;
  float listFadeIn = 1000;         // ms until the rows have all appeared, never below 0
  uint32_t listFadeTime = 0;       // clock at which listFadeIn was brought down last
  std::array<bool, 33> rowSeen{};  // by place on the wheel + 16: the row has appeared once
  bool recordWordsSeen = false;    // the words for records show in every second frame

  // The row in hand.
  uint32_t rowCursorTime = 0;              // clock of the last change of the cursor
  std::optional<SongEntry> rowBeforeSort;  // what the panel shows from a sort to the next move
  Text titleMain;
  Text titleSub;
  Text jukeName;                  // file name of the list that is open
  int32_t jukeCursorSaved = 0;    // row of the jukebox list when a list was opened
  int32_t courseCursorSaved = 0;  // row of the course list when the editor was opened
  int32_t clearCheckRow = 0;      // next row whose score and record are looked for

  // The course in hand, which the editor changes.
  bool courseMaking = false;  // the editor is open, and the lists pick a song for it
  Text courseName;
  uint8_t courseLevel = 0;  // stars
  uint8_t courseNumSongs = 0;
  uint8_t courseSlot = 0;                  // song of the course that is being picked
  int32_t courseCursor = kCourseNameLine;  // a line of the editor
  bool nameEntry = false;  // typing has just begun: the character of the Enter that began it is still to come

  HeldListKey heldKey;
  // A direction of a controller that is held; 0 none.
  int16_t repeatKey = 0;
  uint32_t repeatStart = 0;  // clock of the press
  uint32_t repeatLast = 0;   // clock of the last step

  // The pointer's travel from the screen's centre, added up over its events.
  int16_t mouseDX = 0;
  int16_t mouseDY = 0;

  uint8_t deciding = 0;  // 1 from a decision until its fade has ended
};
inline SongSelect songSelect;

void ResetSongSelect();

}  // namespace qlm
