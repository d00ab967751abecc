// Starting of sounds: chart slots, echoes, system sounds, and the list of what sounds.
#include "sound/play.h"

#include <algorithm>
#include <array>
#include <bit>

#include "base/log.h"
#include "base/numbers.h"
#include "base/paths.h"
#include "platform/clock.h"
#include "platform/text.h"
#include "sound/buffers.h"
#include "sound/slots.h"
#include "state/chart.h"
#include "state/session.h"
#include "state/settings.h"
#include "state/slots.h"
#include "state/sounds.h"
#include "state/timeline.h"
#include "state/transcript.h"
#include "state/wide_chart.h"

namespace qlm {
namespace {

constexpr int32_t kEchoes = 4;
constexpr uint32_t kEchoGapMs = 200;
constexpr int32_t kEchoQueueLength = 256;
constexpr int16_t kNoSlot = -1;         // in the queue: an echo that sounds nothing
constexpr int32_t kChartVolume = -500;  // leaves room for the sum of many sounds

// File names, by SE.
constexpr std::array<TextView, 16> kSystemSounds = {
    u"sngchg",  u"select",  u"sngdecide", u"ready",   u"fade",     u"class_ss",  u"class_s",  u"class_a",
    u"class_b", u"class_c", u"class_d",   u"class_e", u"selstart", u"res_clear", u"res_fail", u"ptscount"};

// Null buffers and refused volumes are passed over.
void SetVolume(const SoundBufferPtr& buffer, int64_t volume) {
  if (buffer != nullptr && volume >= INT32_MIN && volume <= INT32_MAX) {
    buffer->SetVolume(static_cast<int32_t>(volume));
  }
}

void Restart(const SoundBufferPtr& buffer, bool looping) {
  if (buffer == nullptr) return;
  buffer->Stop();
  buffer->SetCurrentPosition(0);
  buffer->Play(looping);
}

// Loads what the slot still lacks.
void LoadOnDemand(int32_t slot) {
  if (CourseMode) {
    const auto* song = CourseWavLoaded.Find(CourseSong);
    if (song == nullptr || !song->Holds(slot) || !(*song)[slot]) loadwav(slot);
  } else if (!WavBuffer.Holds(slot) || WavLoaded[slot] == 0 || WavBuffer[slot] == nullptr) {
    loadwav(slot);
  }
}

SoundBufferPtr BufferOf(int32_t slot) {
  if (!WavBuffer.Holds(slot)) return nullptr;
  if (!CourseMode || CourseLoadMode != 2 || PreviewActive) return WavBuffer[slot];
  const auto* song = CourseWavBuffer.Find(CourseSong);
  return song != nullptr ? (*song)[slot] : nullptr;
}

// What a start's volume is in the fade that runs.
void SetStartVolume(const SoundBufferPtr& buffer) {
  const int64_t passed = platform::Elapsed(platform::Now(), FadeStart);
  switch (FadeState) {
    case kFadeEnd: SetVolume(buffer, -passed * 50); break;
    case kFadeFail:
      // Quirk: the volume goes to the slot that the last walk over the slots ended on, and the started sound
      // keeps its own.
      if (const SoundBufferPtr* other = WavBuffer.Find(loopCounter)) SetVolume(*other, (1000 - passed) * 5);
      break;
    default: SetVolume(buffer, MinI32(kChartVolume + ChartVolume, 0));
  }
}

void QueueEchoes(int32_t slot) {
  for (loopCounter = 1; loopCounter <= kEchoes; ++loopCounter) {
    const uint32_t time = static_cast<uint32_t>(playClock) + static_cast<uint32_t>(loopCounter) * kEchoGapMs;
    EchoPush(static_cast<int32_t>(time), slot, loopCounter);
  }
}

// A new voice for one step of an echo, the quieter the later.
SoundBufferPtr EchoVoice(const SoundBufferPtr& buffer, int32_t slot, int32_t step) {
  SoundBufferPtr voice = platform::DuplicateSoundBuffer(buffer).buffer;
  if (auto* slots = EchoBuffer.Find(step)) slots->Put(slot, voice);
  const double part = step / static_cast<double>(kEchoes);
  if (const auto volume = Round(part * part * -8000)) SetVolume(voice, *volume);
  return voice;
}

}  // namespace

int32_t SoundBlockToAsk() {
  constexpr int32_t kShortest = 64;
  constexpr int32_t kLongest = 2048;
  const bool fits = SoundBlock >= kShortest && SoundBlock <= kLongest &&
                    std::has_single_bit(static_cast<uint32_t>(SoundBlock));
  return fits ? SoundBlock : platform::kUsualBlock;
}

void InitDS(platform::SoundOutput output) {
  DebugLog(u"[InitDS]", 1);
  const platform::SoundDeviceInfo device = platform::OpenSoundDevice(output, SoundBlockToAsk());
  if (device.blockFrames > 0) {
    DebugLog(Join(u"* Sound device: ", platform::DecodeUtf8(device.driver), u", ", device.rate,
                  u"Hz, blocks of ", device.blockFrames, u" frames"));
  }
  if (output == platform::SoundOutput::kDevice && !device.heard) {
    DebugLog(Join(u"# No sound will be heard: ", platform::DecodeUtf8(device.why)));
  }
  DebugLog(u"SetCooperativeLevel: DSSCL_PRIORITY");
  DebugLog(u"loading SEs...");
  for (size_t i = 0; i < kSystemSounds.size(); ++i) {
    Text path = DataPath(Join(u"wav\\", kSystemSounds[i], u".wav"));
    platform::SoundDescription description;
    platform::SoundFormat format;
    platform::SoundError error = platform::kSoundOk;
    SystemSound[static_cast<int64_t>(i)] = CreateSndBuf(path, description, format, error);
  }
  DebugLog(u"complete", -1);
}

void ReleaseDS() {
  ReleaseAllSounds();
  SystemSound.Clear();
  platform::CloseSoundDevice();
}

// Quirk: a slot outside the tables, such as that of a lane without a sound, goes through all steps: it writes
// a line to the log, takes four places of the queue of echoes, and sounds nothing.
void PlayWav(int32_t slot, int32_t, int32_t echoStep) {
  VoiceAdd(slot);
  LoadOnDemand(slot);
  SoundBufferPtr buffer = BufferOf(slot);
  // Quirk: an echo that is still queued when echoes are switched off starts the slot itself.
  if (!EchoEnabled || echoStep == 0) SetStartVolume(buffer);
  if (EchoEnabled && echoStep == 0) QueueEchoes(slot);
  if (EchoEnabled && echoStep != 0) buffer = EchoVoice(buffer, slot, echoStep);
  Restart(buffer, false);
  if (transcript != nullptr && WavBuffer.Holds(slot)) transcript->starts.push_back({playClock, slot});
}

void PlaySE(SE sound, bool looping) {
  if (const SoundBufferPtr* buffer = SystemSound.Find(static_cast<int32_t>(sound))) Restart(*buffer, looping);
}

void StopSE(SE sound) {
  const SoundBufferPtr* buffer = SystemSound.Find(static_cast<int32_t>(sound));
  if (buffer != nullptr && *buffer != nullptr) (*buffer)->Stop();
}

void SetSEVolume(SE sound, int32_t volume) {
  const SoundBufferPtr* buffer = SystemSound.Find(static_cast<int32_t>(sound));
  if (buffer != nullptr) SetVolume(*buffer, volume);
}

void EchoPush(int32_t time, int32_t slot, int32_t step) {
  if (EchoCount >= kEchoQueueLength) return;
  const int16_t stored = WavBuffer.Holds(slot) ? static_cast<int16_t>(slot) : kNoSlot;
  EchoQueue[EchoCount] = {time, stored, step};
  ++EchoCount;
}

void EchoPop(int32_t index) {
  if (index < 0 || index >= EchoCount) return;
  for (int32_t i = index; i + 1 < EchoCount; ++i) EchoQueue[i] = EchoQueue[i + 1];
  --EchoCount;
}

void DropEchoes() {
  EchoCount = 0;
  for (auto& step : EchoBuffer) step.Clear();
}

int32_t ServeEchoes() {
  int32_t played = 0;
  for (int32_t i = 0; i < EchoCount;) {
    const Echo echo = EchoQueue[i];
    if (echo.time >= playClock) {
      ++i;
      continue;
    }
    PlayWav(echo.slot, 0, echo.step);
    EchoPop(i);
    ++played;
  }
  return played;
}

void VoiceAdd(int32_t slot) {
  if (!VoiceActive.Holds(slot)) return;
  VoiceRemove(slot);
  VoiceList.Put(VoiceCount, static_cast<int16_t>(slot));
  ++VoiceCount;
  VoiceStart[slot] = platform::Now();
  VoiceActive[slot] = true;
}

void VoiceRemove(int32_t slot) {
  const auto end = VoiceList.begin() + VoiceCount;
  const auto place = std::find(VoiceList.begin(), end, slot);
  if (place == end) return;
  VoiceStart[slot] = 0;
  VoiceActive[slot] = false;
  std::move(place + 1, end, place);
  --VoiceCount;
}

void VoicePurge() {
  const uint32_t now = platform::Now();
  for (int32_t i = 0; i < VoiceCount;) {
    const int32_t slot = VoiceList[i];
    if (platform::Elapsed(now, VoiceStart[slot]) > static_cast<double>(WavLengthMs[slot])) {
      VoiceRemove(slot);
    } else {
      ++i;
    }
  }
}

void FadeEndVolumes(int32_t ms) {
  for (int32_t slot = 0; slot <= LastSlot; ++slot) {
    if (WavLoaded[slot] != 0) SetVolume(WavBuffer[slot], int64_t{ms} * -50);
  }
}

void FadeFailVolumes(int32_t ms) {
  for (const SoundBufferPtr& buffer : WavBuffer) SetVolume(buffer, (int64_t{ms} - 1000) * -5);
}

}  // namespace qlm
