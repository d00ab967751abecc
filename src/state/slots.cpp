// The length of the tables by slot.
#include "state/slots.h"

#include "state/chart.h"
#include "state/sounds.h"
#include "state/surfaces.h"
#include "state/wide_chart.h"

namespace qlm {

void SetLastSlot(int32_t last) {
  if (last == LastSlot) return;
  LastSlot = last;
  // A voice of a slot that is gone has no place in the list.
  VoiceList.Clear();
  VoiceCount = 0;
  VoiceStart.Clear();
  VoiceActive.Clear();
  const auto give = [last](auto&... tables) { (tables.SetLast(last), ...); };
  give(WavFile, WavBuffer, WavHeldName, WavLoaded, WavFrequency, WavLengthMs, WavWasPlaying);
  give(VoiceList, VoiceStart, VoiceActive);
  give(BmpFile, BmpSurface, BmpHeldName, BmpLoaded, BmpRect);
  give(StopTable);
  // With the tempi of a course it is long enough for any slot, and they lie at its end.
  if (courseTempi == 0) give(BpmTable);
  for (auto& step : EchoBuffer) give(step);
}

void SetCourseLastSlot(int32_t last) {
  for (int32_t song = 0; song <= CourseWavFile.kLast; ++song) {
    const auto give = [last, song](auto&... tables) { (tables[song].SetLast(last), ...); };
    give(CourseWavFile, CourseWavLoaded, CourseWavBuffer);
    give(CourseBmpFile, CourseBmpSurface, CourseBmpRect, CourseBmpLoaded);
  }
}

Text SlotName(int32_t slot) {
  constexpr TextView kDigits = u"0123456789ABCDEFGHIJKLMNOPQRSTUVWXYZabcdefghijklmnopqrstuvwxyz";
  if (slot < 0 || slot >= SlotBase * SlotBase) return u"??";
  return {kDigits[static_cast<size_t>(slot / SlotBase)], kDigits[static_cast<size_t>(slot % SlotBase)]};
}

Text MessageSlot(int32_t slot) {
  return LastSlot == kLastHexSlot ? Hex(static_cast<uint32_t>(slot)) : SlotName(slot);
}

void ResetSlots() {
  SlotBase = 16;
  SetLastSlot(kLastHexSlot);
  SetCourseLastSlot(kLastHexSlot);
}

}  // namespace qlm
