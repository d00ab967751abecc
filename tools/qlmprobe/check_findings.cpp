// The list of what a check tells.
#include <algorithm>

#include "tools/qlmprobe/check_facts.h"

namespace probe {
namespace {

constexpr int64_t kMostOfAKind = 10'000;

}  // namespace

void Findings::Add(int64_t line, std::string_view kind, qlm::Text text) {
  if (++kept_[kind] > kMostOfAKind) return LeaveOut(kind, 1);
  findings_.push_back({line, kind, std::move(text)});
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
