// The one-line screen message.
#pragma once

#include <cstdint>

#include "base/text.h"

namespace qlm {

inline bool messageUp = false;
inline uint32_t messageTime = 0;  // clock at which it was posted
inline Text messageText;

// What a load has to tell; it is shown when the play begins. Empty when all went well.
inline Text loadNotice;

// Posts a message; the one before it goes away.
void ShowMessage(TextView text);

void ResetMessage();

}  // namespace qlm
