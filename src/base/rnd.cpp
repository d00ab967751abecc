// Two small generators of the same kind; 24 bits of each number are used, as many as a 32-bit float holds.
#include "base/rnd.h"

#include <cstddef>
#include <utility>

namespace qlm {
namespace {

// splitmix64: one addition and a mix per number, and any seed will do.
class Stream {
 public:
  void Seed(uint32_t seed) { state_ = seed; }
  float Next() {
    uint64_t z = state_ += 0x9E3779B97F4A7C15;
    z = (z ^ (z >> 30)) * 0xBF58476D1CE4E5B9;
    z = (z ^ (z >> 27)) * 0x94D049BB133111EB;
    return static_cast<float>((z ^ (z >> 31)) >> 40) * 0x1p-24F;
  }

 private:
  uint64_t state_ = 0;
};

Stream game;
Stream drawing;
std::vector<float> list;
size_t listPlace = 0;

}  // namespace

float Rnd() {
  if (list.empty()) return game.Next();
  return list[listPlace++ % list.size()];
}

void SeedRnd(uint32_t seed) { game.Seed(seed); }

void SetRndList(std::vector<float> numbers) {
  list = std::move(numbers);
  listPlace = 0;
}

float DrawRnd() { return drawing.Next(); }
void SeedDrawRnd(uint32_t seed) { drawing.Seed(seed); }

}  // namespace qlm
