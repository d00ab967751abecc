// The table of the voices: name, loudness and playing of each.
#include "voices.h"

#include <functional>
#include <utility>

#include "desk.h"
#include "drums.h"
#include "glass.h"
#include "instruments.h"
#include "loudness.h"
#include "synthesiser.h"

namespace assetmaker {
namespace {

using Playing = std::function<Sound(Pitch, double seconds)>;

// The tune's loudness; all other voices are set against it.
constexpr double tune = -12;

// Drums meet the tune and the bass on every beat, so their peaks are held lower.
constexpr double drumPeak = -11;  // dB

struct Part {
  const char* name;
  double loudness;  // dB, against the tune
  bool ringsFreely;
  Playing play;
  double peak = highestPeak;  // dB
};

// Piano and horns in octaves, bells on top: the theme with everything.
Sound Tutti(Pitch pitch, double seconds) {
  Sound sound = Brass(pitch, seconds, 0.9);
  Mix(sound, Brass(pitch - 12, seconds, 0.5), 0, 0.6);
  Mix(sound, FeltPiano(pitch, seconds, 1), 0, 1.2);
  Mix(sound, Glockenspiel(pitch + 12), 0, 0.5);
  return sound;
}

Part PartOf(Voice voice) {
  constexpr bool rings = true, held = false;
  switch (voice) {
    case Voice::leadPiano: return {"piano", 0, held, [](Pitch p, double s) { return FeltPiano(p, s, 0.9); }};
    case Voice::softPiano:
      return {"softpiano", -1.5, held, [](Pitch p, double s) { return FeltPiano(p, s, 0.35); }};
    case Voice::brokenPiano:
      return {"broken", -10, rings, [](Pitch p, double) { return FeltPiano(p, 0.9, 0.15); }};
    case Voice::pianoStab:
      return {"chord", -2.5, held, [](Pitch p, double s) { return FeltPiano(p, 0.9 * s, 0.5); }, -8};
    case Voice::leadBrass:
      return {"horn", -0.5, held, [](Pitch p, double s) { return Brass(p, 0.92 * s, 0.7); }};
    case Voice::secondBrass:
      return {"second", -5, held, [](Pitch p, double s) { return Brass(p, 0.9 * s, 0.4); }};
    case Voice::brassStab:
      return {"stab", -2, held, [](Pitch p, double s) { return Brass(p, 0.7 * s, 0.5); }, -8};
    case Voice::tutti: return {"tutti", 0, held, [](Pitch p, double s) { return Tutti(p, 0.94 * s); }, -7.5};
    case Voice::fife: return {"fife", -4, held, [](Pitch p, double s) { return Fife(p, 0.9 * s); }};
    case Voice::strings: return {"strings", -9, held, [](Pitch p, double s) { return Strings(p, s); }};
    case Voice::bells: return {"bells", -10, rings, [](Pitch p, double) { return Glockenspiel(p); }};
    case Voice::bass:
      return {"bass", -7.5, rings, [](Pitch p, double) { return PluckedBass(p, 0.9); }, drumPeak};
    case Voice::timpani: return {"timpani", -6, rings, [](Pitch p, double) { return Timpani(p); }, drumPeak};
    case Voice::nightPiano:
      return {"nightpiano", 0, held, [](Pitch p, double s) { return NightPiano(p, s, 0.8); }};
    case Voice::nightBroken:
      return {"nightbroken", -9, rings, [](Pitch p, double) { return NightPiano(p, 0.8, 0.2); }};
    case Voice::bowedGlass: return {"glass", -3, held, [](Pitch p, double s) { return BowedGlass(p, s); }};
    case Voice::farGlass: return {"farglass", -13, held, [](Pitch p, double s) { return BowedGlass(p, s); }};
    case Voice::struckGlass:
      return {"struckglass", -7, rings, [](Pitch p, double) { return StruckGlass(p); }};
    case Voice::slowBass: return {"slowbass", -4, held, [](Pitch p, double s) { return SlowBass(p, s); }};
    case Voice::pluck: return {"pluck", 0, rings, [](Pitch p, double) { return Pluck(p, 0.8); }, -7.7};
    case Voice::roundPluck: return {"roundpluck", -5, rings, [](Pitch p, double) { return Pluck(p, 0.1); }};
    case Voice::highPluck:
      return {"highpluck", -8.5, rings, [](Pitch p, double) { return Pluck(p, 0.5); }, drumPeak};
    case Voice::reed: return {"reed", -0.2, held, [](Pitch p, double s) { return Reed(p, 0.9 * s); }};
    case Voice::sawStab:
      return {"sawstab", -4, held, [](Pitch p, double s) { return SawStab(p, 0.7 * s); }, -10.5};
    case Voice::sawPad: return {"sawpad", -9, held, [](Pitch p, double s) { return SawPad(p, s); }};
    case Voice::synthBass: return {"synthbass", -5, rings, [](Pitch p, double) { return SynthBass(p); }, -12};
    case Voice::fieldAccent:
      return {"field-accent", -3.5, rings, [](Pitch, double) { return FieldStroke(1, 1); }, drumPeak};
    case Voice::fieldLeft:
      return {"field-left", -8.5, rings, [](Pitch, double) { return FieldStroke(0.35, 2); }};
    case Voice::fieldRight:
      return {"field-right", -7.5, rings, [](Pitch, double) { return FieldStroke(0.42, 3); }};
    case Voice::fieldFlam:
      return {"field-flam", -3.5, rings, [](Pitch, double) { return FieldFlam(); }, drumPeak};
    case Voice::shortRoll:
      return {"roll-short", -7, rings, [](Pitch, double) { return FieldRoll(0.21, 0.4, 0.6); }, drumPeak};
    case Voice::longRoll:
      return {"roll-long", -6, held, [](Pitch, double s) { return FieldRoll(s - 0.05, 0.12, 0.8); },
              drumPeak};
    case Voice::bassDrum: return {"bassdrum", -5.5, rings, [](Pitch, double) { return BassDrum(); }, -12.2};
    case Voice::brushTap: return {"brush-tap", -11, rings, [](Pitch, double) { return BrushTap(); }};
    case Voice::brushSweep:
      return {"brush-sweep", -13, rings, [](Pitch, double) { return BrushSweep(0.45); }};
    case Voice::cymbals: return {"cymbals", -3, rings, [](Pitch, double) { return Cymbals(2.4); }, drumPeak};
    case Voice::triangle: return {"triangle", -10, rings, [](Pitch, double) { return Triangle(); }};
    case Voice::penUp: return {"pen-up", -6, rings, [](Pitch, double) { return PenStroke(0.2, 1, 21); }};
    case Voice::penDown:
      return {"pen-down", -6, rings, [](Pitch, double) { return PenStroke(0.22, -1, 22); }};
    case Voice::penLong:
      return {"pen-long", -7, rings, [](Pitch, double) { return PenStroke(0.85, 0.6, 23); }};
    case Voice::broadUp:
      return {"broad-up", -1, rings, [](Pitch, double) { return BroadStroke(0.24, 1, 25); }, -12.2};
    case Voice::broadDown:
      return {"broad-down", -1, rings, [](Pitch, double) { return BroadStroke(0.26, -1, 26); }, -12.2};
    case Voice::nibTap: return {"nib-tap", -5, rings, [](Pitch, double) { return NibTap(24); }};
    case Voice::inkDrop: return {"drop", -6, rings, [](Pitch, double) { return InkDrop(); }};
    case Voice::swirl: return {"swirl", -7, rings, [](Pitch, double) { return Swirl(); }};
    case Voice::dryKick: return {"kick", -4, rings, [](Pitch, double) { return DryKick(); }, -13};
    case Voice::drySnare: return {"snare", -4, rings, [](Pitch, double) { return DrySnare(); }, -12};
    case Voice::closedHat: return {"hat", -8, rings, [](Pitch, double) { return Hat(0.06); }, drumPeak};
    case Voice::openHat: return {"openhat", -7.5, rings, [](Pitch, double) { return Hat(0.24); }, drumPeak};
    case Voice::scratchForth: return {"scratch-forth", -5, rings, [](Pitch, double) { return Scratch(1); }};
    case Voice::scratchBack: return {"scratch-back", -5, rings, [](Pitch, double) { return Scratch(-1); }};
  }
  return {"", 0, rings, [](Pitch, double) { return Sound{}; }};
}

}  // namespace

std::optional<Voice> PitchedVoiceNamed(std::string_view name) {
  for (int voice = 0; voice <= static_cast<int>(Voice::synthBass); ++voice) {
    if (PartOf(static_cast<Voice>(voice)).name == name) return static_cast<Voice>(voice);
  }
  return std::nullopt;
}

std::string FileName(const Sample& sample) {
  std::string name = PartOf(sample.voice).name;
  for (const Pitch pitch : sample.pitches) name += '-' + FileName(pitch);
  if (sample.centiseconds > 0) name += '-' + std::to_string(sample.centiseconds);
  return name;
}

Sound Render(const Sample& sample, double level) {
  constexpr double inaudible = 0.001;
  const Part part = PartOf(sample.voice);
  const double seconds = sample.centiseconds / 100.0;
  Sound sound;
  if (sample.pitches.empty()) sound = part.play(0, seconds);
  for (const Pitch pitch : sample.pitches) Mix(sound, part.play(pitch, seconds));
  sound = AtLoudness(std::move(sound), tune + part.loudness + level, part.peak);
  TrimTail(sound, inaudible);
  return sound;
}

bool RingsFreely(Voice voice) { return PartOf(voice).ringsFreely; }

}  // namespace assetmaker
