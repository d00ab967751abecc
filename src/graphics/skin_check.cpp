// Checks of a skin that has been read: what its lines name, and where they put it.
#include "graphics/skin_check.h"

#include <algorithm>
#include <cstddef>

#include "graphics/clips.h"
#include "state/skin.h"
#include "state/surfaces.h"

namespace qlm {
namespace {

// The area on which the pictures of a chart are composed, whatever a skin asks for.
constexpr int32_t kBgaSide = 256;
// Codes that the font sheet needs a cell for.
constexpr int32_t kFirstCode = 33;
constexpr int32_t kLastCode = 126;

Text TwoDigits(int64_t number) {
  const Text hex = Hex(static_cast<uint32_t>(number));
  return hex.size() < 2 ? Join(u"0", hex) : hex;
}

Text Sides(const Rect& rect) {
  return Join(u"(", rect.left, u", ", rect.top, u") to (", rect.right, u", ", rect.bottom, u")");
}

bool Inside(const Rect& rect, const Rect& bounds) {
  return rect.left >= bounds.left && rect.top >= bounds.top && rect.right <= bounds.right &&
         rect.bottom <= bounds.bottom;
}

class Checker {
 public:
  explicit Checker(const SkinReport& report) : report_(report), remarks_(report.remarks) {}

  void CheckUses() {
    for (const SkinReport::Use& use : report_.uses) {
      if (IsSet(use.part, use.index)) continue;
      const Text number = TwoDigits(use.index);
      switch (use.part) {
        case SkinPart::kSheet: Add(use.line, u"no #FILE", number, u" line gives this sheet a picture"); break;
        case SkinPart::kClip: Add(use.line, u"no #CLIP", number, u" line makes this clip"); break;
        case SkinPart::kNumber: Add(use.line, u"no #NUM", number, u" line makes these digits"); break;
      }
    }
  }

  void CheckClips() {
    for (int64_t n = 0; n <= Clip.kLast; ++n) {
      const SkinClip& clip = Clip[n];
      const int32_t line = LineOf(&clip);
      if (line == 0) continue;
      if (clip.width < 1 || clip.height < 1) {
        Add(line, u"a clip of ", clip.width, u" by ", clip.height, u" pixels shows nothing");
        continue;
      }
      const SurfacePtr& sheet = SkinFile[clip.file];
      if (!sheet) continue;
      int64_t frame = 0;
      while (frame < clip.frames && Inside(*FrameOf(clip, frame), sheet->Bounds())) ++frame;
      if (frame == clip.frames) continue;
      Add(line, u"frame ", frame, u", ", Sides(*FrameOf(clip, frame)), u", lies outside its picture of ",
          sheet->Width(), u" by ", sheet->Height(), u" pixels and is not drawn");
    }
  }

  void CheckNumbers() {
    for (int64_t n = 0; n <= Number.kLast; ++n) {
      const SkinNumber& number = Number[n];
      const int32_t line = LineOf(&number);
      if (line == 0) continue;
      if (number.width < 1 || number.height < 1) {
        Add(line, u"digits of ", number.width, u" by ", number.height, u" pixels show nothing");
        continue;
      }
      const SurfacePtr& sheet = SkinFile[number.file];
      for (size_t glyph = 0; sheet && glyph < kGlyphs; ++glyph) {
        const Rect& rect = number.rects[glyph];
        if (Inside(rect, sheet->Bounds())) continue;
        Add(line, u"glyph ", static_cast<int64_t>(glyph), u", ", Sides(rect),
            u", lies outside its picture of ", sheet->Width(), u" by ", sheet->Height(),
            u" pixels and is not drawn");
        break;
      }
    }
  }

  void CheckFont() {
    const int32_t line = LineOf(&SysFont);
    const SurfacePtr& sheet = SkinFile[1];
    if (line == 0) return;
    if (SysFontW == 0 || SysFontH == 0) return Add(line, u"cells without a size show nothing");
    for (int32_t code = kFirstCode; sheet && code <= kLastCode; ++code) {
      const Rect& cell = SysFont[code - 32];
      if (Inside(cell, sheet->Bounds())) continue;
      const Text letter(1, static_cast<char16_t>(code));
      return Add(line, u"the cell of ", letter, u", ", Sides(cell), u", lies outside its picture of ",
                 sheet->Width(), u" by ", sheet->Height(), u" pixels and is not drawn");
    }
  }

  void CheckBackground() {
    const SurfacePtr& picture = DDSkinBack;
    if (!picture || (picture->Width() >= 640 && picture->Height() >= 480)) return;
    Add(LineOf(&DDSkinBack), u"a background of ", picture->Width(), u" by ", picture->Height(),
        u" pixels is not drawn: it must have 640 by 480");
  }

  void CheckPlaces() {
    for (const SkinReport::Place& place : report_.places) {
      if (!IsSet(place.part, place.index)) continue;
      const bool number = place.part == SkinPart::kNumber;
      const int64_t width = number ? Number[place.index].width : Clip[place.index].width;
      const int64_t height = number ? Number[place.index].height : Clip[place.index].height;
      const int64_t right = place.x + width;
      const int64_t bottom = place.y + height;
      if (width < 1 || height < 1) continue;
      if (place.x >= 640 || place.y >= 480 || right <= 0 || bottom <= 0) {
        Add(place.line, u"(", place.x, u", ", place.y, u") is off the screen");
      } else if (place.atEdge == AtEdge::kRefused &&
                 (place.x < 0 || place.y < 0 || right > 640 || bottom > 480)) {
        Add(place.line, u"at (", place.x, u", ", place.y, u") this clip of ", width, u" by ", height,
            u" pixels sticks out of the screen, and is then not drawn at all");
      }
    }
  }

  void CheckValues() {
    if (JudgeY < 1 || JudgeY > 480) {
      Add(LineOf(&JudgeY), u"notes are judged off the screen, at y ", JudgeY);
    }
    for (const Rect& bga : BgaRect) {
      const int32_t line = LineOf(&bga);
      if (line == 0) continue;
      if (bga.right > kBgaSide || bga.bottom > kBgaSide) {
        Add(line, u"a BGA of more than 256 by 256 pixels is not shown");
      } else if (bga.right < 1 || bga.bottom < 1) {
        Add(line, u"a BGA without a size is not shown");
      } else if (bga.left < 0 || bga.top < 0 || int64_t{bga.left} + bga.right > 640 ||
                 int64_t{bga.top} + bga.bottom > 480) {
        Add(line, u"a BGA that sticks out of the screen is not shown");
      }
    }
  }

  std::vector<SkinReport::Remark> Finish() {
    std::stable_sort(
        remarks_.begin(), remarks_.end(),
        [](const SkinReport::Remark& a, const SkinReport::Remark& b) { return a.line < b.line; });
    const auto same = [](const SkinReport::Remark& a, const SkinReport::Remark& b) {
      return a.line == b.line && a.text == b.text;
    };
    remarks_.erase(std::unique(remarks_.begin(), remarks_.end(), same), remarks_.end());
    for (SkinReport::Remark& remark : remarks_) {
      remark.text += Join(u": ", report_.lines[static_cast<size_t>(remark.line) - 1]);
    }
    return std::move(remarks_);
  }

 private:
  // 0 for what the skin does not set.
  int32_t LineOf(const void* entry) const {
    const auto found = report_.set.find(entry);
    return found == report_.set.end() ? 0 : found->second;
  }
  bool IsSet(SkinPart part, int64_t index) const {
    switch (part) {
      case SkinPart::kSheet: return report_.files.contains(index);
      case SkinPart::kClip: return Clip.Holds(index) && LineOf(&Clip[index]) != 0;
      case SkinPart::kNumber: return Number.Holds(index) && LineOf(&Number[index]) != 0;
    }
    return false;
  }
  template <typename... Parts>
  void Add(int32_t line, const Parts&... parts) {
    if (line > 0) remarks_.push_back({line, Join(parts...)});
  }

  const SkinReport& report_;
  std::vector<SkinReport::Remark> remarks_;
};

}  // namespace

std::vector<SkinReport::Remark> CheckSkin(const SkinReport& report) {
  Checker checker(report);
  checker.CheckUses();
  checker.CheckClips();
  checker.CheckNumbers();
  checker.CheckFont();
  checker.CheckBackground();
  checker.CheckPlaces();
  checker.CheckValues();
  return checker.Finish();
}

}  // namespace qlm
