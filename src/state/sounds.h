// Sound slots of the chart, system sounds, echoes and voices.
#pragma once

#include <array>
#include <cstdint>

#include "base/table.h"
#include "base/text.h"
#include "platform/sound_device.h"

namespace qlm {

using platform::SoundBufferPtr;

// By slot; WavFile stands in chart.h.
inline SlotTable<SoundBufferPtr> WavBuffer;
inline SlotTable<Text> WavHeldName;      // the file whose data the buffer holds: key of a cache over charts
inline SlotTable<uint8_t> WavLoaded;     // 0 must be loaded, 255 done
inline SlotTable<int32_t> WavFrequency;  // natural frequency, Hz
inline SlotTable<float> WavLengthMs;
inline SlotTable<bool> WavWasPlaying;  // set by pause and stall

// By course song 0 to 127 and slot.
inline Table<SlotTable<bool>, 127> CourseWavLoaded;
inline Table<SlotTable<SoundBufferPtr>, 127> CourseWavBuffer;  // only with CourseLoadMode 2

// Duplicates by echo step 0 to 10 and slot; only steps 1 to 4 are ever filled.
inline Table<SlotTable<SoundBufferPtr>, 10> EchoBuffer;
struct Echo {
  int32_t time = 0;  // play clock, ms
  int16_t slot = 0;
  int32_t step = 0;  // 1 to 4
};
inline Table<Echo, 255> EchoQueue;
inline int32_t EchoCount = 0;

// Slots that sound, oldest first: feeds the polyphony figure.
inline SlotTable<int16_t> VoiceList;
inline int32_t VoiceCount = 0;
inline SlotTable<uint32_t> VoiceStart;  // clock at the last start
inline SlotTable<bool> VoiceActive;

// The system sounds. kClassSS to kClassE are loaded and never played.
enum class SE : int32_t {
  kCursor,       // the cursor of a list moves
  kSelectMusic,  // looped on the list screens
  kDecide,       // a song, a course or a list is decided
  kReady,        // a play begins
  kFade,         // a fade begins, or another list opens
  kClassSS,
  kClassS,
  kClassA,
  kClassB,
  kClassC,
  kClassD,
  kClassE,
  kSelectStart,  // the list screen opens
  kClear,        // the results of a cleared play
  kFail,         // those of any other, and the stall of a miss under Pressure
  kTick,         // a setting was changed by its key; looped while the results count up
};
inline Table<SoundBufferPtr, 15> SystemSound;  // by SE
inline int32_t SelectVolume = 0;  // of the list's music, hundredths of a decibel; -1500 under a preview

// The master volume that the volume keys move, 0 to MixerMax.
constexpr int32_t MixerMax = 65535;
inline int32_t MixerValue = MixerMax;

// The description and format that the reader sets up for its sounds.
inline platform::SoundDescription wavDescription;
inline platform::SoundFormat wavFormat;
inline uint32_t WavDataSize = 0;  // bytes of the data of the file read last

void ResetSounds();

}  // namespace qlm
