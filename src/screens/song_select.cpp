// The loop of the list screens.
#include "screens/song_select.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <cstddef>
#include <cstdint>

#include "base/hooks.h"
#include "base/log.h"
#include "base/numbers.h"
#include "base/paths.h"
#include "graphics/bga.h"
#include "graphics/display.h"
#include "graphics/present.h"
#include "graphics/skin.h"
#include "library/scan.h"
#include "library/song_list.h"
#include "net/session.h"
#include "platform/clock.h"
#include "platform/window.h"
#include "play/preview.h"
#include "screens/joystick_keys.h"
#include "screens/list_cursor.h"
#include "screens/list_frame.h"
#include "screens/list_rows.h"
#include "screens/road.h"
#include "screens/screen_table.h"
#include "screens/song_find.h"
#include "screens/song_select_keys.h"
#include "sound/play.h"
#include "state/chart.h"
#include "state/keys.h"
#include "state/lists.h"
#include "state/message.h"
#include "state/session.h"
#include "state/settings.h"
#include "state/song_select.h"
#include "state/surfaces.h"

namespace qlm {
namespace {

constexpr std::array<int32_t, kRepeatedKeys> kKeysThatRepeat = {kKeyUp, kKeyDown, kKeyPageUp, kKeyPageDown};

bool KeysRepeatHere() {
  constexpr std::array<int32_t, 5> kStates = {kStateSongSelect, kStateLists, kStateCourses, kStateCourseSongs,
                                              kStateEditCourse};
  return std::find(kStates.begin(), kStates.end(), GameState) != kStates.end();
}

// The key that went down last, for as long as it stays down.
void FollowHeldKey(uint32_t now) {
  HeldListKey& held = songSelect.heldKey;
  for (size_t i = 0; i < kKeysThatRepeat.size(); ++i) {
    const bool down = KeyHeld[kKeysThatRepeat[i]];
    if (down && !held.wasDown[i]) {
      held.key = kKeysThatRepeat[i];
      held.start = held.last = now;
    }
    held.wasDown[i] = down;
  }
  if (held.key != 0 && !KeyHeld[held.key]) held.key = 0;
}

void RepeatKeyboard() {
  constexpr int32_t kFirstWait = 300;  // ms
  constexpr int32_t kStep = 50;
  const uint32_t now = platform::Now();
  FollowHeldKey(now);
  HeldListKey& held = songSelect.heldKey;
  if (held.key == 0 || !KeysRepeatHere()) return;
  if (platform::Elapsed(now, held.start) < kFirstWait || platform::Elapsed(now, held.last) < kStep) return;
  held.last = now;
  if (hooks.keyDown != nullptr) hooks.keyDown(held.key);
}

// What is left of the way after a frame, in hundredths: less of it at a lower frame rate.
int32_t ScrollLeft() {
  constexpr int32_t kMost = 95;
  return static_cast<int32_t>(std::min<int64_t>(RoundHalfEven((Fps - 60) * 0.3 + 80), kMost));
}

void EaseScroll() {
  float& scroll = songSelect.listScroll;
  if (scroll == 0) return;
  if (NOSMOOTHSCROLL) scroll = kWheelStops;
  scroll = static_cast<float>(static_cast<double>(scroll) * ScrollLeft() / 100);
}

// Reads the title picture of the row in hand, once for each stop of the wheel.
void StopWheel() {
  constexpr float kAtRest = 0.01F;
  float& scroll = songSelect.listScroll;
  if (scroll == 0 || std::fabs(scroll) >= kAtRest) return;
  scroll = 0;
  const SongEntry* const row = HeldRow();
  if (row == nullptr || row->stageFile.empty()) return;
  LoadStage(Join(GetFolder(row->path), row->stageFile));
}

}  // namespace

void ListAnm(TextView jukebox) {
  ResetListState();
  GameState = kStateLists;
  PlaySE(SE::kSelectMusic, true);
  PlaySE(SE::kSelectStart);
  platform::MoveMouse(kScreen.Width() / 2, kScreen.Height() / 2);
  if (!jukebox.empty()) OpenOnEasiest(jukebox);
  while (formRunning) ListTurn();
}

void ListTurn() {
  if (!CheckDisplay()) return;
  RepeatKeyboard();
  RepeatJoystick();
  if (void (*const frame)() = ScreenOf(GameState).frame) {
    frame();
  } else {
    PresentFrame();
  }
  // Who is told to begin should begin at once: the timer alone would spread the starts.
  if (GameState == kStateBattleStart) NetPoll();
  RunBattleStep();
}

void ListFrame() {
  ReadOnForFinding();
  EaseScroll();
  StopWheel();
  DrawList();
}

void ShowDroppedFolder(TextView folder) {
  EndPreview();
  StopPreviewTimer();
  GameState = kStateSongSelect;
  CourseMode = false;
  songSelect.clearCheckRow = 0;
  songSelect.jukeName = GetFileName(folder);
  ClearList();
  ScanFolder(folder);
  if (lastSong < 0) ShowMessage(Join(u"NO CHARTS IN ", GetFileName(folder), u": DROP A FOLDER OF CHARTS"));
  ResetListState();
  songSelect.listScroll = kWheelStops;
  chexec();
}

void JukeReady() {
  DebugLog(u"[Load JukeList]");
  GameState = kStateLists;
  ClearList();
  TakeRows(library.jukeList);
  listCursor = std::clamp(songSelect.jukeCursorSaved, 0, std::max(lastSong, 0));
  ResetListState();
  ReleaseStage();
  songSelect.listScroll = kWheelStops;
  PlaySE(SE::kFade);
}

void ResetListState() {
  songSelect.listSettle = 3;
  songSelect.listSettleGoal = 1;
  songSelect.listFadeIn = 1000;
  songSelect.listFadeTime = platform::Now();
  songSelect.rowSeen = {};
}

void RestoreListScreen() { loadSkin(brd, false); }

}  // namespace qlm
