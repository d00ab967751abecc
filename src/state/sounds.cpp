// Start values of the sound tables.
#include "state/sounds.h"

namespace qlm {

void ResetSounds() {
  MixerValue = MixerMax;
  WavBuffer.Clear();
  WavHeldName.Clear();
  WavLoaded.Clear();
  WavFrequency.Clear();
  WavLengthMs.Clear();
  WavWasPlaying.Clear();
  for (auto& song : CourseWavLoaded) song.Clear();
  for (auto& song : CourseWavBuffer) song.Clear();
  for (auto& step : EchoBuffer) step.Clear();
  EchoQueue.Clear();
  EchoCount = 0;
  VoiceList.Clear();
  VoiceCount = 0;
  VoiceStart.Clear();
  VoiceActive.Clear();
  SystemSound.Clear();
  SelectVolume = 0;
  wavDescription = {};
  wavFormat = {};
  WavDataSize = 0;
}

}  // namespace qlm
