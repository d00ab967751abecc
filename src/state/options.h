// Play options: how notes look, on which lanes they fall, how fast they come.
#pragma once

#include <array>

#include "state/chart.h"

namespace qlm {

inline bool Hidden = false;
inline bool Sudden = false;
inline bool Stealth = false;
inline bool Reverse = false;  // stored and written only
inline bool Accel = false;
inline bool Quil = false;
inline bool HalfField = false;
inline bool Random = false;      // lanes permuted while reading
inline bool ExRandom = false;    // lanes scrambled ahead in play
inline bool Pressure = false;    // a BAD or POOR ends the play
inline bool FourDMode = false;   // each note has a speed of its own
inline int32_t PlayerForce = 0;  // 0 none, 1 to 1P, 2 to 2P, 3 to double play

inline float HiSpeed = 0;           // scroll factor
inline float RealHiSpeed = 0;       // tempo and pitch factor
inline float HiSpeedTarget = 0;     // what HiSpeed is drawn to; 0 is nothing
inline bool RandomHiSpeed = false;  // a fresh scroll factor each measure
inline bool ComboHiSpeed = false;   // the scroll factor follows the combo

inline std::array<bool, kLanes> AutoLane{};  // the machine plays the lane

void ResetOptions();

}  // namespace qlm
