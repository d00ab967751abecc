// The road of a play: decided, loaded, played, results, back to the list.
#pragma once

#include <cstdint>

#include "base/text.h"

namespace qlm {

// Runs FadeEndSubject with the next pump, outside of the key that decided.
void ArmFadeEnd();
// What a decision on the song select leads to: the row in hand is loaded and played, or in a run one chart of
// the list behind the other. Does nothing when nothing was decided.
void FadeEndSubject();

// What the others of a battle have made due: the load of the row in hand, or the play of what was loaded and
// the way back to the list.
void RunBattleStep();

// Loads a chart behind the loading screen. An empty path takes the current list entry. A load that failed or
// was given up leaves LoadAbort set.
void ReadyBMS(TextView path);
// Joins the loaded course; its sounds wait for their songs, whatever WAVLoadmode says.
void JoinCourse();
// The play and everything to the return to the lists.
void StartPlay();

// Loads the chart of a list entry and plays it to its end. False when it could not be loaded; the play then
// runs all the same, on an empty table.
bool PlayListEntry(int32_t index);
// A loaded chart from its start to the end of the play.
void PlayLoadedChart();

}  // namespace qlm
