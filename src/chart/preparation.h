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
// "[genre] title / artist - quillmarch" of the header in memory, and its title and artist with the gap behind
// them that the marquee's width asks for.
Text ChartCaption();
Text ChartMarquee();
// Sets MarqueeText for the loaded chart or course. The gap is that of the skin in use.
void SetMarquee();

}  // namespace qlm
