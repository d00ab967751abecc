// The stock skins as they lie beside the programs: that they are whole, and that what they hold can be told
// apart.
#include <algorithm>
#include <filesystem>
#include <iterator>
#include <map>
#include <set>
#include <string>
#include <vector>

#include "base/log.h"
#include "base/paths.h"
#include "graphics/display.h"
#include "graphics/skin.h"
#include "graphics/skin_list.h"
#include "graphics/skin_report.h"
#include "platform/files.h"
#include "platform/text.h"
#include "state/settings.h"
#include "state/skin.h"
#include "state/surfaces.h"
#include "tests/support/game_test.h"
#include "tests/support/process.h"
#include "tests/support/whole_file.h"

namespace qlm {
namespace {

// Where "FPS:" and a figure such as "1000.0" are written in cells of 8 by 16.
constexpr Rect kFrameRate = {310, 463, 310 + 10 * 8, 479};

bool Meet(const Rect& a, const Rect& b) {
  return a.left < b.right && b.left < a.right && a.top < b.bottom && b.top < a.bottom;
}

std::vector<platform::Colour> PixelsOf(const platform::Surface& picture, const Rect& rect) {
  std::vector<platform::Colour> pixels;
  for (int32_t y = rect.top; y < rect.bottom; ++y) {
    for (int32_t x = rect.left; x < rect.right; ++x) pixels.push_back(picture.Pixel(x, y));
  }
  return pixels;
}

bool HasInk(const platform::Surface& picture, const Rect& rect) {
  return std::ranges::any_of(PixelsOf(picture, rect), [](platform::Colour pixel) { return pixel != 0; });
}

int32_t Brightness(platform::Colour pixel) {
  return static_cast<int32_t>(std::max({pixel >> 16, pixel >> 8 & 255, pixel & 255}));
}

// A stock skin, loaded as in the game.
class StockSkins : public GameTest {
 protected:
  StockSkins() {
    AppPath = platform::InnerPath(QLM_BINARY_DIR);
    logOutput.file = false;  // the folder is the build's, not this test's
    InitDD(DisplayOutput::kUnseen);
    CreateSurfaces();
  }
  ~StockSkins() override { ReleaseDD(); }

  void Load(const std::string& name) {
    report_ = {};
    loadSkin(DataPath(platform::DecodeUtf8(name)), false, &report_);
  }

  // Room of what stands at a place; of figures as many as a long play shows.
  Rect Covered(const SkinReport::Place& place) const {
    if (place.part == SkinPart::kNumber) {
      const SkinNumber& number = Number[place.index];
      constexpr int32_t longest = 5;
      return {place.x, place.y, place.x + longest * (number.width + number.gap), place.y + number.height};
    }
    const SkinClip& clip = Clip[place.index];
    return {place.x, place.y, place.x + clip.width, place.y + clip.height};
  }

  SkinReport report_;
};

class EachSkin : public StockSkins, public testing::WithParamInterface<const char*> {};
class EachPlaySkin : public EachSkin {};

INSTANTIATE_TEST_SUITE_P(Stock, EachSkin,
                         testing::Values("default.brd", "default_dp.brd", "draft.brd", "qlm_scr.brd"));
INSTANTIATE_TEST_SUITE_P(Stock, EachPlaySkin, testing::Values("default.brd", "default_dp.brd", "draft.brd"));

// Missing files, sprites outside their sheets and places off the screen are among what would be told.
TEST_P(EachSkin, GivesItsAuthorNothingToMend) {
  const std::string programs = QLM_BINARY_DIR;
  const ProcessResult result =
      qlm::Run({programs + "/qlmprobe", "skin", programs + "/_qlmfiles/" + GetParam(), "--data", programs});
  EXPECT_EQ(result.exitStatus, 0) << result.errors;
  EXPECT_NE(result.output.find("\"warnings\": []"), std::string::npos)
      << result.output.substr(std::min(result.output.find("\"warnings\""), result.output.size()));
}

TEST_P(EachSkin, IsPlainTextWithTheLineEndsOfItsKind) {
  const std::string text = WholeFile(std::filesystem::path(QLM_BINARY_DIR) / "_qlmfiles" / GetParam());
  ASSERT_FALSE(text.empty());
  for (size_t i = 0; i < text.size(); ++i) {
    ASSERT_GT(text[i], 0) << "at byte " << i;
    ASSERT_TRUE(text[i] != '\n' || (i > 0 && text[i - 1] == '\r')) << "at byte " << i;
  }
}

TEST_P(EachSkin, HasEveryLetterOfTheSystemFont) {
  Load(GetParam());
  ASSERT_NE(SkinFile[1], nullptr);
  std::set<std::vector<platform::Colour>> letters;
  for (int32_t code = '!'; code <= '~'; ++code) {
    const Rect& cell = SysFont[code - 32];
    EXPECT_EQ(cell.Width(), 8) << code;
    EXPECT_EQ(cell.Height(), 16) << code;
    EXPECT_TRUE(HasInk(*SkinFile[1], cell)) << code;
    letters.insert(PixelsOf(*SkinFile[1], cell));
  }
  EXPECT_EQ(letters.size(), static_cast<size_t>('~' - '!' + 1)) << "two letters look the same";
}

TEST_P(EachPlaySkin, LeavesTheFrameRateFree) {
  Load(GetParam());
  ASSERT_NE(DDSkinBack, nullptr);
  for (const platform::Colour pixel : PixelsOf(*DDSkinBack, kFrameRate)) ASSERT_LT(Brightness(pixel), 128);
  ASSERT_FALSE(report_.places.empty());
  for (const SkinReport::Place& place : report_.places) {
    EXPECT_FALSE(Meet(Covered(place), kFrameRate)) << "line " << place.line;
  }
}

TEST_P(EachPlaySkin, LaysLanesSideBySideForEitherTurntable) {
  for (const bool right : {false, true}) {
    SCRATCH1P = right;
    Load(GetParam());
    std::map<int32_t, int32_t> lanes;  // right edge by left edge
    for (const int32_t channel : {11, 12, 13, 14, 15, 16, 18, 19}) {
      const LaneSkin& lane = NoteSkin[channel - 10];
      lanes[lane.x] = lane.x + Clip[lane.clip].width;
      EXPECT_EQ(Clip[lane.beamClip].width, Clip[lane.clip].width) << channel;
      const SkinPos& light = BlinkPos[right ? 1 : 0][static_cast<size_t>(channel - 11)];
      EXPECT_GE(light.x, lane.x) << channel;
      EXPECT_LE(light.x + Clip[light.id].width, lanes[lane.x]) << channel;
    }
    ASSERT_EQ(lanes.size(), 8u);
    for (auto lane = lanes.begin(); std::next(lane) != lanes.end(); ++lane) {
      const int32_t gap = std::next(lane)->first - lane->second;
      EXPECT_GE(gap, 0) << "lane at " << lane->first;
      EXPECT_LE(gap, 2) << "lane at " << lane->first;
    }
  }
}

TEST_P(EachPlaySkin, KeepsItsLanesOffTheBga) {
  for (const bool right : {false, true}) {
    SCRATCH1P = SCRATCH2P = right;
    Load(GetParam());
    for (int32_t row = 1; row <= 50; ++row) {
      const LaneSkin& lane = NoteSkin[row];
      if (lane.clip == 0) continue;
      const Rect field = {lane.x, 0, lane.x + Clip[lane.clip].width, JudgeY};
      for (const Rect& bga : BgaRect) {  // its last two numbers are the size
        EXPECT_FALSE(Meet(field, {bga.left, bga.top, bga.left + bga.right, bga.top + bga.bottom})) << row;
      }
    }
  }
}

TEST_P(EachPlaySkin, TellsTheKindsOfLanesApartByShape) {
  Load(GetParam());
  std::set<int32_t> widths;
  std::set<std::vector<bool>> shapes;
  for (const int32_t channel : {11, 12, 16}) {
    const SkinClip& clip = Clip[NoteSkin[channel - 10].clip];
    widths.insert(clip.width);
    std::vector<bool> shape;
    for (const platform::Colour pixel : PixelsOf(*SkinFile[clip.file], clip.rect))
      shape.push_back(pixel != 0);
    shapes.insert(shape);
  }
  EXPECT_EQ(widths.size(), 3u);
  EXPECT_EQ(shapes.size(), 3u);
}

TEST_P(EachPlaySkin, HasFiguresOfOneWidthThatDiffer) {
  Load(GetParam());
  for (const SkinPos& pos : {ScorePos[0], BpmPos, SkinPos{ComboNumber}}) {
    const SkinNumber& number = Number[pos.id];
    ASSERT_NE(SkinFile[number.file], nullptr);
    const platform::Surface& sheet = *SkinFile[number.file];
    EXPECT_FALSE(HasInk(sheet, number.rects[0]));
    std::set<std::vector<platform::Colour>> glyphs;
    for (size_t glyph = 0; glyph < kGlyphs; ++glyph) glyphs.insert(PixelsOf(sheet, number.rects[glyph]));
    EXPECT_EQ(glyphs.size(), static_cast<size_t>(kGlyphs));
  }
}

TEST_P(EachPlaySkin, PutsEverythingThatASideShowsSomewhere) {
  Load(GetParam());
  std::vector<SkinPos> all = {JudgeLinePos[0][0],
                              JudgeLinePos[0][1],
                              KeyPos[0],
                              KeyPos[1],
                              ScorePos[0],
                              JPointPos[0],
                              MaxPos[0],
                              GaugePos[0],
                              GaugeBackPos[0],
                              ExGaugePos[0],
                              ExGaugeBackPos[0],
                              GaugeNumPos[0],
                              BpmPos,
                              PlayPos1,
                              PlayFullPos,
                              CountPos,
                              StagePos};
  const auto add = [&](const auto& table) { all.insert(all.end(), table.begin(), table.end()); };
  add(ScoreCountPos[0]);
  add(JudgePos[0]);
  add(BombPos);
  add(ClassPos[0]);
  add(FanPos[0]);
  add(OptionPos[0]);
  for (size_t i = 0; i < all.size(); ++i) EXPECT_NE(all[i].id, 0) << i;
  EXPECT_EQ(FpsPos.id, 0) << "the game shows the frame rate itself";
  for (const int32_t clip : {NoMissClip, MaxComboClip, PressureClip, ComboGraphClip, ComboGraphBackClip}) {
    EXPECT_NE(clip, 0);
  }
  EXPECT_TRUE(std::ranges::any_of(LenUsed, [](bool used) { return used; }));
  EXPECT_GE(LayerList.last, 0);
  EXPECT_GT(LineList[0].last, 0);
  EXPECT_GT(TitleChars, 0);
  EXPECT_EQ(BgaRect[0].right, 256);
  EXPECT_EQ(BgaRect[0].bottom, 256);
}

// Both halves of the stencil's idea: what was drawn on the blue became transparent, and nothing else did.
TEST_F(StockSkins, DraftsSpritesLieOnNothing) {
  constexpr platform::Colour blue = 0x10376F;
  Load("draft.brd");
  for (const int64_t sheet : {2, 3, 4, 5}) {
    ASSERT_NE(SkinFile[sheet], nullptr);
    const std::vector<platform::Colour> pixels = PixelsOf(*SkinFile[sheet], SkinFile[sheet]->Bounds());
    EXPECT_EQ(std::ranges::count(pixels, blue), 0) << sheet;
    EXPECT_GT(std::ranges::count(pixels, platform::Colour{0}), 0) << sheet;
    for (const platform::Colour pixel : pixels) {
      ASSERT_TRUE(pixel == 0 || Brightness(pixel) >= 0x50) << "a dark seam on sheet " << sheet;
    }
  }
}

// Black would show the lane through a note.
TEST_F(StockSkins, InkwellsNotesAreSolid) {
  Load("default.brd");
  for (const int32_t channel : {11, 12, 16}) {
    const SkinClip& clip = Clip[NoteSkin[channel - 10].clip];
    constexpr int32_t corner = 4;  // the seal of the turntable is cut this far
    const Rect inner = {clip.rect.left + corner, clip.rect.top, clip.rect.right - corner, clip.rect.bottom};
    for (const platform::Colour pixel : PixelsOf(*SkinFile[clip.file], inner)) {
      ASSERT_NE(pixel, 0u) << "channel " << channel;
    }
  }
}

// What a second player has stands where the first has nothing.
TEST_F(StockSkins, InkwellsSidesDoNotMeet) {
  Load("default.brd");
  const auto roomOfClip = [](const SkinPos& pos) {
    const SkinClip& clip = Clip[pos.id];
    return Rect{pos.x, pos.y, pos.x + clip.width, pos.y + clip.height};
  };
  const auto roomOfFigure = [](const SkinPos& pos, int32_t digits) {
    const SkinNumber& number = Number[pos.id];
    return Rect{pos.x, pos.y, pos.x + digits * (number.width + number.gap), pos.y + number.height};
  };
  std::vector<Rect> sides[2];
  for (size_t side = 0; side < 2; ++side) {
    for (const SkinPos& pos : JudgePos[side]) {
      Rect word = roomOfClip(pos);
      constexpr int32_t comboDigits = 4;
      word.right += comboDigits * Number[ComboNumber].width;
      sides[side].push_back(word);
    }
    for (const SkinPos& pos : ScoreCountPos[side]) sides[side].push_back(roomOfFigure(pos, 4));
    for (const SkinPos& pos : OptionPos[side]) sides[side].push_back(roomOfClip(pos));
    for (const SkinPos& pos : FanPos[side]) sides[side].push_back(roomOfClip(pos));
    sides[side].push_back(roomOfClip(ClassPos[side][0]));
    sides[side].push_back(roomOfClip(GaugeBackPos[side]));
    sides[side].push_back(roomOfFigure(GaugeNumPos[side], 3));
    sides[side].push_back(roomOfFigure(ScorePos[side], 6));
    sides[side].push_back(roomOfFigure(JPointPos[side], 5));
    sides[side].push_back(roomOfFigure(MaxPos[side], 4));
  }
  for (const Rect& mine : sides[0]) {
    for (const Rect& other : sides[1]) {
      EXPECT_FALSE(Meet(mine, other))
          << mine.left << "," << mine.top << " and " << other.left << "," << other.top;
    }
  }
}

// A word opens by 20 pixels to each side when it comes, and by up to 7 at the start of a measure. Even then
// no letter leaves its field's margin or lies under the combo, whose figures have two pixels of air at their
// left.
TEST_F(StockSkins, InkwellsWordsStayOnTheFieldAndBesideTheComboAtTheirWidest) {
  Load("default.brd");
  for (const int32_t side : {0, 1}) {
    const int32_t margin = side == 0 ? 0 : 448;
    for (const SkinPos& pos : JudgePos[static_cast<size_t>(side)]) {
      const SkinClip& clip = Clip[pos.id];
      constexpr int32_t most = 27;
      const auto onScreen = [&](int32_t column) {
        return pos.x - most + column * (clip.width + 2 * most) / clip.width;
      };
      for (int32_t frame = 0; frame < clip.frames; ++frame) {
        int32_t first = clip.width;
        int32_t end = 0;
        int32_t endOfLight = 0;
        for (int32_t x = 0; x < clip.width; ++x) {
          const int32_t left = clip.rect.left + frame * clip.stepX + x;
          for (int32_t y = clip.rect.top; y < clip.rect.bottom; ++y) {
            const platform::Colour pixel = SkinFile[clip.file]->Pixel(left, y);
            if (pixel == 0) continue;
            first = std::min(first, x);
            end = x + 1;
            if (Brightness(pixel) >= 0x40) endOfLight = x + 1;
          }
        }
        EXPECT_GT(end, first);
        EXPECT_GE(onScreen(first), margin);
        EXPECT_LE(onScreen(endOfLight), pos.x + clip.width + 2);
      }
    }
  }
}

TEST_F(StockSkins, AreOfferedForWhatTheyAreMadeFor) {
  UpdateSkinList();
  const int16_t draft = FindSkin(DataPath(u"draft.brd"));
  ASSERT_GE(draft, 0);
  const SkinEntry& entry = skinList[static_cast<size_t>(draft)];
  EXPECT_TRUE(entry.for1P);
  EXPECT_FALSE(entry.for2P || entry.forDP || entry.forAny);
  const int16_t inkwell = FindSkin(DataPath(u"default.brd"));
  ASSERT_GE(inkwell, 0);
  const SkinEntry& both = skinList[static_cast<size_t>(inkwell)];
  EXPECT_TRUE(both.for1P && both.for2P);
  EXPECT_FALSE(both.forDP || both.forAny);
  const int16_t fields = FindSkin(DataPath(u"default_dp.brd"));
  ASSERT_GE(fields, 0);
  EXPECT_TRUE(skinList[static_cast<size_t>(fields)].forDP);
  EXPECT_FALSE(skinList[static_cast<size_t>(fields)].for1P);
  const int16_t screens = FindSkin(DataPath(u"qlm_scr.brd"));
  ASSERT_GE(screens, 0);
  EXPECT_FALSE(skinList[static_cast<size_t>(screens)].forAny || skinList[static_cast<size_t>(screens)].for1P);
}

}  // namespace
}  // namespace qlm
