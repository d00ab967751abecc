// The typing of a course's name.
#include "screens/course_name.h"

#include "base/text.h"
#include "state/keys.h"
#include "state/message.h"
#include "state/session.h"
#include "state/song_select.h"

namespace qlm {
namespace {

constexpr int32_t kBackSpace = 8;
constexpr int32_t kEnter = 13;
constexpr int32_t kEsc = 27;

bool NoFileNameHolds(int32_t ascii) {
  constexpr TextView kRefused = u"*/\\\":?<>|";
  return ascii > 0 && ascii < 128 && kRefused.find(static_cast<char16_t>(ascii)) != TextView::npos;
}

// The Enter that began the typing comes as a character too, the first one. The key that ends it does no more
// until it is let go.
void EndTyping() {
  if (!songSelect.nameEntry) GameState = kStateEditCourse;
  songSelect.nameEntry = false;
  enterEaten = true;
}

}  // namespace

void ProcessKey_EnterCourse(int32_t ascii) {
  Text& name = songSelect.courseName;
  if (NoFileNameHolds(ascii)) {
    ShowMessage(Join(u"sorry, can't use ", Text(1, static_cast<char16_t>(ascii)), u" for filename."));
  } else if (ascii > 127) {
    ShowMessage(u"sorry, only ASCII can be used for filename.");
  } else if (ascii >= 32) {
    name += static_cast<char16_t>(ascii);
  } else if (ascii == kBackSpace) {
    if (!name.empty()) name.pop_back();
  } else if (ascii == kEnter || ascii == kEsc) {
    EndTyping();
  }
}

}  // namespace qlm
