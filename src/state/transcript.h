// What a play did, step by step, for tools and tests: filled only while one is attached.
#pragma once

#include <cstdint>
#include <vector>

namespace qlm {

struct Transcript {
  struct Start {
    int32_t clock;  // play clock, ms
    int32_t slot;
  };
  struct Tempo {
    int32_t clock;
    float curBPM;
    int32_t posOffset;
  };
  struct Judgement {
    int32_t turn;
    int32_t clock;
    double playPos;
    int32_t obj;
    int32_t channel;
    int32_t pos;
    float deltaUsed;  // position units, behind the forgiveness of even timing
    int32_t grade;    // 4 PERFECT … 0 POOR
    bool tooEarly;
    int32_t side;  // score side
  };
  struct Place {
    int32_t clock;
    double playPos;
  };

  std::vector<Start> starts;  // every start of a chart sound
  std::vector<Tempo> tempi;   // after every tempo change
  std::vector<Place> places;  // at every 50th turn
  std::vector<Judgement> judgements;
  int32_t turns = 0;  // turns of the running play
};

// Null for players: the play then writes nothing and allocates nothing.
inline Transcript* transcript = nullptr;

}  // namespace qlm
