// Notes that are thrown onto other lanes ahead of the player.
#pragma once

namespace qlm {

// Throws the notes of the first side's lanes, the turntable apart, anew from 384 units ahead to
// 256 / HiSpeed units ahead, where they stay. Two notes of a chord never share a lane. The object table is
// changed for good.
void ShuffleAhead();

}  // namespace qlm
