// Text of the list screens.
#include "screens/list_text.h"

#include <algorithm>
#include <vector>

namespace qlm {
namespace {

using platform::Colour;
using platform::FontLook;
using platform::TextMask;

struct KeptLine {
  Text text;
  FontLook look;
  TextMask mask;
  int64_t drawn = 0;  // number of the drawing in which it was used last
};

struct LineStore {
  std::vector<KeptLine> lines;
  int64_t drawings = 0;
  int64_t laidOut = 0;
};
LineStore store;

const TextMask& MaskOf(TextView text, const FontLook& look) {
  ++store.drawings;
  const auto same = [&](const KeptLine& line) { return line.look == look && line.text == text; };
  auto found = std::ranges::find_if(store.lines, same);
  if (found == store.lines.end()) {
    ++store.laidOut;
    KeptLine line{Text(text), look, platform::RenderText(text, look)};
    if (store.lines.size() < kKeptLines) {
      found = store.lines.insert(store.lines.end(), std::move(line));
    } else {
      found = std::ranges::min_element(store.lines, {}, &KeptLine::drawn);
      *found = std::move(line);
    }
  }
  found->drawn = store.drawings;
  return found->mask;
}

int32_t LeftOf(const Rect& box, int32_t width, Align align) {
  const int32_t free = std::max(box.Width() - width, 0);
  if (align == Align::kLeft) return box.left;
  return box.left + (align == Align::kRight ? free : free / 2);
}

}  // namespace

void DrawLine(const Rect& box, TextView text, const FontLook& look, Colour colour, Align align) {
  if (!DDBack || text.empty()) return;
  const TextMask& mask = MaskOf(text, look);
  const int32_t top = box.top + (box.Height() - look.height) / 2;
  platform::DrawMask(*DDBack, box, LeftOf(box, mask.width, align), top, mask, colour);
}

int32_t LineWidth(TextView text, const FontLook& look) { return text.empty() ? 0 : MaskOf(text, look).width; }

int64_t LinesLaidOut() { return store.laidOut; }

void ForgetLines() { store = {}; }

}  // namespace qlm
