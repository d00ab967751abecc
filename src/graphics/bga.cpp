// The chart's pictures.
#include "graphics/bga.h"

#include <optional>

#include "base/log.h"
#include "base/numbers.h"
#include "base/paths.h"
#include "graphics/bitmaps.h"
#include "platform/clock.h"
#include "platform/heap.h"
#include "state/chart.h"
#include "state/judgement.h"
#include "state/load_budget.h"
#include "state/message.h"
#include "state/settings.h"
#include "state/slots.h"
#include "state/surfaces.h"
#include "state/timeline.h"

namespace qlm {
namespace {

using platform::Keyed;

constexpr uint8_t kLoaded = 255;
// Pictures are made for a frame of this size, whatever the size at which the skin shows it.
constexpr int32_t kFrameSize = 256;
// Every colour of a chart's picture that is as dark as this is transparent.
constexpr platform::Colour kDarkest = 0x0F0F0F;

// A chart's picture: its loader goes by the letters that the name ends in, and its key is a range.
void LoadChartPicture(const Text& path, SurfacePtr& surface, Rect& rect) {
  if (WideCharts && IsVideo(path)) {
    DebugLog(Join(u"# ", GetFileName(path), u": video is not played"));
    surface.reset();
    rect = {};
    return;
  }
  const Text ending = UCase(Right(path, 3));
  if (ending == u"BMP" || ending == u"RLE") {
    LoadBitmap(path, surface, rect);
  } else {
    LoadExBitmap(path, surface, rect);
  }
  FitWidePicture(surface, rect, kFrameSize);
  if (surface && OverLoadBudget(path)) {
    surface.reset();
    rect = {};
  }
  if (surface) surface->SetColourKey(0, kDarkest);
}

bool ShownAtItsOwnSize() { return BgaW == kFrameSize && BgaH == kFrameSize; }

Rect BgaPlace() {
  const auto sum = [](int32_t a, int32_t b) { return static_cast<int32_t>(int64_t{a} + b); };
  return {BgaX, BgaY, sum(BgaX, BgaW), sum(BgaY, BgaH)};
}

// Sees that a picture is at hand when it is first shown.
void ProvidePicture(int32_t number) {
  if (!CourseMode) {
    if (!BmpSurface[number] && BMPLoadmode == 1) BgaLoad(number);
    return;
  }
  if (BmpLoaded[number] == kLoaded) return;
  const auto* preloaded = CourseBmpSurface.Find(CourseSong);
  if (preloaded != nullptr && (*preloaded)[number]) {
    BmpSurface[number] = (*preloaded)[number];
    BmpRect[number] = CourseBmpRect[CourseSong][number];
  } else {
    BgaLoad(number);
    if (auto* states = CourseBmpLoaded.Find(CourseSong)) states->Put(number, kLoaded);
  }
  BmpLoaded[number] = kLoaded;
}

// Narrow pictures stand in the middle of the frame, and all at its top.
void PlaceOnFrame(const Surface& picture, const Rect& rect, Keyed keyed) {
  DDBga->Copy((kFrameSize - rect.Width()) / 2, 0, picture, rect, keyed);
}

// Puts the numbered picture on the frame. -1 and numbers without a picture draw nothing.
void PutPicture(int32_t number, Keyed keyed) {
  if (!BmpSurface.Holds(number)) return;
  ProvidePicture(number);
  if (BmpSurface[number]) PlaceOnFrame(*BmpSurface[number], BmpRect[number], keyed);
}

// Fits the title picture into the target, in the middle, with its proportions.
void PutStage() {
  const double width = StageW;
  const double height = StageH;
  Rect to;
  if (static_cast<double>(BgaW) / BgaH <= width / height) {
    const std::optional<int32_t> shown = Round(height * (BgaW / width));
    if (!shown) return;
    const int32_t top = (BgaH - *shown) / 2;
    to = {0, top, BgaW, top + *shown};
  } else {
    const std::optional<int32_t> shown = Round(width * (BgaH / height));
    if (!shown) return;
    const int32_t left = (BgaW - *shown) / 2;
    to = {left, 0, left + *shown, BgaH};
  }
  DDBga->Stretch(to, *DDStage, StageRect);
}

// The poor picture in place of all others. False when there is none.
bool DrawPoor() {
  const SurfacePtr* const picture = BmpSurface.Find(poorBGA);
  if (picture == nullptr || !*picture) return false;
  const Rect& rect = BmpRect[poorBGA];
  DDBga->Fill(BgaSource, 0);
  if (ShownAtItsOwnSize()) {
    DDBack->Copy(BgaX, BgaY, **picture, rect);
  } else {
    PlaceOnFrame(**picture, rect, Keyed::kNo);
    DDBack->Stretch(BgaPlace(), *DDBga, BgaSource);
  }
  return true;
}

}  // namespace

void BgaLoad(int32_t slot) {
  if (!BmpFile.Holds(slot)) return;
  const uint32_t begin = platform::Now();
  Text& file = BmpFile[slot];
  if (CourseMode) {
    if (const auto* files = CourseBmpFile.Find(CourseSong)) file = (*files)[slot];
  }
  if (file.empty()) {
    // Quirk: the name of the picture held before stays, so that a later song of the course which names that
    // file again takes it for loaded and shows nothing.
    BmpSurface[slot].reset();
    return;
  }
  if (file != BmpHeldName[slot]) FindWidePicture(file);
  if (file == BmpHeldName[slot]) {
    BmpLoaded[slot] = kLoaded;
    return;
  }
  BmpHeldName[slot] = file;
  BmpSurface[slot].reset();
  platform::WithinMemory([&] { LoadChartPicture(file, BmpSurface[slot], BmpRect[slot]); });
  const Text name = MessageSlot(slot);
  const int32_t ms = platform::Elapsed(platform::Now(), begin);
  const Rect& rect = BmpRect[slot];
  ShowMessage(Join(u"BGA LOAD: ", name, u" (in ", ms, u"ms)"));
  DebugLog(Join(u"BGA", name, u": ", rect.Width(), u"x", rect.Height(), u" on ??? (in ", ms, u"ms)"));
}

void ReleaseUnnamedPicture(int32_t slot) {
  if (!BmpFile.Holds(slot) || BmpFile[slot] == BmpHeldName[slot]) return;
  BmpSurface[slot].reset();
  BmpHeldName[slot].clear();
}

void ReleaseAllPictures() {
  BmpSurface.Clear();
  BmpHeldName.Clear();
}

void ReleaseStage() { DDStage.reset(); }

void LoadStage(TextView path) {
  ReleaseStage();
  Text file(path);
  FindWidePicture(file);
  if (FileExists(file)) DDStage = ReadPicture(file);
  if (DDStage && OverLoadBudget(file)) DDStage.reset();
  StageW = DDStage ? DDStage->Width() : kScreen.Width();
  StageH = DDStage ? DDStage->Height() : kScreen.Height();
  StageRect = {0, 0, StageW, StageH};
}

void LoadCourseBga(int32_t song, int32_t slot) {
  if (!CourseBmpSurface.Holds(song) || !BmpFile.Holds(slot)) return;
  SurfacePtr& surface = CourseBmpSurface[song][slot];
  surface.reset();
  Text& file = CourseBmpFile[song][slot];
  FindWidePicture(file);
  if (FileExists(file)) LoadChartPicture(file, surface, CourseBmpRect[song][slot]);
  DebugLog(Join(u"coursebmsdbga(song,bgaid): ", file));
}

void ComposeBga() {
  if (NoBGA || !DDBga) return;
  DDBga->Fill(BgaSource, 0);
  if (curBaseBGA == -1 && curLayerBGA == -1 && DDStage) {
    PutStage();
    return;
  }
  PutPicture(curBaseBGA, Keyed::kNo);
  PutPicture(curLayerBGA, Keyed::kYes);
  if (ShownAtItsOwnSize() || RealtimeStretch) return;
  DDBga->Stretch(BgaTarget, *DDBga, BgaSource);
}

bool DrawBga() {
  if (!ShowBGA || !DDBack || !DDBga) return false;
  if (PoorShow) {
    if (playPos - PoorShowPos >= kMeasureUnits) {
      // Quirk: the pictures are composed again in the next frame only; this one still shows what the miss
      // left, which is a black frame behind a poor picture.
      PoorShow = false;
      BGADirty = true;
    } else if (DrawPoor()) {
      return true;
    }
  } else if (BGADirty) {
    ComposeBga();
    BGADirty = false;
  }
  // The title picture is composed and not shown: the area keeps the skin's background.
  if (NoBGA || (curBaseBGA == -1 && curLayerBGA == -1)) return false;
  if (!ShownAtItsOwnSize() && RealtimeStretch) {
    DDBack->Stretch(BgaPlace(), *DDBga, BgaSource);
  } else {
    DDBack->Copy(BgaX, BgaY, *DDBga, BgaTarget);
  }
  return true;
}

}  // namespace qlm
