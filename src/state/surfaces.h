// The display's surfaces, the chart's pictures, and what the BGA shows.
#pragma once

#include <array>
#include <cstdint>
#include <vector>

#include "base/table.h"
#include "base/text.h"
#include "platform/surface.h"

namespace qlm {

using platform::Rect;
using platform::Surface;
using platform::SurfacePtr;

constexpr Rect kScreen = {0, 0, 640, 480};

inline SurfacePtr DDPrimary;   // 640 by 480: the frame shown last
inline SurfacePtr DDBack;      // 640 by 480: every frame is drawn here
inline SurfacePtr DDBga;       // the composed BGA picture
inline SurfacePtr DDGraph;     // 300 by 203: gauge graph, drawn during play
inline SurfacePtr DDSnapshot;  // 640 by 480: the frame held by a fade
inline SurfacePtr DDPreview;   // 192 by 144: picture box of the song select
inline SurfacePtr DDSkinBack;
inline SurfacePtr DDStage;  // the chart's title picture
inline Rect StageRect;
inline int32_t StageW = 0;
inline int32_t StageH = 0;
inline Table<SurfacePtr, 255> SkinFile;  // sprite sheets; entry 1 also holds the system font
inline SurfacePtr SSBack;
inline SurfacePtr SSBackDim;
inline SurfacePtr SSObj;
inline SurfacePtr SSNoStage;
inline SurfacePtr ResultObj;

// The desk at night as rows of kScreen, which take no video memory. Empty where the picture is missing.
inline std::vector<platform::Colour> deskPicture;

// The digits of the graph's figures side by side, from 0 to 9, drawn when their face is opened.
struct GraphDigits {
  int32_t width = 0;  // of each; 0 without a font
  int32_t height = 0;
  std::vector<uint8_t> ink;  // rows of 10 * width pixels: 0 is all ground, 255 all ink
};
inline GraphDigits graphDigits;

// Pictures of the chart by slot; BmpFile stands in chart.h.
inline SlotTable<SurfacePtr> BmpSurface;
inline SlotTable<Text> BmpHeldName;   // the file whose picture the slot holds: key of a cache over charts
inline SlotTable<uint8_t> BmpLoaded;  // 255 done
inline SlotTable<Rect> BmpRect;
inline Table<SlotTable<SurfacePtr>, 127> CourseBmpSurface;
inline Table<SlotTable<Rect>, 127> CourseBmpRect;
inline Table<SlotTable<uint8_t>, 127> CourseBmpLoaded;

// What the display reports as its memory in all. Surfaces are counted against it and never refused by it.
inline int64_t videoMemoryTotal = int64_t{64} << 20;  // bytes
inline bool displayOpen = false;                      // InitDD has run: surfaces can be made

inline Rect FullRect = kScreen;
inline Rect ScreenRect = kScreen;  // clip rectangle of the drawing code

// The system font of the skin: cells for the bytes 33 to 128 at index byte - 32.
inline Table<Rect, 96> SysFont;
inline uint8_t SysFontW = 0;
inline uint8_t SysFontH = 0;
inline int32_t TitleChars = 0;  // letters of the title that show
inline Rect MessageRect;        // of the skin, as four numbers; all 0 when it gives none

// BGA.
inline int32_t BgaX = 192;
inline int32_t BgaY = 128;
inline int32_t BgaW = 256;
inline int32_t BgaH = 256;
inline Rect BgaSource = {0, 0, 256, 256};
inline Rect BgaTarget = {0, 0, 256, 256};
inline int32_t curBaseBGA = -1;            // picture of channel 04, -1 none
inline int32_t curLayerBGA = -1;           // picture of channel 07, -1 none
inline int32_t poorBGA = 0;                // picture of channel 06
inline std::array<bool, 2> BGARestart{};   // base, layer; read by nothing
inline bool BGADirty = false;              // the BGA must be composed again
inline std::array<bool, 2> sideUsesBga{};  // the two flags that each read of a chart clears

// The tiles into which a held frame falls apart: pixels that each has fallen at the end.
inline std::array<int32_t, 300> FadeTileSpeed{};

// Frame figures of the present step.
inline double Fps = 0;          // frames a second, recomputed every 200 ms or more
inline int32_t FrameCount = 0;  // frames since the figure was taken
inline uint32_t FpsTime = 0;    // clock at which it was taken
inline bool displayIsLost = false;
inline int64_t FlipTime = 0;    // platform::Microseconds() when the last frame was shown
inline int64_t FlipMargin = 0;  // microseconds before the next flip at which a frame is sent on its way

// The boot screen's list, oldest line first.
struct BootLine {
  Text text;
  uint32_t time = 0;  // clock at which it was written
};
constexpr size_t kBootLines = 39;
inline std::vector<BootLine> bootLines;

void ResetSurfaces();

}  // namespace qlm
