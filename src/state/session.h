// One play from the load to its end: the screen's state, fades, pause, and how it ended.
#pragma once

#include <cstdint>

#include "base/text.h"

namespace qlm {

// GameState values.
constexpr int32_t kStateSongSelect = 0;
constexpr int32_t kStateBattleSongs = 1;
constexpr int32_t kStateBattleStart = 2;
constexpr int32_t kStatePlay = 3;
constexpr int32_t kStatePlayOver = 4;
constexpr int32_t kStateResults = 5;
constexpr int32_t kStateLists = 6;  // 6, 7 and 8 are jukebox and course lists
constexpr int32_t kStateCourses = 7;
constexpr int32_t kStateCourseSongs = 8;
constexpr int32_t kStateEnterCourse = 9;  // typing a course's name
constexpr int32_t kStateEditCourse = 10;
constexpr int32_t kStateEnterName = 11;
constexpr int32_t kStateAutoLanes = 12;  // choosing the lanes that the machine plays

// Whether a list stands ready to choose from.
constexpr bool IsListState(int32_t state) {
  return state == kStateSongSelect || state == kStateLists || state == kStateCourses;
}

// FadeState values.
constexpr uint8_t kFadeNone = 0;
constexpr uint8_t kFadeEnd = 1;      // chart end, 200 ms
constexpr uint8_t kFadeIn = 2;       // from black, 200 ms
constexpr uint8_t kFadeFail = 3;     // fail, 2000 ms
constexpr uint8_t kFadeTiles = 200;  // the held frame falls away in tiles
constexpr uint8_t kFadeTitle = 201;  // the next song's title picture zooms in

// AttackKind values.
constexpr int32_t kAttackRecovering = 0;
constexpr int32_t kAttackTempoDown = 1;
constexpr int32_t kAttackSpeedUp = 2;
constexpr int32_t kAttackTempoUp = 3;
constexpr int32_t kAttackShuffle = 4;
constexpr int32_t kAttackBreak = 5;
constexpr int32_t kAttackNone = 255;

inline int32_t GameState = kStateSongSelect;
inline uint8_t FadeState = kFadeNone;
inline uint32_t FadeStart = 0;   // clock
inline uint8_t FadeLeaving = 0;  // 1: the end of the fade ends the play

inline bool PlayEnd = false;    // the loop leaves after this turn
inline bool PlayAlive = false;  // objects remain to be passed; also: a play runs
inline bool PlayFailed = false;
inline uint32_t PlayFailedTime = 0;  // clock
inline bool PlayCleared = false;     // the last object was reached without failure
inline bool RankLocked = false;      // the speed was changed, so that no rank is entered
inline bool Paused = false;
inline bool BreakActive = false;  // the stall of an attack or of a miss under Pressure
inline uint32_t BreakStart = 0;   // clock
inline float savedBPM = 0;        // curBPM at the start of a pause or stall
inline bool EscHeld = false;
inline uint32_t EscStart = 0;       // clock
inline bool EndlessRun = false;     // charts follow each other without results between
inline bool PreviewActive = false;  // the chart is only previewed
inline bool previewRunning = false;
inline bool previewLoading = false;       // its chart is being loaded; events run meanwhile
inline int32_t previewAsksIn = 0;         // ticks until it sees whether the wide reading would sound
inline bool previewStop = false;          // a preview that runs ends with its next step
inline int32_t AttackKind = kAttackNone;  // the effect that runs
inline uint32_t AttackStart = 0;          // clock
inline bool EchoEnabled = false;          // echo effect
inline int32_t ReturnState = 0;           // GameState behind the play
inline bool formRunning = true;           // the window lives: false ends the loop of the lists
inline bool WindowActive = true;
inline int32_t playedEchoes = 0;  // echoes played so far, for the log
inline int32_t LanesState = 0;    // GameState behind the choice of the machine's lanes

void ResetSession();

}  // namespace qlm
