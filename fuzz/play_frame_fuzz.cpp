// Any bytes as a skin, and a play in any state: whole frames are drawn, and the screen stays one of pixels.
// The last bytes of an input are the state, those before them the skin.
#include <algorithm>
#include <array>
#include <cstddef>
#include <cstdint>
#include <cstdlib>
#include <cstring>
#include <memory>
#include <string_view>

#include "base/log.h"
#include "graphics/display.h"
#include "graphics/skin.h"
#include "graphics/skin_directives.h"
#include "platform/clock.h"
#include "play_screen/gauge_graph.h"
#include "play_screen/option_marks.h"
#include "play_screen/play_screen.h"
#include "state/gauge.h"
#include "state/judgement.h"
#include "state/keys.h"
#include "state/options.h"
#include "state/reset.h"
#include "state/session.h"
#include "state/settings.h"
#include "state/skin.h"
#include "state/timeline.h"

namespace qlm {
namespace {

// More than the routines below take.
constexpr size_t kStateBytes = 640;
constexpr uint32_t kNow = 1'000'000;

// Values of any kind, bit for bit; zeros when there are no more.
class Bits {
 public:
  explicit Bits(std::string_view bytes) : bytes_(bytes) {}

  template <typename T>
  void To(T& value) {
    value = {};
    const size_t length = std::min(sizeof(value), bytes_.size());
    std::memcpy(&value, bytes_.data(), length);
    bytes_.remove_prefix(length);
  }
  void To(bool& value) { value = Byte() % 2 != 0; }
  template <typename T, typename... More>
  void To(T& value, More&... more) {
    To(value);
    (To(more), ...);
  }
  template <typename T, size_t N>
  void To(std::array<T, N>& values) {
    for (T& value : values) To(value);
  }
  uint8_t Byte() {
    uint8_t byte = 0;
    To(byte);
    return byte;
  }

 private:
  std::string_view bytes_;
};

// One sheet for all numbers, since an input has no pictures.
void LaySheets() {
  static const SurfacePtr sheet = [] {
    auto made = std::make_shared<Surface>(200, 100);
    made->SetColourKey(0, 0);
    for (int32_t y = 0; y < 100; ++y) {
      for (int32_t x = 0; x < 200; x += 2) made->Fill({x, y, x + 1, y + 1}, platform::Rgb(x, y, x ^ y));
    }
    return made;
  }();
  SkinFile.Fill(sheet);
  DDSkinBack = DDStage = sheet;
  StageRect = sheet->Bounds();
}

void TakeOptions(Bits& bits) {
  bits.To(Hidden, Sudden, Stealth, Accel, Quil, HalfField, ExRandom, Pressure, HazardGauge, DontStretch,
          SCRATCH1P, SCRATCH2P, UserPlay, CourseMode, ShowBGA, RealtimeStretch);
  bits.To(HiSpeed, RealHiSpeed);
  HdrPlayer = bits.Byte() % 5;
  SideCount = bits.Byte() % 3;
}

void TakePlace(Bits& bits) {
  bits.To(playClock, playPos, curMeasure, curMeasurePos, BMSLengthMs, shownBPM, Fps, CourseSong);
  for (float& length : MeasureLen) length = 1;
  bits.To(MeasureLen[0], MeasureLen[1]);
  objs.assign(24, {});
  objCount = bits.Byte() % 24;
  bits.To(objCursor);
  for (int32_t i = 0; i < objCount; ++i) {
    ChartObj& obj = objs[static_cast<size_t>(i)];
    int16_t pos = 0;
    bits.To(pos, obj.speedMul);
    obj.pos = pos;
    obj.channel = bits.Byte() % 32 - 1;
  }
  MarqueeText = u"羽ペンの行進 / quillmarch";
}

void TakeFigures(Bits& bits) {
  bits.To(Gauge, GaugeShown, Score, ScoreShown, JPts, JPtsShown, JPtsMax, Combo, MaxCombo, TotalNotes);
  for (int32_t& digit : ComboDigitCount) digit = bits.Byte() % 7 - 1;
  for (auto& digits : ComboDigit) {
    for (uint8_t& digit : digits) digit = bits.Byte() % 10;
  }
  for (int32_t& grade : LastJudge) grade = bits.Byte() % 6 - 1;
  bits.To(LastJudgeTime, ComboLost, ComboLostTime, ComboLostValue, ComboRound, ComboRoundTime,
          ComboRoundValue);
  bits.To(LaneHit, LaneBeam, LaneDown);
  for (uint32_t& time : LaneHitTime) time = kNow - bits.Byte();
  bits.To(KeyBeam);
  LaneNote.fill(-1);
  FadeState = bits.Byte();
  FadeStart = kNow - bits.Byte() * 10U;
}

void DrawOnGraph(Bits& bits) {
  int32_t judged = 0;
  bits.To(judged);
  PaintGraph();
  for (size_t side = 0; side < 2; ++side) {
    DrawJudgedNote(judged, Combo[side], kGreat);
    DrawLostCombo(judged, std::max(MaxCombo[side], 0));
    DrawGaugeSample(JPtsMax[side], bits.Byte());
  }
}

void CheckPixels(const Surface& surface) {
  platform::Colour all = 0;
  for (int32_t y = 0; y < surface.Height(); ++y) {
    for (const platform::Colour colour : surface.Row(y)) all |= colour;
  }
  if (all > 0xFFFFFF) std::abort();
}

void OpenScreen() {
  ResetState();
  logOutput = {};
  logOutput.file = false;
  InitDD(DisplayOutput::kUnseen);
  CreateSurfaces();
}

void DrawFrames(std::string_view bytes) {
  const size_t skin = bytes.size() - std::min(bytes.size(), kStateBytes);
  ClearSkinTables();
  ReadSkin(bytes.substr(0, skin), nullptr);
  LaySheets();
  Bits bits(bytes.substr(skin));
  TakeOptions(bits);
  TakePlace(bits);
  TakeFigures(bits);
  PlaceNotes();
  PickOptionMarks();
  for (const uint32_t ms : {0U, 700U}) {
    platform::UseVirtualClock(kNow + ms);
    DrawPlayFrame();
  }
  DrawOnGraph(bits);
  CheckPixels(*DDBack);
  CheckPixels(*DDGraph);
}

}  // namespace
}  // namespace qlm

extern "C" int LLVMFuzzerInitialize(int*, char***) {
  qlm::OpenScreen();
  return 0;
}

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size) {
  qlm::DrawFrames({reinterpret_cast<const char*>(data), size});
  return 0;
}
