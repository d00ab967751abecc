// The material all sounds are made of: mono waves as the voices make them, and stereo sounds as files hold
// them.
#pragma once

#include <cstddef>
#include <vector>

namespace assetmaker {

constexpr int sampleRate = 44100;

// One channel of samples at `sampleRate`; full scale is -1 to 1, but a wave may be of any height.
using Wave = std::vector<float>;

// Two channels of equal length.
struct Sound {
  Wave left, right;
};

// Seconds as a number of samples, to the nearest.
std::size_t Samples(double seconds);

// Decibels as a factor.
double Decibels(double db);

// Adds `gain` times `part` to `whole` from sample `at` on; `whole` grows as needed.
void Mix(Wave& whole, const Wave& part, std::size_t at = 0, double gain = 1);
void Mix(Sound& whole, const Sound& part, std::size_t at = 0, double gain = 1);

// As Mix, but what runs over the end comes in again at the beginning, so that the whole loops without a seam.
void MixAround(Sound& loop, const Sound& part, std::size_t at, double gain = 1);

// The highest sample, without its sign.
double Peak(const Wave& wave);
double Peak(const Sound& sound);

void Scale(Wave& wave, double gain);
void Scale(Sound& sound, double gain);

// `wave` times a factor that makes its peak 1. A silent wave stays as it is.
Wave Normalised(Wave wave);

// A wave between the two loudspeakers: -1 left, 0 middle, 1 right, at equal power.
Sound Pan(const Wave& wave, double position);

// Fades the last `seconds` out along half a cosine.
void FadeOut(Wave& wave, double seconds);
void FadeOut(Sound& sound, double seconds);

// Fades the first `seconds` in. Only for what would click otherwise.
void FadeIn(Wave& wave, double seconds);

// Cuts the end off where nothing rises above `floor` of the peak any more, and rounds the cut with a short
// fade.
void TrimTail(Sound& sound, double floor);

}  // namespace assetmaker
