// The sound slots of the chart: loading, caching, and what happens to all of them at once.
#pragma once

#include <cstdint>

#include "base/text.h"
#include "state/sounds.h"

namespace qlm {

// Sees that the slot's buffer holds the file that the chart wants, whose name is corrected in the chart's
// table when it is found under another one. Slot 0 is never loaded; slots outside the table load nothing and
// are logged as cancelled. No failure stops a chart.
void loadwav(int32_t slot);
// What the log says of a load that failed.
Text LoadErrorLine(platform::SoundError error, int32_t slot);
// With CourseLoadMode 2: makes the buffer of a course song's slot at once and marks it loaded.
void LoadCourseSound(int32_t song, int32_t slot);
// Gives back each slot whose file the chart no longer names.
void ReleaseUnnamedSound(int32_t slot);
void ReleaseAllSounds();

// Natural frequency times RealHiSpeed, for every existing buffer. Walks on loopCounter.
void ApplySoundSpeed();
// Walks the slots from 1 on with loopCounter: keeps what plays in WavWasPlaying and stops it.
void StopPlayingSounds();
// Plays every slot kept there from where it stopped. Walks on loopCounter.
void ResumeStoppedSounds();
// Every existing buffer: to the start, and silent. Walks on loopCounter.
void RewindSounds();
void StopAndRewindSounds();

}  // namespace qlm
