// What is heard on the writing desk: pen, paper, seal, pencil, breath.
#pragma once

#include <cstdint>

#include "sound.h"

namespace assetmaker {

// The nib tapped on wood.
Sound NibTap(std::uint32_t seed = 1);

// A stroke of the pen over rough paper. `lift` is how its pitch moves: 1 upwards, -1 downwards, 0 not at all.
Sound PenStroke(double seconds, double lift, std::uint32_t seed = 1);

// A stroke with a broad nib, pressed hard: brighter and rougher, to be heard above a whole band.
Sound BroadStroke(double seconds, double lift, std::uint32_t seed);

// A page turned over; `seconds` 0.1 is a flick, 0.5 a big sheet.
Sound PageTurn(double seconds);

// A seal pressed on paper.
Sound Stamp();

// A pencil that falls on the desk, bounces and lies.
Sound PencilDrop();

// A breath taken in through the mouth.
Sound Breath(double seconds);

// The ground noise of an old record: a faint hush and crackle, for looping.
Sound Vinyl(std::size_t length);

}  // namespace assetmaker
