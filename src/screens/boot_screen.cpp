// The boot screen.
#include "screens/boot_screen.h"

#include <algorithm>
#include <cstddef>
#include <span>

#include "base/paths.h"
#include "graphics/bitmaps.h"
#include "graphics/inks.h"
#include "graphics/present.h"
#include "platform/clock.h"
#include "platform/font.h"
#include "state/surfaces.h"

namespace qlm {
namespace {

using platform::Colour;
using platform::Rgb;

// Lamp light on a night desk.
constexpr Colour kBootText = Rgb(0, 255, 255);
constexpr Colour kFreshInk = Rgb(255, 255, 255);

// `part` of 1000 from one colour to the other.
Colour Between(Colour from, Colour to, int32_t part) {
  const auto channel = [&](int shift) {
    const auto a = static_cast<int32_t>(from >> shift & 255);
    const auto b = static_cast<int32_t>(to >> shift & 255);
    return static_cast<uint32_t>(a + (b - a) * part / 1000);
  };
  return Rgb(channel(16), channel(8), channel(0));
}

// How a boot line looks at an age: written it is bright and slides into its place, and once settled it
// breathes.
struct LineLook {
  int32_t shift = 0;  // pixels to the right
  Colour colour = kBootText;
};

LineLook LookAt(int32_t age) {
  constexpr int32_t kWriting = 200;        // ms
  constexpr int32_t kBreathBegins = 1200;  // ms
  constexpr int32_t kBreath = 800;         // ms
  constexpr int32_t kSlide = 8;            // pixels
  if (age < kWriting) {
    const int32_t left = kWriting - std::max(age, 0);
    return {kSlide * left * left / (kWriting * kWriting),
            Between(kBootText, kFreshInk, 1000 * left / kWriting)};
  }
  if (age >= kBreathBegins && age < kBreathBegins + kBreath) {
    const int32_t fromMiddle = std::abs(age - kBreathBegins - kBreath / 2);
    return {0, Between(kBootText, inks::kSheet, 500 * (kBreath / 2 - fromMiddle) / (kBreath / 2))};
  }
  return {};
}

void DrawBootLines() {
  constexpr int32_t kLeft = 8;
  constexpr int32_t kTop = 6;
  constexpr int32_t kLineHeight = 12;
  const uint32_t now = platform::Now();
  int32_t y = kTop;
  for (const BootLine& line : bootLines) {
    const LineLook look = LookAt(platform::Elapsed(now, line.time));
    platform::DrawFontText(*DDBack, kLeft + look.shift, y, line.text, kLineHeight, look.colour);
    y += kLineHeight;
  }
}

}  // namespace

void PrintBoot(TextView text, bool newLine) {
  if (newLine || bootLines.empty()) {
    if (bootLines.size() == kBootLines) bootLines.erase(bootLines.begin());
    bootLines.emplace_back();
  }
  bootLines.back() = {Text(text), platform::Now()};
}

void ShowScan(TextView text) {
  constexpr TextView kBegin = u"Seaching ";
  constexpr int32_t kBetweenFrames = 50;  // ms
  const bool goesOn = !bootLines.empty() && bootLines.back().text.starts_with(kBegin);
  PrintBoot(text, !goesOn);
  static uint32_t drawn = 0;
  if (goesOn && platform::Elapsed(platform::Now(), drawn) < kBetweenFrames) return;
  drawn = platform::Now();
  DrawBootScreen();
}

void LoadDesk() {
  deskPicture.clear();
  const SurfacePtr picture = ReadPicture(DataPath(u"screens\\desk.bmp"));
  if (!picture || picture->Width() != kScreen.Width() || picture->Height() != kScreen.Height()) return;
  for (int32_t y = 0; y < kScreen.Height(); ++y) {
    deskPicture.insert(deskPicture.end(), picture->Row(y).begin(), picture->Row(y).end());
  }
}

void DrawDesk() {
  const auto width = static_cast<size_t>(kScreen.Width());
  if (!deskPicture.empty()) {
    for (int32_t y = 0; y < kScreen.Height(); ++y) {
      std::ranges::copy(std::span(deskPicture).subspan(static_cast<size_t>(y) * width, width),
                        DDBack->Row(y).begin());
    }
    return;
  }
  for (int32_t y = 0; y < kScreen.Height(); ++y) {
    DDBack->Fill({0, y, kScreen.Width(), y + 1},
                 Between(inks::kDesk, inks::kSheet, y * 1000 / (kScreen.Height() - 1)));
  }
}

void DrawBootScreen() {
  if (DDBack) {
    DrawDesk();
    DrawBootLines();
  }
  PresentFrame(true, true);
}

}  // namespace qlm
