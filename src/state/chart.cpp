// The object table's access, and the chart's start values.
#include "state/chart.h"

#include "state/settings.h"

namespace qlm {

ChartObj* FindObj(int64_t index) {
  const auto place = static_cast<size_t>(index);  // a negative one lies far behind the end
  return place < objs.size() ? objs.data() + place : nullptr;
}

ChartObj* AddObj() {
  if (objCount == INT32_MAX) return nullptr;
  return FindObj(objCount++);
}

const ChartObj* LastObj() { return FindObj(int64_t{objCount} - 1); }

void ResetChart() {
  objs.clear();
  objCount = 0;
  tableMissing = false;
  shortageRaised = false;
  HdrTitle.clear();
  HdrArtist.clear();
  HdrGenre.clear();
  HdrMidiFile.clear();
  HdrBPM = 120;
  HdrPlayer = 1;
  HdrPlayLevel = 3;
  HdrRank = 2;
  HdrTotal = 0;
  HdrVolWav = 0;
  BMSPath.clear();
  uses89 = false;
  sideUsed = {};
  ChannelMap.Clear();
  ScatterNotes = false;
  WavFile.Clear();
  BmpFile.Clear();
  BpmTable.Clear();
  StopTable.Clear();
  MeasureLen.Clear();
  for (auto& song : CourseWavFile) song.Clear();
  for (auto& song : CourseBmpFile) song.Clear();
  TotalNotes = {};
  lastMeasure = 0;
  KeySoundChanges.Clear();
  keySoundCount = 0;
  ScoreSide = {0, 1};
  SideCount = 1;
  posTotal = 0;
  BMSLengthMs = 0;
  BMSID = 0;
  lastObjPos = 0;
  MarqueeText.clear();
  MarqueeGap = 0;
  MarqueeConverted = false;
  CourseMode = false;
  CourseSong = 0;
  BasePos = 0;
  LoadAbort = LoadGivenUp = LoadRunning = false;
  loadProgress = {};
}

}  // namespace qlm
