// The sound slots of the chart: loading, caching, and what happens to all of them at once.
#include "sound/slots.h"

#include <cmath>

#include "base/log.h"
#include "base/numbers.h"
#include "platform/clock.h"
#include "platform/heap.h"
#include "sound/buffers.h"
#include "state/chart.h"
#include "state/message.h"
#include "state/options.h"
#include "state/session.h"
#include "state/slots.h"
#include "state/timeline.h"

namespace qlm {
namespace {

// The path that the slot has to hold, null where the tables have none. In a course that is being played it is
// the song's own, which is marked loaded with that.
Text* WantedFile(int32_t slot, TextView& word) {
  word = u"loadwav: ";
  if (!CourseMode || GameState != kStatePlay) return WavFile.Find(slot);
  word = u"loadwav2: ";
  if (auto* loaded = CourseWavLoaded.Find(CourseSong)) loaded->Put(slot, true);
  auto* song = CourseWavFile.Find(CourseSong);
  return song != nullptr ? song->Find(slot) : nullptr;
}

// Milliseconds that the sound lasts at its own frequency; 0 where its header has no rate.
float LengthMs(const platform::SoundDescription& description, const platform::SoundFormat& format) {
  const double length = static_cast<double>(description.bytes) / format.avgBytesPerSec * 1000;
  return std::isfinite(length) ? static_cast<float>(length) : 0.0F;
}

void SetSlotFrequency(int32_t slot) {
  const auto hertz = Round(static_cast<double>(WavFrequency[slot]) * static_cast<double>(RealHiSpeed));
  if (hertz) WavBuffer[slot]->SetFrequency(*hertz);
}

// At the start, at full volume, at the speed of the play.
void ReadySlot(int32_t slot) {
  if (!WavBuffer.Holds(slot)) return;
  WavLoaded[slot] = 255;
  SoundBufferPtr& buffer = WavBuffer[slot];
  if (buffer == nullptr) return;
  SetSlotFrequency(slot);
  buffer->SetCurrentPosition(0);
  buffer->SetVolume(0);
}

}  // namespace

void loadwav(int32_t slot) {
  const uint32_t start = platform::Now();
  if (slot == 0) return;
  TextView word;
  Text* wanted = WantedFile(slot, word);
  bool there = wanted == nullptr || *wanted == WavHeldName[slot];
  if (!there) {
    FindWideSound(*wanted);
    there = *wanted == WavHeldName[slot];
  }
  if (there) {
    DebugLog(Join(word, slot, u" > cancelled"));
    ReadySlot(slot);
    return;
  }

  DebugLog(Join(u"loadwav: ", slot));
  platform::SoundError error = platform::kSoundOutOfMemory;
  WavBuffer[slot].reset();
  // Quirk: a name that another extension was found for is corrected in both tables, so that the sound stays
  // for the play. The next read of the chart asks for the name that it gives, which is another file then, and
  // is loaded anew.
  platform::WithinMemory([&] { WavBuffer[slot] = CreateSndBuf(*wanted, wavDescription, wavFormat, error); });
  // A sound that was given up inside its decoding is not held to be one that cannot be loaded.
  const bool givenUp = LoadAbort && WavBuffer[slot] == nullptr;
  WavHeldName[slot] = givenUp ? Text() : *wanted;
  const int32_t took = platform::Elapsed(platform::Now(), start);
  const Text complete = Join(u"> complete in ", took, u" ms");
  if (error != platform::kSoundOk) {
    DebugLog(LoadErrorLine(error, slot));
    DebugLog(complete);
    return;
  }
  ShowMessage(Join(u"WAV LOAD: ", MessageSlot(slot), u" (in ", took, u"ms)"));
  DebugLog(complete);
  if (WavBuffer[slot] != nullptr) {
    WavFrequency[slot] = WavBuffer[slot]->Frequency();
    WavLengthMs[slot] = LengthMs(wavDescription, wavFormat);
  }
  ReadySlot(slot);
}

Text LoadErrorLine(platform::SoundError error, int32_t slot) {
  const Text start = Join(u"> Err[", error, u"]: ");
  switch (error) {
    case platform::kSoundBadFormat: return start + u"DSERR_BADFORMAT";
    case platform::kSoundUninitialized: return start + u"DSERR_UNINITIALIZED";
    case platform::kSoundOutOfMemory: return start + u"DSERR_OUTOFMEMORY";
    case platform::kSoundUnsupported: return start + u"DSERR_UNSUPPORTED";
    case platform::kSoundInvalidParam: return start + u"DSERR_INVALIDPARAM";
    case platform::kSoundAllocated: return start + u"DSERR_ALLOCATED";
    default: return Join(start, u"other error : ", WavFile[slot]);
  }
}

void LoadCourseSound(int32_t song, int32_t slot) {
  auto* files = CourseWavFile.Find(song);
  auto* buffers = CourseWavBuffer.Find(song);
  auto* loaded = CourseWavLoaded.Find(song);
  if (files == nullptr || buffers == nullptr || loaded == nullptr || !files->Holds(slot)) return;
  (*buffers)[slot].reset();
  platform::SoundError error = platform::kSoundOk;
  FindWideSound((*files)[slot]);
  (*buffers)[slot] = CreateSndBuf((*files)[slot], wavDescription, wavFormat, error);
  (*loaded)[slot] = true;
}

void ReleaseUnnamedSound(int32_t slot) {
  if (!WavBuffer.Holds(slot) || WavFile[slot] == WavHeldName[slot]) return;
  WavBuffer[slot].reset();
  WavHeldName[slot].clear();
}

void ReleaseAllSounds() {
  WavBuffer.Clear();
  WavHeldName.Clear();
  for (auto& step : EchoBuffer) step.Clear();
  for (auto& song : CourseWavBuffer) song.Clear();
}

void ApplySoundSpeed() {
  for (loopCounter = 0; loopCounter <= LastSlot; ++loopCounter) {
    if (WavBuffer[loopCounter] != nullptr) SetSlotFrequency(loopCounter);
  }
}

void StopPlayingSounds() {
  for (loopCounter = 1; loopCounter <= LastSlot; ++loopCounter) {
    const SoundBufferPtr& buffer = WavBuffer[loopCounter];
    WavWasPlaying[loopCounter] = buffer != nullptr && buffer->Playing();
    if (WavWasPlaying[loopCounter]) buffer->Stop();
  }
}

void ResumeStoppedSounds() {
  for (loopCounter = 1; loopCounter <= LastSlot; ++loopCounter) {
    if (WavWasPlaying[loopCounter] && WavBuffer[loopCounter] != nullptr) WavBuffer[loopCounter]->Play(false);
  }
}

void RewindSounds() {
  for (loopCounter = 0; loopCounter <= LastSlot; ++loopCounter) {
    if (WavBuffer[loopCounter] == nullptr) continue;
    WavBuffer[loopCounter]->SetCurrentPosition(0);
    WavBuffer[loopCounter]->Stop();
  }
}

void StopAndRewindSounds() {
  for (const SoundBufferPtr& buffer : WavBuffer) {
    if (buffer == nullptr) continue;
    buffer->Stop();
    buffer->SetCurrentPosition(0);
  }
}

}  // namespace qlm
