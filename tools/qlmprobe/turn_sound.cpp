// The sound of turns, by the device layer itself.
#include "tools/qlmprobe/turn_sound.h"

#include "platform/sound_device.h"

namespace probe {

int64_t SoundFramesAt(int64_t ms) {
  const int64_t thousandths = ms * kSoundRate;
  return thousandths / 1000 - (thousandths % 1000 < 0 ? 1 : 0);
}

std::span<const int16_t> TurnSound::Render(int64_t turn, int64_t next) {
  block_.resize(static_cast<size_t>((SoundFramesAt(next) - SoundFramesAt(turn)) * kSoundChannels));
  platform::RenderSound(block_);
  return block_;
}

}  // namespace probe
