// Random numbers: one stream for what the game computes, another for what only drawing uses.
#pragma once

#include <cstdint>
#include <vector>

namespace qlm {

// From 0 up to, but not including, 1.
float Rnd();
void SeedRnd(uint32_t seed);
// From here on Rnd() gives these numbers in turn, again and again, whatever the seed. An empty list ends
// that.
void SetRndList(std::vector<float> numbers);

// The stream of drawing, so that the numbers of a play do not depend on its pictures.
float DrawRnd();
void SeedDrawRnd(uint32_t seed);

}  // namespace qlm
