// The chart in memory: one flat table of objects, header fields, and the files that the chart names.
// Written by chart/ alone, apart from `hit`, the lanes that a shuffle moves, and the header at a song change.
#pragma once

#include <array>
#include <cstdint>
#include <vector>

#include "base/table.h"
#include "base/text.h"

namespace qlm {

// Kinds of objects that no chart line makes.
constexpr int32_t ObjSongChange = -2;  // start of the next song of a course; value is the song's index
constexpr int32_t ObjSeparator = -1;   // bar line

// Position units of a measure of length 1.0, and of one beat of four.
constexpr int32_t kMeasureUnits = 192;
constexpr int32_t kBeatUnits = 48;
// 60000 ms a minute / 48 units a beat: units per ms are BPM / 1250.
constexpr double kUnitRate = 1250.0;

struct ChartObj {
  int32_t measure = 0;  // with the course's offset
  int32_t pos = 0;      // position units; while reading measure * 192 + tick, scaled by preparation
  int32_t tick = 0;     // place in the measure, 0 to 192, never scaled
  int32_t channel = 0;  // kind: 1, 3, 4, 6, 7, 8, notes 11-29, invisible 31-49, or one of those above
  int32_t value = 0;    // sound, picture or tempo index, or a tempo
  bool hit = false;     // judged or consumed in this play
  float speedMul = 0;   // factor of the drawn distance from the judge line

  friend bool operator==(const ChartObj&, const ChartObj&) = default;
};

// Capacity is numObjs + 1 records. objCount counts on past it; what does not fit is not written.
inline std::vector<ChartObj> objs;
inline int32_t objCount = 0;
// The record, or null where the table has none.
ChartObj* FindObj(int64_t index);
// Takes the next record. Null when the table is full; objCount counts all the same, as far as it goes.
ChartObj* AddObj();
// The last object; null for an empty table or a last object that did not fit.
const ChartObj* LastObj();
// The table that numObjs asks for could not be made.
inline bool tableMissing = false;
// The message of too small a table was raised since the table was emptied.
inline bool shortageRaised = false;

// Lanes stand by channel - 11, 19 entries for both sides.
constexpr int32_t kLanes = 19;
constexpr bool IsNoteChannel(int32_t channel) {
  return channel >= 11 && channel <= 29 && channel != 17 && channel != 20 && channel != 27;
}

// Title, artist, genre and MIDI file keep what the chart before had when a chart does not give them.
inline Text HdrTitle;
inline Text HdrArtist;
inline Text HdrGenre;
inline Text HdrMidiFile;
inline float HdrBPM = 120;
inline int32_t HdrPlayer = 1;  // 1 one player, 2 two players, 3 double play
inline int32_t HdrPlayLevel = 3;
inline int32_t HdrRank = 2;
inline int32_t HdrTotal = 0;            // 0 is not given
inline int32_t HdrVolWav = 0;           // read and stored, used by nothing
inline Text BMSPath;                    // of the chart read last
inline bool uses89 = false;             // a 1P note lies on 18 or 19
inline std::array<bool, 2> sideUsed{};  // side 0, 1: a note was read for it
// Where the notes of a channel go, by player forcing and the random keymap of the last read. Play records of
// side 1 follow it.
inline Table<int32_t, 99> ChannelMap;
// Preparation gives each note a random lane. Nothing sets it.
inline bool ScatterNotes = false;

// By the two digits of the chart, hexadecimal ones but in the wide reading. Load states stand in sounds.h and
// surfaces.h; state/slots.h gives all of them their length.
inline SlotTable<Text> WavFile;
inline SlotTable<Text> BmpFile;
inline SlotTable<float> BpmTable;      // 0 is undefined
inline SlotTable<float> StopTable;     // position units; the wide reading alone fills it
inline Table<float, 2048> MeasureLen;  // 0 is not given until preparation

// Course songs 0 to 127, each with as many files.
using CourseFileTable = Table<SlotTable<Text>, 127>;
inline CourseFileTable CourseWavFile;
inline CourseFileTable CourseBmpFile;

inline std::array<int32_t, 2> TotalNotes{};
inline int32_t lastMeasure = 0;

// Where the sound of a lane changes, in object order.
struct KeySoundChange {
  int32_t channel = 0;
  int32_t pos = 0;
  int32_t value = 0;

  friend bool operator==(const KeySoundChange&, const KeySoundChange&) = default;
};
inline Table<KeySoundChange, 5000> KeySoundChanges;
inline int32_t keySoundCount = 0;  // counts on past the table

// Derived by preparation.
inline std::array<int32_t, 2> ScoreSide = {0, 1};  // object side to score side; 0, 0 in double play
inline int32_t SideCount = 1;                      // 1 or 2: which skin
inline int32_t posTotal = 0;                       // running total of scaled positions
inline int32_t BMSLengthMs = 0;
inline int32_t BMSID = 0;  // how records and scores recognise a chart
inline int32_t lastObjPos = 0;
inline Text MarqueeText;
inline int32_t MarqueeGap = 0;         // blanks that the skin asks for behind the title, part of the text
inline bool MarqueeConverted = false;  // to the letters of the bitmap font

// Courses.
inline bool CourseMode = false;   // a course is being joined or played
inline int32_t CourseSong = 0;    // song being read, later played
inline int32_t BasePos = 0;       // measure at which the song being read starts
inline bool LoadAbort = false;    // the load is to stop
inline bool LoadGivenUp = false;  // because the player wants it so
inline bool LoadRunning = false;  // a load runs behind the loading screen, which a key may give up

// How far the file is that is read now, counted in lines that name a sound or a picture. The wide reading
// alone tells it: else all are 0.
struct LoadProgress {
  int32_t done = 0;
  int32_t all = 0;     // in front of the first data
  uint32_t shown = 0;  // clock of the last frame that showed it
};
inline LoadProgress loadProgress;

void ResetChart();

}  // namespace qlm
