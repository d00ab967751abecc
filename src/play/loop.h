// The timed loop of a play.
#pragma once

namespace qlm {

// Plays the chart in memory, from "R E A D Y ?" to the end of the last fade.
void PlayLoop();

}  // namespace qlm
