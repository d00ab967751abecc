// Who plays in the stock songs: each voice is an instrument in one role, at one loudness.
#pragma once

#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "pitch.h"
#include "sound.h"

namespace assetmaker {

enum class Voice {
  // Pitched
  leadPiano,
  softPiano,
  brokenPiano,
  pianoStab,
  leadBrass,
  secondBrass,
  brassStab,
  tutti,
  fife,
  strings,
  bells,
  bass,
  timpani,
  nightPiano,
  nightBroken,
  bowedGlass,
  farGlass,
  struckGlass,
  slowBass,
  pluck,
  roundPluck,
  highPluck,
  reed,
  sawStab,
  sawPad,
  synthBass,
  // Struck, drawn, tapped
  fieldAccent,
  fieldLeft,
  fieldRight,
  fieldFlam,
  shortRoll,
  longRoll,
  bassDrum,
  brushTap,
  brushSweep,
  cymbals,
  triangle,
  penUp,
  penDown,
  penLong,
  broadUp,
  broadDown,
  nibTap,
  inkDrop,
  swirl,
  dryKick,
  drySnare,
  closedHat,
  openHat,
  scratchForth,
  scratchBack,
};

// The pitched voice of a name, which its samples' files begin with: "softpiano". Nothing for any other name.
std::optional<Voice> PitchedVoiceNamed(std::string_view name);

// One sample of the song, before it is made. Two that are alike are the same sample.
struct Sample {
  Voice voice;
  std::vector<Pitch> pitches;  // empty for what has no pitch
  int centiseconds;            // how long it is held; 0 for what rings as long as it likes

  bool operator==(const Sample&) const = default;
};

// The name of its file, without the folder and the ending.
std::string FileName(const Sample& sample);

// The finished sound, at its loudness in the mix; `level` dB more than the voice's own.
Sound Render(const Sample& sample, double level = 0);

// Whether the voice rings on by itself, so that its notes differ in pitch only.
bool RingsFreely(Voice voice);

}  // namespace assetmaker
