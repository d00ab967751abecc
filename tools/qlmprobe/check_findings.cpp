// The list of what a check tells.
#include <algorithm>
#include <array>

#include "state/settings.h"
#include "tools/qlmprobe/check_facts.h"

namespace probe {
namespace {

constexpr int64_t kMostOfAKind = 10'000;

// What only the classic reading stumbles over. A chart is read for its author in that one, so that in the
// wide reading these do not hold.
constexpr std::array<std::string_view, 13> kOfClassicAlone = {
    "encoding", "line-ends", "first-line", "missing-field", "command",      "index", "channel",
    "cell",     "random",    "undefined",  "duplicate",     "last-measure", "player"};

bool Holds(std::string_view kind) {
  return !qlm::WideCharts || std::ranges::find(kOfClassicAlone, kind) == kOfClassicAlone.end();
}

}  // namespace

void Findings::Add(int64_t line, std::string_view kind, qlm::Text text) {
  if (!Holds(kind)) return;
  if (++kept_[kind] > kMostOfAKind) return LeaveOut(kind, 1);
  findings_.push_back({line, kind, std::move(text)});
}

void Findings::LeaveOut(std::string_view kind, int64_t count) {
  if (Holds(kind)) leftOut_[kind] += count;
}

std::vector<Finding> Findings::InOrder() const {
  std::vector<Finding> ordered = findings_;
  std::stable_sort(ordered.begin(), ordered.end(),
                   [](const Finding& a, const Finding& b) { return a.line < b.line; });
  for (const auto& [kind, count] : leftOut_) {
    ordered.push_back({0, kind, qlm::Join(u"and ", count, u" more of this kind")});
  }
  return ordered;
}

}  // namespace probe
