// What each screen sounds like: everything happens on the writing desk, with a felt piano in the next room.
#include "system_sounds.h"

#include <string_view>

#include "desk.h"
#include "drums.h"
#include "instruments.h"
#include "loudness.h"
#include "room.h"

namespace assetmaker {
namespace {

// All sounds of moments share one loudness; what goes on for long stays behind it.
constexpr double moment = -16;
constexpr double background = -26;
constexpr double audibleFloor = 0.0015;

Sound Finished(Sound sound, double loudness) {
  sound = AtLoudness(std::move(sound), loudness);
  TrimTail(sound, audibleFloor);
  return sound;
}

Pitch Note(std::string_view name) { return PitchNamed(name).value_or(69); }

// Notes of one chord, each `spread` seconds after the one before.
Sound PianoChord(const std::vector<std::string_view>& notes, double seconds, double touch, double spread) {
  Sound chord;
  for (std::size_t i = 0; i < notes.size(); ++i) {
    Mix(chord, FeltPiano(Note(notes[i]), seconds, touch), Samples(spread * static_cast<double>(i)));
  }
  return chord;
}

// A page flicked on.
Sound CursorMove() { return PageTurn(0.11); }

// The notebook is opened and the pen made ready.
Sound SelectStart() {
  Sound sound = PageTurn(0.42);
  Scale(sound, 2.2);
  Mix(sound, NibTap(3), Samples(0.47), 0.35);
  Mix(sound, NibTap(4), Samples(0.60), 0.4);
  Mix(sound, PianoChord({"D4", "A4", "E5"}, 1.1, 0.35, 0.04), Samples(0.60), 0.35);
  return sound;
}

Sound Decide() {
  Sound sound = Stamp();
  Mix(sound, PianoChord({"D4", "A4", "D5"}, 0.5, 0.6, 0.0), Samples(0.01), 0.35);
  return sound;
}

// A hand damps the bell, so that it is silent when the song begins.
Sound Ready() {
  constexpr double seconds = 1.05;
  Sound sound = Breath(0.3);
  Mix(sound, Bell(Note("D4"), seconds), Samples(0.26), 0.8);
  sound.left.resize(Samples(seconds));
  sound.right.resize(Samples(seconds));
  FadeOut(sound, 0.45);
  return sound;
}

Sound LongStroke() {
  Sound sound = PenStroke(1.25, -1, 9);
  Mix(sound, NibTap(5), Samples(1.22), 0.6);
  return sound;
}

Sound Clear() {
  Sound sound = PianoChord({"D3", "A3", "D4", "F#4", "A4", "D5"}, 2.4, 0.5, 0.045);
  for (const std::string_view note : {"D3", "A3", "F#4", "D5"})
    Mix(sound, Strings(Note(note), 2.0), Samples(0.05), 0.05);
  return sound;
}

Sound Fail() {
  Sound sound = PencilDrop();
  Mix(sound, PluckedBass(Note("D2"), 1.3), Samples(0.42), 0.9);
  Mix(sound, FeltPiano(Note("D3"), 1.3, 0.2), Samples(0.42), 0.4);
  Mix(sound, FeltPiano(Note("F3"), 1.3, 0.2), Samples(0.42), 0.25);
  return sound;
}

// One tooth of the ratchet. The file is as long as the pause to the next, so that looped it counts.
Sound Count() {
  constexpr double pause = 0.075;
  Sound sound = NibTap(7);
  TrimTail(sound, audibleFloor);
  sound.left.resize(Samples(pause));
  sound.right.resize(Samples(pause));
  FadeOut(sound, 0.03);
  return sound;
}

// The seal is set under the result; the better the class, the more of the chord rings after it.
Sound ClassSeal(const std::vector<std::string_view>& notes, bool glitter) {
  Sound sound = Stamp();
  const double pace = 0.085;
  for (std::size_t i = 0; i < notes.size(); ++i) {
    const std::size_t at = Samples(0.12 + pace * static_cast<double>(i));
    Mix(sound, FeltPiano(Note(notes[i]), 1.1, 0.6), at, 0.5);
    if (glitter) Mix(sound, Glockenspiel(Note(notes[i]) + 12), at, 0.16);
  }
  return sound;
}

// Eight slow bars under the song list: the march's own tune at half its pace, for felt piano and an old
// record.
Sound SelectLoop() {
  struct Bar {
    std::string_view bass;
    std::vector<std::string_view> chord;
    std::vector<std::string_view> tune;  // one note a beat; empty for a rest
  };
  const std::vector<Bar> bars = {
      {"D2", {"F3", "A3", "C4", "E4"}, {"D5", "", "E5", ""}},
      {"G2", {"F3", "Bb3", "D4", "A4"}, {"Bb4", "A4", "G4", ""}},
      {"C2", {"E3", "Bb3", "D4", "G4"}, {"", "C5", "D5", "E5"}},
      {"F2", {"E3", "A3", "C4", "G4"}, {"A4", "G4", "F4", ""}},
      {"Bb2", {"D3", "A3", "C4", "F4"}, {"", "F5", "E5", "D5"}},
      {"E2", {"D3", "G3", "Bb3", "E4"}, {"Bb4", "", "A4", "G4"}},
      {"A2", {"G3", "C#4", "E4", "B4"}, {"", "A4", "C#5", "E5"}},
      {"D2", {"F3", "A3", "C4", "E4"}, {"D5", "", "", ""}},
  };
  constexpr double beat = 60.0 / 72;
  const std::size_t length = Samples(beat * 4 * static_cast<double>(bars.size()));
  Sound loop = Vinyl(length);
  double time = 0;
  for (const Bar& bar : bars) {
    MixAround(loop, PluckedBass(Note(bar.bass), 3.2), Samples(time), 0.30);
    MixAround(loop, PianoChord(bar.chord, 3.0, 0.15, 0.03), Samples(time + 0.01), 0.20);
    MixAround(loop, PianoChord({bar.chord[1], bar.chord[2], bar.chord[3]}, 1.4, 0.1, 0.015),
              Samples(time + 2.66 * beat), 0.11);
    for (std::size_t i = 0; i < bar.tune.size(); ++i) {
      if (bar.tune[i].empty()) continue;
      // The hand lingers a little on the weak beats.
      const double late = i % 2 == 1 ? 0.035 : 0.0;
      MixAround(loop, FeltPiano(Note(bar.tune[i]), 1.5, 0.3),
                Samples(time + static_cast<double>(i) * beat + late), 0.26);
    }
    MixAround(loop, BrushSweep(0.5), Samples(time + beat), 0.035);
    MixAround(loop, BrushSweep(0.5), Samples(time + 3 * beat), 0.045);
    time += 4 * beat;
  }
  return AtLoudness(std::move(loop), background);
}

}  // namespace

std::vector<SystemSound> MakeSystemSounds() {
  return {
      {"sngchg", Finished(CursorMove(), moment)},
      {"select", SelectLoop()},
      {"sngdecide", Finished(Decide(), moment)},
      {"ready", Finished(Ready(), moment)},
      {"fade", Finished(LongStroke(), moment)},
      {"class_ss", Finished(ClassSeal({"D4", "F#4", "A4", "D5", "F#5", "A5"}, true), moment)},
      {"class_s", Finished(ClassSeal({"D4", "F#4", "A4", "D5", "F#5"}, true), moment)},
      {"class_a", Finished(ClassSeal({"D4", "F#4", "A4", "D5"}, false), moment)},
      {"class_b", Finished(ClassSeal({"D4", "F#4", "A4"}, false), moment)},
      {"class_c", Finished(ClassSeal({"D4", "A4"}, false), moment)},
      {"class_d", Finished(ClassSeal({"D4"}, false), moment)},
      {"class_e", Finished(ClassSeal({"F3", "D3"}, false), moment)},
      {"selstart", Finished(SelectStart(), moment)},
      {"res_clear", Finished(Clear(), moment)},
      {"res_fail", Finished(Fail(), moment)},
      {"ptscount", AtLoudness(Count(), moment)},
  };
}

}  // namespace assetmaker
