// Preparation: bar lines, time order, scaled positions, and all numbers of a play that the chart decides.
#pragma once

#include <cstdint>

#include "base/text.h"

namespace qlm {

class ChartReport;

// Once behind the last file of a load. Stops with the fatal message when the bar lines did not fit.
// A report gets the notes that share a place.
void BMSPrepare(ChartReport* report = nullptr);
// Length of the chart in ms, from the objects as they stand; 0 where it is no number.
int32_t GetBMSLength();
// Sorts the object table by pos, in the one scheme that fixes the order of equals.
void SortObjs();

// The judgement windows of HdrRank; a rank outside 0 to 3 leaves those in force.
void SetJudgeWindow();
// "[genre] title / artist - quillmarch" of the header in memory.
Text ChartCaption();
// Sets MarqueeText for the loaded chart or course, and for the song that a course has come to. Behind it
// stands the gap that the skin in use asks for. What is shown in a play is converted to the letters of its
// font; a preview's is not.
void SetMarquee();
void SetSongMarquee();
// Gives a play's MarqueeText the gap of the skin in use, and converts it if that has not been done.
void FitMarquee();

}  // namespace qlm
