// Pause and resume.
#include "play/pause.h"

#include "base/log.h"
#include "play/position.h"
#include "sound/slots.h"
#include "state/session.h"
#include "state/timeline.h"

namespace qlm {

void BMSPause() {
  Paused = true;
  DebugLog(u"[BMSPause]");
  StopPlayingSounds();
  savedBPM = curBPM;
  SetBPM(0);
}

void BMSResume() {
  if (!Paused) return;
  DebugLog(Join(u"[BMSResume] BPM:", savedBPM));
  Paused = false;
  ResumeStoppedSounds();
  // Quirk: savedBPM holds RealHiSpeed already and SetBPM multiplies again, so that the tempo behind a pause
  // has its square, until the next tempo object.
  SetBPM(savedBPM);
  DebugLog(u"[Resumed]");
}

}  // namespace qlm
