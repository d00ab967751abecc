// The one-line screen message.
#pragma once

#include <cstdint>
#include <vector>

#include "base/text.h"

namespace qlm {

struct ScreenMessage {
  bool up = false;
  uint32_t time = 0;  // clock at which it was posted
  Text text;
};
inline ScreenMessage message;

// What a load has to tell; it is shown when the play begins. Empty when all went well.
inline Text loadNotice;

// What keeps the chart in memory from being played as its author meant it, in lines that fit into the
// picture. They stand there as long as it is played. Empty when there is nothing of the kind.
inline std::vector<Text> chartTrouble;

// Adds to what the load has to tell.
void AddLoadNotice(TextView text);
// Posts a message; the one before it goes away.
void ShowMessage(TextView text);

void ResetMessage();

}  // namespace qlm
