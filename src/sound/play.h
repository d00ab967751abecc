// Starting of sounds: chart slots, echoes, system sounds, and the list of what sounds.
#pragma once

#include <cstdint>

#include "platform/sound_device.h"
#include "state/sounds.h"

namespace qlm {

// Frames that the setting SoundBlock has the device asked for at a time.
int32_t SoundBlockToAsk();
// Opens the device and loads the system sounds. Without a device the game goes on silently, and the log says
// so.
void InitDS(platform::SoundOutput output = platform::SoundOutput::kDevice);
// Gives back every sound, and then the device.
void ReleaseDS();

// Starts a slot from its beginning, loading it first when it is not there. `position` is carried and not
// used; `echoStep` is 0, or 1 to 4 for an echo. Slots outside the tables sound nothing, but their echoes take
// their places in the queue. With the sound loaded and no echo the call takes no memory and no disk.
void PlayWav(int32_t slot, int32_t position, int32_t echoStep);
// System sounds; numbers that are none of them do nothing.
void PlaySE(SE sound, bool looping = false);
void StopSE(SE sound);
void SetSEVolume(SE sound, int32_t volume);

// An entry past the queue's 256 is lost. A slot outside the tables takes its place and sounds nothing.
void EchoPush(int32_t time, int32_t slot, int32_t step);
// Removes the entry; later ones move down by one.
void EchoPop(int32_t index);
// Empties the queue and lets the voices of echoes go, which ends those that sound.
void DropEchoes();
// Plays and removes the entries whose time is below playClock, and gives their count.
int32_t ServeEchoes();

void VoiceAdd(int32_t slot);
void VoiceRemove(int32_t slot);
// Removes what has sounded to its end. Once a drawn frame.
void VoicePurge();

// Volumes of a fade that has run for `ms`: every loaded sound in the chart-end fade, every existing one in
// the fail fade. Volumes out of range, as in the first second of the fail fade, change nothing.
void FadeEndVolumes(int32_t ms);
void FadeFailVolumes(int32_t ms);

}  // namespace qlm
