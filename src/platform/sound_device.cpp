// The sound device and its buffers.
#include "platform/sound_device.h"

namespace platform {

SoundDeviceInfo OpenSoundDevice(SoundOutput) { return {}; }
void CloseSoundDevice() {}
SoundBufferResult CreateSoundBuffer(const SoundDescription&, const SoundFormat&) { return {}; }
SoundBufferResult DuplicateSoundBuffer(const SoundBufferPtr&) { return {}; }
void RenderSound(std::span<int16_t>) {}

}  // namespace platform
