// The ground of the play screen's tests.
#include <algorithm>

#include "play_screen/play_screen.h"
#include "state/options.h"
#include "state/settings.h"
#include "state/timeline.h"
#include "tests/play_screen/play_screen_ground.h"

namespace qlm {

PlayScreenTest::PlayScreenTest() {
  objs.resize(200);
  LaneNote.fill(-1);
  HiSpeed = RealHiSpeed = 1;
  JudgeY = 400;
  BMSLengthMs = 60'000;
  UserPlay = true;
  Fps = 50;
  MeasureLen.Fill(1);
}

SkinClip& PlayScreenTest::LayClip(int32_t number, int32_t width, int32_t height, Colour colour) {
  return LayFrames(number, width, height, colour, 1);
}

SkinClip& PlayScreenTest::LayFrames(int32_t number, int32_t width, int32_t height, Colour colour,
                                    int32_t frames) {
  SkinFile[number] = std::make_shared<Surface>(width * frames, height);
  SkinFile[number]->SetColourKey(0, 0);
  SkinClip& clip = Clip[number];
  clip = {};
  clip.file = static_cast<uint8_t>(number);
  clip.frames = static_cast<uint16_t>(frames);
  clip.stepX = width;
  clip.rect = {0, 0, width, height};
  clip.width = width;
  clip.height = height;
  for (int32_t i = 0; i < frames; ++i) {
    SkinFile[number]->Fill({i * width, 0, (i + 1) * width, height}, colour + static_cast<Colour>(i));
  }
  return clip;
}

SkinNumber& PlayScreenTest::LayStrip(int32_t number, int32_t width, int32_t height, uint8_t gap) {
  const int32_t file = 255 - number;
  SkinFile[file] = std::make_shared<Surface>(width * kGlyphs, height);
  SkinFile[file]->SetColourKey(0, 0);
  SkinNumber& strip = Number[number];
  strip = {};
  strip.file = static_cast<uint8_t>(file);
  strip.width = width;
  strip.height = height;
  strip.gap = gap;
  for (int32_t glyph = 0; glyph < kGlyphs; ++glyph) {
    Rect& rect = strip.rects[static_cast<size_t>(glyph)];
    rect = {glyph * width, 0, (glyph + 1) * width, height};
    SkinFile[file]->Fill(rect, kGlyph + static_cast<Colour>(glyph));
  }
  return strip;
}

LaneSkin& PlayScreenTest::LayLane(int32_t channel, int32_t clip, int16_t x) {
  LaneSkin& lane = NoteSkin[channel - 10];
  lane = {};
  lane.clip = static_cast<uint8_t>(clip);
  lane.x = x;
  lane.yOffset = static_cast<int16_t>(-Clip[clip].height);
  return lane;
}

ChartObj& PlayScreenTest::LayObj(int32_t channel, int32_t pos) {
  ChartObj& obj = *AddObj();
  obj = {};
  obj.channel = channel;
  obj.pos = pos;
  obj.speedMul = 1;
  return obj;
}

void PlayScreenTest::Draw() {
  DDBack->Fill(kScreen, 0);
  DrawPlayFrame();
}

Colour PlayScreenTest::At(int32_t x, int32_t y) { return DDBack->Pixel(x, y); }

testing::AssertionResult PlayScreenTest::Only(const Rect& rect, Colour colour) {
  return Shows(DDBack, rect, colour, 0);
}

PlayScreenTest::Corner PlayScreenTest::Find(Colour colour) {
  const Rect extent = Extent(colour);
  return extent == Rect{} ? Corner{} : Corner{extent.left, extent.top};
}

Rect PlayScreenTest::Extent(Colour colour) {
  Rect extent{640, 480, 0, 0};
  for (int32_t y = 0; y < 480; ++y) {
    for (int32_t x = 0; x < 640; ++x) {
      if (At(x, y) != colour) continue;
      extent = {std::min(extent.left, x), std::min(extent.top, y), std::max(extent.right, x + 1),
                std::max(extent.bottom, y + 1)};
    }
  }
  return extent.right == 0 ? Rect{} : extent;
}

}  // namespace qlm
