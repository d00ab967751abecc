// The end of every frame.
#include "graphics/present.h"

#include <algorithm>
#include <string>
#include <utility>

#include "base/hooks.h"
#include "base/numbers.h"
#include "base/paths.h"
#include "graphics/bitmaps.h"
#include "graphics/draw.h"
#include "graphics/flip_wait.h"
#include "graphics/skin_watch.h"
#include "input/input.h"
#include "platform/clock.h"
#include "platform/files.h"
#include "platform/timers.h"
#include "platform/window.h"
#include "state/message.h"
#include "state/session.h"
#include "state/settings.h"
#include "state/song_find.h"
#include "state/sounds.h"
#include "state/surfaces.h"

namespace qlm {
namespace {

constexpr int32_t kMessageStands = 1000;  // ms for which a message stays whole
constexpr int32_t kUnseenFramesPerSecond = 60;
constexpr int32_t kFpsInterval = 200;  // ms between two frame rate figures

constexpr platform::WindowEvents kEvents{
    .closeRequested =
        [] {
          if (hooks.closeRequested != nullptr) hooks.closeRequested();
        },
    .activated =
        [](bool active) {
          WindowActive = active;
          if (!active) ReleaseKeyboard();
        },
    .key = DispatchKey,
    .character =
        [](char16_t unit) {
          if (hooks.character != nullptr) hooks.character(unit);
        },
    .composing =
        [](std::u16string_view text) {
          if (hooks.composing != nullptr) hooks.composing(text);
        },
    .mouseDown =
        [](platform::MouseButton button) {
          if (hooks.mouseDown == nullptr) return;
          if (button == platform::MouseButton::kLeft) hooks.mouseDown(0);
          if (button == platform::MouseButton::kRight) hooks.mouseDown(1);
        },
    .mouseMoved =
        [](int32_t x, int32_t y) {
          if (hooks.mouseMoved != nullptr) hooks.mouseMoved(x, y);
        },
    .wheelTurned =
        [](int32_t steps) {
          if (hooks.wheelTurned != nullptr) hooks.wheelTurned(steps);
        },
    .fileDropped =
        [](const std::string& path) {
          if (hooks.fileDropped != nullptr) hooks.fileDropped(platform::InnerPath(path));
        },
};

// In the editor too: the Enter that begins the name of a course brings its character there, behind the key.
bool TakesCharacters() {
  if (songFind.typing && IsListState(GameState)) return true;
  return GameState == kStateEnterCourse || GameState == kStateEditCourse || GameState == kStateEnterName;
}

// Once it has stood for its second, a message is eaten from its head, more of it in each frame.
void DrawMessage() {
  if (!message.up) return;
  const MessagePlace place = PlaceOfMessage();
  // High letters reach below the screen there.
  DrawTextWithin(kScreen, place.x, place.y, message.text);
  const int32_t ms = platform::Elapsed(platform::Now(), message.time) - kMessageStands;
  if (ms < 0) return;
  // Character n counted from 1 becomes the first; there is no character 0, so the first tenth leaves it
  // whole.
  if (const int32_t n = ms / 100; n > 1) {
    message.text.erase(0, static_cast<size_t>(n - 1));
  }
  message.up = !message.text.empty();
}

void DrawFrameRate() {
  if (!DDBack) return;
  const int32_t y = 479 - SysFontH;
  DrawText(310, y, u"FPS:", 0);
  DrawText(310 + 4 * SysFontW, y, Fixed(Fps, 1), 0);
}

void DrawMemory() {
  const auto inKib = [](int64_t bytes) { return Fixed(static_cast<double>(bytes) / 1024, 1, true); };
  DrawText(320, 400, Join(u"VRAM: ", inKib(FreeVideoMemory()), u" / ", inKib(videoMemoryTotal)), 0);
  DrawText(320, 410, Join(u" MEM: ", MemoryStatus()), 0);
  DrawText(320, 430, Join(u" POL: ", VoiceCount), 0);
}

void Show(bool waits) {
  if (hooks.framePresented != nullptr) hooks.framePresented();
  // Quirk: a window that is not drawn directly asks for a flip, which a window cannot do: the frame stays
  // unseen.
  const bool canShow = DirectBlt || !Windowed;
  if (DDBack && canShow) {
    platform::ShowFrame(*DDBack, waits);
    std::swap(DDBack, DDPrimary);
  }
  // An unseen frame has no blank to wait for, and without a rest the play would take a whole processor.
  if (waits && !(canShow && platform::WindowOpen())) platform::WaitForBeat(kUnseenFramesPerSecond);
  platform::FrameShown();
  if (KeysAtOnce) NoteFlip();
  ScreenRect = FullRect;
}

// What a finished frame waits before it is shown.
void Rest(bool waits) {
  if (KeysAtOnce) {
    ServeKeysUntilFlip(kEvents, FrameRest(), waits);
  } else if (const uint32_t rest = FrameRest(); rest > 0) {
    platform::SleepFor(rest);
  }
}

void CountFrame() {
  ++FrameCount;
  const uint32_t now = platform::Now();
  const int32_t elapsed = platform::Elapsed(now, FpsTime);
  if (elapsed < kFpsInterval) return;
  Fps = FrameCount * 1000.0 / elapsed;
  FrameCount = 0;
  FpsTime = now;
}

}  // namespace

MessagePlace PlaceOfMessage() {
  if (GameState != kStatePlay) return {0, 465};
  return MessageRect == Rect{} ? MessagePlace{220, 385} : MessagePlace{MessageRect.left, MessageRect.top};
}

void DoEvents() {
  platform::TakeCharacters(TakesCharacters());
  platform::PumpWindowEvents(kEvents);
  if (hooks.pumped != nullptr) hooks.pumped();
  platform::RunDueTimers();
}

void PresentFrame(bool noWait, bool quiet) {
  if (!quiet) {
    DrawMessage();
    DrawFrameRate();
  }
  if (Debug) DrawMemory();
  if (WatchSkins) DrawSkinTrouble();
  const bool waits = !noWait && !NOVSync;
  DoEvents();
  Rest(waits);
  Show(waits);
  ReadJoysticks();
  CountFrame();
  if (DDBack) DDBack->Fill(FullRect, 0);
  if (WatchSkins) FollowSkin();
}

// Quirk: a setting above 100 is kept and counts as 100. With one of hours the boot would not end, and a play
// would not answer its keys.
uint32_t FrameRest() {
  constexpr int32_t kLongestRest = 100;
  return static_cast<uint32_t>(std::clamp(Sleep, 0, kLongestRest));
}

void SetCaption(TextView text) {
  if (Windowed) platform::SetWindowTitle(text);
}

}  // namespace qlm
