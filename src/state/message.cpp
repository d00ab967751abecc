// Posting of the screen message.
#include "state/message.h"

#include "platform/clock.h"

namespace qlm {

void ShowMessage(TextView text) {
  messageUp = true;
  messageTime = platform::Now();
  messageText = text;
}

void ResetMessage() {
  messageUp = false;
  messageTime = 0;
  messageText.clear();
  loadNotice.clear();
}

}  // namespace qlm
