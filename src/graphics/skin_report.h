// What the reading of a skin notes down for its author. The game reads without a report and pays nothing for
// it.
#pragma once

#include <cstdint>
#include <map>
#include <vector>

#include "base/text.h"
#include "state/skin.h"

namespace qlm {

// What a number in a skin names.
enum class SkinPart : uint8_t { kSheet, kClip, kNumber };

// How a piece is copied to the screen: cut at its edges, or refused as soon as it sticks out.
enum class AtEdge : bool { kCut, kRefused };

struct SkinReport {
  struct Remark {
    int32_t line = 0;  // counted from 1
    Text text;
  };
  struct Use {
    int32_t line = 0;
    SkinPart part = SkinPart::kSheet;
    int64_t index = 0;
  };
  struct Place {
    int32_t line = 0;
    SkinPart part = SkinPart::kClip;
    int64_t index = 0;
    int32_t x = 0;
    int32_t y = 0;
    AtEdge atEdge = AtEdge::kCut;
  };

  std::vector<Text> lines;  // as the reading sees them, without comments; line n stands at n - 1
  std::vector<Remark> remarks;
  std::vector<Use> uses;
  std::vector<Place> places;
  std::map<const void*, int32_t> set;  // by entry of the skin's tables: the line that set it last
  std::map<int64_t, Text> files;       // by sheet: the name as the skin gives it
  Text background;
};

}  // namespace qlm
