// Start values of display, pictures and BGA.
#include "state/surfaces.h"

namespace qlm {

void ResetSurfaces() {
  for (SurfacePtr* surface : {&DDPrimary, &DDBack, &DDBga, &DDGraph, &DDSnapshot, &DDPreview, &DDSkinBack,
                              &DDStage, &SSBack, &SSBackDim, &SSObj, &SSNoStage, &ResultObj}) {
    surface->reset();
  }
  graphDigits = {};
  deskPicture.clear();
  StageRect = {};
  StageW = StageH = 0;
  SkinFile.Clear();
  BmpSurface.Clear();
  BmpHeldName.Clear();
  BmpLoaded.Clear();
  BmpRect.Clear();
  for (auto& song : CourseBmpSurface) song.Clear();
  for (auto& song : CourseBmpRect) song.Clear();
  for (auto& song : CourseBmpLoaded) song.Clear();
  FullRect = ScreenRect = kScreen;
  SysFont.Clear();
  SysFontW = SysFontH = 0;
  TitleChars = 0;
  MessageRect = {};
  BgaX = 192;
  BgaY = 128;
  BgaW = BgaH = 256;
  BgaSource = BgaTarget = {0, 0, 256, 256};
  curBaseBGA = curLayerBGA = -1;
  poorBGA = 0;
  BGARestart = {};
  BGADirty = false;
  sideUsesBga = {};
  videoMemoryTotal = int64_t{64} << 20;
  displayOpen = false;
  FadeTileSpeed = {};
  Fps = 0;
  FrameCount = 0;
  FpsTime = 0;
  bootLines.clear();
  displayIsLost = false;
  FlipTime = FlipMargin = 0;
}

}  // namespace qlm
