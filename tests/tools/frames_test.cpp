// Chosen moments of plays with a skin, drawn by the real engine, against stored pictures.
#include <algorithm>

#include "platform/picture.h"
#include "tests/tools/golden_frames.h"
#include "tests/tools/probe.h"

namespace qlm {
namespace {

using platform::Colour;
using platform::Rect;
using platform::Surface;

// The first test's skin: flat shapes on one sheet, and every kind of part that a play shows before its first
// judgement.
constexpr const char* kSkin = R"(#TITLE small
#OP_NOTHING 5,300,310,0,0
#BACKBMP ground.png
#FILE01 sheet.png,000000
#SYSFONT 0,0,8,8
#YPOSITION400
#CLIP01 1,0,40,28,6
#CLIP02 1,0,48,18,6
#CLIP03 1,0,56,120,2
#CLIP04 1,0,64,120,4
#CLIP05 1,0,72,8,8,1,0,4,100
#CLIP06 1,0,80,100,8
#CLIP07 1,0,96,2,100
#CLIP08 1,40,96,16,16,1,0,4,-48
#NUM01 1,0,88,6,8,0,1
#NOTE10 3,0,0,40,40
#NOTE11 1,0,0,70,70
#NOTE12 2,0,0,100,100
#NOTE16 1,0,0,40,40
#JUDGEPOS_1P_L 4,40,400
#LINE_1P_L0 7,39,100
#LINE_1P_L1 7,98,100
#KEY1P_L 6,40,420
#LAYER01 8,300,40,0
#BPMPOS  1,300,100,4
#PLAYPOS 1,300,120
#PLAY_FULLPOS 1,300,140
#COUNT 1,300,160,3
#FPSPOS 1,300,180
#SONGTITLE300,200,160,8
#GAUGEPOS_1P 6,300,240,1
#GAUGE_1P 1,300,260
#LENPOS1 7,20,100
#CLASS_1P 2,300,280
)";

// Its sheet: letters as blocks with a notch that moves with the code, then the shapes of the
// skin.
void WriteSheet(const std::string& file) {
  Surface sheet(256, 200);
  for (int32_t code = 33; code < 128; ++code) {
    const int32_t x = (code % 32 - 1) * 8;
    const int32_t y = (code / 32 - 1) * 8;
    sheet.Fill({std::max(x, 0), y, std::max(x, 0) + 7, y + 7}, 0xC0C0C0);
    sheet.Fill({std::max(x, 0) + code % 6, y + 2, std::max(x, 0) + code % 6 + 1, y + 5}, 0);
  }
  const auto shape = [&](const Rect& rect, Colour colour) { sheet.Fill(rect, colour); };
  shape({0, 40, 28, 46}, 0xF0E8D0);
  shape({0, 48, 18, 54}, 0x40B8B0);
  shape({0, 56, 120, 58}, 0x606878);
  shape({0, 64, 120, 68}, 0xD0A040);
  for (int32_t i = 0; i < 4; ++i) shape({8 * i, 72, 8 * i + 8, 80}, static_cast<Colour>(0x202020 * (i + 2)));
  for (int32_t i = 0; i < 50; ++i) shape({2 * i, 80, 2 * i + 1, 88}, static_cast<Colour>(0x40A000 + 4 * i));
  for (int32_t glyph = 1; glyph < 14; ++glyph) {
    shape({6 * glyph, 88, 6 * glyph + 6, 96}, 0x909090);
    shape({6 * glyph + 1, 89, 6 * glyph + 5, 90 + glyph % 7}, static_cast<Colour>(0x101010 * glyph));
  }
  shape({0, 96, 2, 196}, 0x304060);
  for (int32_t i = 0; i < 7; ++i)
    shape({40 + 16 * i, 96, 52 + 16 * i, 108}, static_cast<Colour>(0x182030 * (i + 1)));
  ASSERT_TRUE(platform::SavePng(sheet, file));
}

class FramesTest : public ProbeTest {
 protected:
  // Draws the play at each moment and compares with NAME-MOMENT.png.
  void Compare(const std::string& name, std::vector<std::string> arguments,
               const std::vector<std::string>& moments) const {
    std::string list;
    for (const std::string& moment : moments) list.append(list.empty() ? "" : ",").append(moment);
    arguments.insert(arguments.begin(), "frame");
    arguments.insert(arguments.end(), {"--at", list, "--out", At(name)});
    const ProcessResult result = Probe(arguments);
    ASSERT_EQ(result.exitStatus, 0) << result.errors;
    for (const std::string& moment : moments) {
      std::string frame = name;
      frame.append("-").append(moment);
      CompareWithGoldenFrame(frame, At(frame + ".png"));
    }
  }
};

// Nobody plays, and the moments lie before the first note is missed.
TEST_F(FramesTest, ASmallSkinInMotion) {
  WriteData(u"_qlmfiles\\small.brd", kSkin);
  WriteSheet(At("_qlmfiles/sheet.png"));
  Surface ground(640, 480);
  for (int32_t y = 0; y < 480; ++y)
    ground.Fill({0, y, 640, y + 1}, platform::Rgb(0, 8, 16 + static_cast<uint32_t>(y) / 16));
  ASSERT_TRUE(platform::SavePng(ground, At("_qlmfiles/ground.png")));
  WriteData(u"nobody.txt", "");
  const std::string chart =
      Chart("small.bms", {"#TITLE Small", "#ARTIST Nobody", "#BPM 120", "#00111:0001000100010001",
                          "#00112:01010101", "#00116:01", "#00211:01"});
  Compare("small",
          {chart, "--skin", At("_qlmfiles/small.brd"), "--events", At("nobody.txt"), "--set", "HiSpeed=1"},
          {"-700", "0", "750", "1990"});
  Compare("small-half",
          {chart, "--skin", At("_qlmfiles/small.brd"), "--events", At("nobody.txt"), "--set", "HiSpeed=1",
           "--set", "HalfField=True"},
          {"1500"});
}

}  // namespace
}  // namespace qlm
