// The master volume.
#include "sound/volume.h"

#include "platform/sound_device.h"
#include "state/sounds.h"

namespace qlm {

static_assert(MixerMax == platform::kFullSoundVolume);

bool GetVolume(int32_t& value) {
  const std::optional<int32_t> volume = platform::SoundVolume();
  if (volume) value = *volume;
  return volume.has_value();
}

bool SetVolume(int32_t value) { return platform::SetSoundVolume(value) == platform::kSoundOk; }

}  // namespace qlm
