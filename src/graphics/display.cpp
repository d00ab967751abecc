// The display and its surfaces.
#include "graphics/display.h"

#include <algorithm>
#include <string>

#include "base/hooks.h"
#include "base/log.h"
#include "graphics/bga.h"
#include "graphics/bitmaps.h"
#include "graphics/present.h"
#include "platform/clock.h"
#include "platform/font.h"
#include "platform/text.h"
#include "platform/window.h"
#include "state/session.h"
#include "state/settings.h"

namespace qlm {
namespace {

// Error numbers of the display as the log writes them.
constexpr int32_t kDisplayOk = 0;
constexpr int32_t kDisplayFailed = static_cast<int32_t>(0x80004005);
constexpr int32_t kBadSize = static_cast<int32_t>(0x80070057);

// Another value than those told counts as the first.
platform::Scaling ScalingOf(int32_t setting) {
  switch (setting) {
    case 1: return platform::Scaling::kWhole;
    case 2: return platform::Scaling::kSmooth;
    default: return platform::Scaling::kBest;
  }
}

int32_t OpenDisplay() {
  std::string why;
  const bool opened = platform::OpenGameWindow({.title = u"quillmarch",
                                                .windowed = Windowed,
                                                .width = (Halfsize ? 320 : 640) * windowTimes,
                                                .height = (Halfsize ? 240 : 480) * windowTimes,
                                                .waitForBlank = !NOVSync,
                                                .scaling = ScalingOf(Scaling)},
                                               why);
  if (opened) return kDisplayOk;
  DebugLog(Join(u"Error: Can't create DirectDraw object. : ", kDisplayFailed));
  DebugLog(Join(u"# No display: ", platform::DecodeUtf8(why)));
  return kDisplayFailed;
}

SurfacePtr BlackSurface(int32_t width, int32_t height) {
  auto surface = std::make_shared<Surface>(width, height);
  surface->SetColourKey(0, 0);
  return surface;
}

// Once for all, so that a judgement has nothing to draw but copies them. They take no video memory.
GraphDigits DrawGraphDigits() {
  constexpr int32_t kHeight = 11;  // 8 points at 96 dots an inch
  constexpr TextView kDigits = u"0123456789";
  GraphDigits digits;
  digits.height = kHeight;
  for (size_t digit = 0; digit < kDigits.size(); ++digit) {
    digits.width = std::max(digits.width, platform::FontTextWidth(kDigits.substr(digit, 1), kHeight));
  }
  if (digits.width == 0) return {};
  Surface strip(10 * digits.width, kHeight);
  int32_t left = 0;
  for (size_t digit = 0; digit < kDigits.size(); ++digit, left += digits.width) {
    platform::DrawFontText(strip, left, 0, kDigits.substr(digit, 1), kHeight, platform::Rgb(255, 255, 255));
  }
  for (int32_t y = 0; y < kHeight; ++y) {
    for (const platform::Colour white : strip.Row(y)) digits.ink.push_back(white & 255);
  }
  return digits;
}

bool CanBeMade(int32_t width, int32_t height) {
  return width > 0 && height > 0 && width <= Surface::kMaxSide && height <= Surface::kMaxSide;
}

void RestoreDisplay() {
  displayIsLost = false;
  CreateSurfaces();
  BGADirty = true;  // the composed picture went with its surface
  if (hooks.displayRegained != nullptr) hooks.displayRegained();
}

}  // namespace

void InitDX() { DebugLog(u"[InitDX]"); }

void InitDD(DisplayOutput output) {
  DebugLog(u"[InitDD]", 1);
  const int32_t error = output == DisplayOutput::kWindow ? OpenDisplay() : kDisplayOk;
  DDPrimary = BlackSurface(640, 480);
  displayOpen = true;
  DebugLog(Join(u"Display mode changed to 640x480x", (ScreenColors + 1) * 8, u" : error = ", error));
  DebugLog(Join(u"Primary Surface created. VRAM FREE:", FreeVideoMemory()), -1);
  BgaSource = {0, 0, 256, 256};
}

void CreateSurfaces() {
  if (!displayOpen) return;
  for (SurfacePtr* surface : {&DDBack, &DDBga, &DDGraph, &DDSnapshot, &DDPreview}) surface->reset();
  DebugLog(u"[CreateSurfaces]");
  DebugLog(Join(u"VRAM ", FreeVideoMemory(), u"bytes free"));
  DebugLog(u"Creating surfaces...");
  DDBack = BlackSurface(640, 480);
  CreateBgaSurface();
  DDGraph = BlackSurface(300, 203);
  if (graphDigits.width == 0) graphDigits = DrawGraphDigits();
  DDSnapshot = BlackSurface(640, 480);
  DDPreview = std::make_shared<Surface>(192, 144);
}

void CreateBgaSurface() {
  DDBga.reset();
  if (CanBeMade(BgaW, BgaH)) {
    DDBga = std::make_shared<Surface>(BgaW, BgaH);
  } else {
    DebugLog(Join(u"Error : can't create BGA surface : ", kBadSize));
  }
}

void ReleaseDD() {
  platform::CloseGameWindow();
  platform::CloseFonts();
  DDPrimary.reset();
  DDBack.reset();
  DDBga.reset();
  SkinFile.Clear();
  ReleaseAllPictures();
  displayOpen = false;
}

bool CheckDisplay() {
  if (platform::DisplayAvailable()) {
    if (displayIsLost) RestoreDisplay();
    return true;
  }
  if (!displayIsLost) {
    displayIsLost = true;
    if (PlayAlive && !Paused && hooks.displayLost != nullptr) hooks.displayLost();
  }
  DoEvents();
  // Without a rest of its own the wait would take a whole processor.
  platform::SleepFor(std::max(FrameRest(), 1U));
  platform::FrameShown();
  return false;
}

}  // namespace qlm
