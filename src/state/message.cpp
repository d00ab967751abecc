// Posting of the screen message.
#include "state/message.h"

#include "platform/clock.h"

namespace qlm {

void ShowMessage(TextView text) {
  message.up = true;
  message.time = platform::Now();
  message.text = text;
}

void AddLoadNotice(TextView text) {
  if (!loadNotice.empty()) loadNotice += u", ";
  loadNotice += text;
}

void ResetMessage() {
  message = {};
  loadNotice.clear();
  chartTrouble.clear();
}

}  // namespace qlm
