// Four sections: a theme in D minor that steps down through its sequence and climbs back, first for piano and
// then for horns; an answer in F major that ends on the dominant; a quiet bridge that slips to B flat
// instead, loses a beat on its way and slides by semitones into the dominant of E; and the theme a tone
// higher with everything, closing in major.
#include "march.h"

namespace assetmaker {
namespace {

constexpr double marchTempo = 132, bridgeTempo = 112;
constexpr int bar = wholeNote, shortBar = wholeNote * 3 / 4;
constexpr std::string_view offBeats = "..x...x.", offEighths = ".x.x.x.x";
constexpr int aToneHigher = 2, anOctaveHigher = 12;

// The theme, eight bars.
constexpr std::string_view themeMelody =
    "D5/4 D5/8. E5/16 F5/4 A5/4 | Bb5/4 A5/4 G5/2 | C5/4 C5/8. D5/16 E5/4 G5/4 | A5/4 G5/4 F5/2 |"
    " F5/8. E5/16 D5/4 Bb5/8. A5/16 G5/4 | E5/8. D5/16 C#5/4 A5/8. G5/16 E5/4 |"
    " F5/4 A5/8. G5/16 F5/4 E5/4 | D5/4 A4/8. A4/16 D5/2 |";
constexpr std::string_view themeSecond =
    "A4/4 A4/4 D5/4 F5/4 | G5/4 F5/4 D5/2 | G4/4 G4/4 C5/4 E5/4 | F5/4 E5/4 C5/2 |"
    " D5/4 Bb4/4 G5/4 D5/4 | C#5/4 A4/4 E5/4 C#5/4 | D5/4 F5/4 D5/4 C#5/4 | A4/4 F4/4 F4/2 |";
constexpr std::string_view themeChords = "Dm/1 | Gm/1 | C7/1 | F/1 | Bb/2 Gm/2 | A7/1 | Dm/2. A7/4 | Dm/1 |";
constexpr std::string_view themeSteps =  // two steps a bar
    "D2/4 R/4 A2/4 R/4 | G2/4 R/4 D2/4 R/4 | C2/4 R/4 G2/4 R/4 | F2/4 R/4 C2/4 R/4 |"
    " Bb2/4 R/4 G2/4 R/4 | A2/4 R/4 E2/4 R/4 | D2/4 R/4 A2/4 C#2/4 | D2/4 A2/4 D2/4 R/4 |";
constexpr std::string_view themeStride =  // a step on every beat
    "D2/4 A2/4 F2/4 A2/4 | G2/4 D2/4 Bb2/4 A2/4 | C2/4 G2/4 E2/4 G2/4 | F2/4 C2/4 F2/4 A2/4 |"
    " Bb2/4 F2/4 G2/4 D2/4 | A2/4 E2/4 A2/4 C#2/4 | D2/4 F2/4 A2/4 A2/4 | D2/4 A2/4 D2/4 R/4 |";

Section Prelude() {
  return {
      SectionName::prelude,
      marchTempo,
      {bar, bar, bar, bar},
      {
          {Role::chords, Voice::pianoStab, Reading::struck, "R/1 | R/1 | Dm/1 | Dm/2 A7/2 |", 0, offBeats},
          {Role::bass, Voice::bass, Reading::notes, "R/1 | R/1 | D2/4 R/4 A2/4 R/4 | D2/4 R/4 A2/4 C#2/4 |"},
      },
      {
          {"l... .... d... u...", "d... .... .... ....", ".... .... .... ....", ".... .... d.u. d.u."},
          {"n... n... n.n. n...", ".... .... .... ....", ".... .... .... ....", ".... .... .... ...."},
          {".... .... .... R...", "X..x X..x X.xx X.xx", "X..x x.x. X..x x.xx", "X..x x.x. X.r. r.r."},
          {".... .... .... ....", "B... .... B... ....", "B... .... B... ....", "B... .... B... ...."},
      }};
}

Section Theme() {
  return {SectionName::theme,
          marchTempo,
          {bar, bar, bar, bar, bar, bar, bar, bar},
          {
              {Role::melody, Voice::leadPiano, Reading::notes, themeMelody},
              {Role::chords, Voice::pianoStab, Reading::struck, themeChords, 0, offBeats},
              {Role::bass, Voice::bass, Reading::notes, themeSteps},
          },
          {
              {"X..x x.x. X..x x.xx", "X..x x.x. X.xx r.x.", "X..x x.x. X..x x.xx", "X..x x.x. X.xx r.r."},
              {"B... .... B... ...."},
              {"d... .... .... ....", ".... .... .... ....", ".... .... .... ....", ".... .... .... d.u."},
          }};
}

Section ThemeAgain() {
  return {SectionName::themeAgain,
          marchTempo,
          {bar, bar, bar, bar, bar, bar, bar, bar},
          {
              {Role::melody, Voice::leadBrass, Reading::notes, themeMelody},
              {Role::harmony, Voice::secondBrass, Reading::notes, themeSecond},
              {Role::chords, Voice::pianoStab, Reading::struck, themeChords, 0, offEighths},
              {Role::bass, Voice::bass, Reading::notes, themeStride},
          },
          {
              {"f..x x.xx X..x x.xx", "X..x x.xx X.xx r.x.", "f..x x.xx X..x x.xx", "X..x x.xx X.r. r.r."},
              {"B... .... B... B..."},
              {"C... .... .... ....", ".... .... .... ....", ".... .... .... ....", ".... .... .... ....",
               "C... .... .... ....", ".... .... .... ....", ".... .... .... ....", ".... .... .... ...."},
              {"d... .... u... ....", ".... .... .... d.u.", "d... .... u... ....", ".... .... d.u. d.u."},
          }};
}

Section Answer() {
  return {SectionName::answer,
          marchTempo,
          {bar, bar, bar, bar, bar, bar, bar, bar},
          {
              {Role::melody, Voice::leadBrass, Reading::notes,
               "C6/2 A5/8. Bb5/16 C6/4 | G5/2. E5/8 G5/8 | A5/2 F5/8. G5/16 A5/4 | E5/2. C5/8 E5/8 |"
               " F5/4 G5/8. F5/16 D5/4 F5/4 | A5/4 G5/8. F5/16 C5/2 | Bb5/4 A5/8. G5/16 D5/4 G5/4 |"
               " A5/4. A5/8 A5/2 |"},
              {Role::harmony, Voice::softPiano, Reading::notes,
               "R/2 F5/4 A5/4 | R/4 E5/4 C5/4 R/4 | R/2 D5/4 F5/4 | R/4 C5/4 A4/4 R/4 |"
               " D5/4 R/4 Bb4/4 D5/4 | F5/4 R/4 A4/4 F5/4 | G5/4 R/4 Bb4/4 D5/4 | D5/2 C#5/4 E5/4 |"},
              {Role::chords, Voice::pianoStab, Reading::struck,
               "F/1 | C/1 | Dm/1 | Am/1 | Bb/1 | F/1 | Gm6/1 | Asus4/2 A/2 |", 0, offBeats},
              {Role::pad, Voice::strings, Reading::chords,
               "F/1 | C/1 | Dm/1 | Am/1 | Bb/1 | F/1 | Gm6/1 | Asus4/2 A/2 |"},
              {Role::bass, Voice::bass, Reading::notes,
               "F2/2 C2/4 F2/4 | E2/2 C2/4 E2/4 | D2/2 A2/4 D2/4 | C2/2 E2/4 A2/4 | Bb2/2 F2/4 Bb2/4 |"
               " A2/2 F2/4 A2/4 | G2/2 D2/4 G2/4 | A2/4. A2/8 A2/2 |"},
          },
          {
              {"X... ..xx X... x.x.", "X... ..xx X... x.r.", "X... ..xx X... x.x.", "X... ..xx X.xx r.r."},
              {"B... .... B... ...."},
              {".... t... .... t..."},
              {"u... .... .... ....", ".... .... d... ....", "u... .... .... ....", ".... .... d... u..."},
          },
          {{7, 12, 126.5}, {7, 24, 120.25}, {7, 36, 115.5}}};
}

Section Bridge() {
  constexpr std::string_view chords = "Bbmaj7/1 | F/1 | Gm7/1 | Dm/2. | Ebmaj7/1 | Bb/1 | Cm7/1 | B7/1 |";
  return {SectionName::bridge,
          bridgeTempo,
          {bar, bar, bar, shortBar, bar, bar, bar, bar},
          {
              {Role::melody, Voice::softPiano, Reading::notes,
               "F5/2. D5/8 Eb5/8 | F5/4 A5/4 C6/2 | Bb5/2. G5/8 A5/8 | Bb5/4 A5/4 F5/4 | G5/2. Eb5/8 F5/8 |"
               " G5/4 F5/4 D5/2 | Eb5/4 G5/4 Bb5/4 C6/4 | B5/2. F#5/8 A5/8 |"},
              {Role::harmony, Voice::brokenPiano, Reading::broken, chords},
              {Role::pad, Voice::strings, Reading::chords, chords},
              {Role::bass, Voice::bass, Reading::notes,
               "Bb2/2. F2/4 | A2/2 F2/2 | G2/2 D2/2 | F2/2 D2/4 | Eb2/2. G2/4 | D2/2 F2/2 | C2/2 Eb2/2 | "
               "B2/2 F#2/2 |"},
          },
          {
              {"s... b... s... b.b."},
              {"l... .... .... ....", ".... .... .... ....", "u... .... .... ....", ".... .... .... ....",
               "l... .... .... ....", ".... .... .... ....", "d... .... u... ....", ".... .... .... ...."},
              {".... .... .... ....", ".... .... t... ....", ".... .... .... ....", ".... .... .... ...."},
          }};
}

Section Turn() {
  return {SectionName::turn,
          bridgeTempo,
          {bar},
          {
              {Role::melody, Voice::leadBrass, Reading::notes, "B4/8. B4/16 D#5/8. D#5/16 F#5/4 B5/4 |"},
              {Role::bass, Voice::bass, Reading::notes, "B2/4 B2/4 F#2/4 B2/4 |"},
              {Role::lowDrum, Voice::timpani, Reading::notes, "B2/4 B2/4 B2/4 B2/4 |"},
          },
          {{"R... .... .... ...."}, {"d... u... d.u. d.u."}},
          {{0, 12, 116.5}, {0, 24, 120.25}, {0, 36, 126.5}}};
}

Section Finale() {
  return {SectionName::finale,
          marchTempo,
          {bar, bar, bar, bar, bar, bar, bar, bar},
          {
              {Role::melody, Voice::tutti, Reading::notes, themeMelody, aToneHigher},
              {Role::harmony, Voice::secondBrass, Reading::notes, themeSecond, aToneHigher},
              {Role::bells, Voice::bells, Reading::broken, themeChords, aToneHigher + anOctaveHigher},
              {Role::chords, Voice::brassStab, Reading::struck, themeChords, aToneHigher, offEighths},
              {Role::pad, Voice::strings, Reading::chords, themeChords, aToneHigher},
              {Role::bass, Voice::bass, Reading::notes, themeStride, aToneHigher},
          },
          {
              {"f..x X.xx f..x X.xx", "X..x X.xx X.xx r.r.", "f..x X.xx f..x X.xx", "X..x X.xx X.r. r.r."},
              {"B... B... B... B..."},
              {"C... .... .... ....", ".... .... .... ....", "C... .... .... ....", ".... .... .... ...."},
              {"d... .... u... ....", "d... .... u.d. u...", "d... .... u... ....", "d... .... d.u. d.u."},
          }};
}

Section Coda() {
  return {
      SectionName::coda,
      marchTempo,
      {bar, bar, bar, bar, bar},
      {
          {Role::melody, Voice::tutti, Reading::notes,
           "E5/4 E5/8. F#5/16 G5/4 C6/4 | F#5/4 F#5/8. G5/16 A5/4 D6/4 | B5/4 B5/8. C#6/16 D#6/2 | E6/1 | "
           "R/1 |"},
          {Role::harmony, Voice::secondBrass, Reading::notes,
           "C5/4 C5/4 E5/4 G5/4 | D5/4 D5/4 F#5/4 A5/4 | F#5/4 F#5/4 A5/2 | B5/1 | R/1 |"},
          {Role::chords, Voice::brassStab, Reading::struck, "C/1 | D/1 | B7/1 | R/1 | R/1 |", 0, offEighths},
          {Role::pad, Voice::strings, Reading::chords, "C/1 | D/1 | B7/1 | E/1 | R/1 |"},
          {Role::bass, Voice::bass, Reading::notes,
           "C2/4 G2/4 E2/4 C2/4 | D2/4 A2/4 F#2/4 D2/4 | B2/4 B2/4 F#2/4 B2/4 | E2/1 | R/1 |"},
          {Role::lowDrum, Voice::timpani, Reading::notes,
           "R/1 | R/1 | B2/4 B2/4 B2/8 B2/8 B2/8 B2/8 | E2/1 | R/1 |"},
      },
      {
          {"f..x X.xx f..x X.xx", "f..x X.xx f..x X.xx", "R... .... .... ....", "f... .... .... ....",
           ".... .... .... ...."},
          {"B... B... B... B...", "B... B... B... B...", "B... .... .... ....", "B... .... .... ....",
           ".... .... .... ...."},
          {"C... .... .... ....", "C... .... .... ....", ".... .... .... ....", "C... .... .... ....",
           ".... .... .... ...."},
          {"d... .... u... ....", "d... .... u... ....", "d... u... d.u. d.u.", "l... .... .... ....",
           "n... .... .... ...."},
      },
      {{2, 24, 122.5}, {2, 36, 108.25}}};
}

}  // namespace

const std::vector<Section>& MarchSections() {
  static const std::vector<Section> sections = {Prelude(), Theme(), ThemeAgain(), Answer(),
                                                Bridge(),  Turn(),  Finale(),     Coda()};
  return sections;
}

}  // namespace assetmaker
