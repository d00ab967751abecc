// Splitting of titles.
#include "library/title_split.h"

#include <cstddef>

namespace qlm {
namespace {

// In pairs, the one that is looked for first at the head.
constexpr TextView kOpening = u"-\"<[(（［＜～－";
constexpr TextView kClosing = u"-\">])）］＞～－";
static_assert(kOpening.size() == kClosing.size());

// Where the sub-title of this pair of marks begins, npos when the title has none.
struct Cut {
  size_t mainEnd = TextView::npos;
  size_t subBegin = TextView::npos;
};

Cut CutAt(TextView title, char16_t opening, char16_t closing) {
  const char16_t begin[] = {u' ', opening};
  if (const size_t blank = title.rfind(TextView(begin, 2)); blank != TextView::npos)
    return {blank, blank + 1};
  if (title.size() < 2 || title.back() != closing) return {};
  const size_t place = title.rfind(opening, title.size() - 2);
  return {place, place};
}

}  // namespace

SplitTitle SplitTitleOf(TextView title) {
  SplitTitle split;
  for (size_t pair = 0; pair < kOpening.size(); ++pair) {
    const Cut cut = CutAt(title, kOpening[pair], kClosing[pair]);
    if (cut.subBegin == TextView::npos) continue;
    split = {Text(title.substr(0, cut.mainEnd)), Text(title.substr(cut.subBegin))};
    break;
  }
  if (split.main.empty()) split = {Text(title), {}};
  return split;
}

}  // namespace qlm
