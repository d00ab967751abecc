// The silence in front of a sample that is going to be an MP3.
#pragma once

#include <cstddef>

namespace assetmaker {

// The game begins behind the header of the first frame, so that this frame, 1152 samples, is lost. An encoder
// and its decoder put 1105 samples of silence before a sound; the lead fills the frame up.
constexpr std::size_t mp3Frame = 1152, mp3Delay = 1105;

// The frame after a lost one lacks the half that the lost one would have added to it: 576 samples grow out of
// silence. Most of this is spared the sound, so that its attack stays sharp. It is as late as this, 11.6 ms,
// and so are all sounds of a song.
constexpr std::size_t mp3Late = 512;

constexpr std::size_t mp3Lead = mp3Frame - mp3Delay + mp3Late;

}  // namespace assetmaker
