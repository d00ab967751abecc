// The command `library`: every chart below folders, checked on all cores.
//
// What the engine holds of a chart is one for the process, so that each chart has a process of its own. That
// also keeps a chart that brings the engine down from ending the run, and one from telling on the next.
#include <unistd.h>

#include <cstdio>
#include <map>
#include <thread>
#include <utility>

#include "base/hooks.h"
#include "library/scan.h"
#include "platform/children.h"
#include "platform/files.h"
#include "platform/text.h"
#include "state/lists.h"
#include "tools/qlmprobe/check_facts.h"
#include "tools/qlmprobe/commands.h"
#include "tools/qlmprobe/engine.h"

namespace probe {
namespace {

using qlm::Text;
using qlm::TextView;

// Of processor time for one chart: by far more than the largest that the game reads takes.
constexpr uint32_t kSeconds = 600;

// What a child leaves with.
enum State : int { kClean, kFound, kUnreadable };

struct Counts {
  int64_t clean = 0;
  int64_t found = 0;
  int64_t unreadable = 0;
  int64_t crashed = 0;
};

std::vector<std::pair<Text, Text>> unreadable;  // path, why

std::string Shown(TextView path) { return PrintedPath(platform::SystemPath(path)); }

Json LineOf(TextView path, std::string_view state) {
  Json line(qlm::JsonLayout::kOneLine);
  line.Put("file", std::string_view(Shown(path)));
  line.Put("state", state);
  return line;
}

// In the child.
int Check(const Text& path, std::string& bytes) {
  if (!CheckReadableChart(platform::SystemPath(path))) {
    bytes = LineOf(path, "unreadable").Take();
    return kUnreadable;
  }
  std::map<std::string_view, int64_t> kinds;
  for (const Finding& finding : CheckChart(path)) ++kinds[finding.kind];
  // What the wide reading makes otherwise is no fault of the chart.
  const bool clean = kinds.size() == kinds.count("wide");
  Json line = LineOf(path, clean ? "clean" : "found");
  if (!kinds.empty()) {
    line.Key("findings").BeginObject();
    for (const auto& [kind, count] : kinds) line.Put(kind, count);
    line.EndObject();
  }
  bytes = line.Take();
  return clean ? kClean : kFound;
}

std::string Crashed(const Text& path, int signal) {
  Json line = LineOf(path, "crashed");
  line.Put("signal", signal);
  return line.Take();
}

std::vector<Text> FindCharts(const std::vector<std::string>& folders) {
  qlm::hooks.unreadable = [](TextView path, TextView why) { unreadable.emplace_back(path, why); };
  qlm::library.scanNoLimit = true;
  std::vector<Text> charts;
  for (const std::string& folder : folders) {
    const std::vector<Text> found = qlm::SearchFiles(GamePath(folder), qlm::ChartPatterns());
    charts.insert(charts.end(), found.begin(), found.end());
  }
  qlm::hooks.unreadable = nullptr;
  return charts;
}

// One line that is written over and over, where a person sees it.
class Progress {
 public:
  explicit Progress(size_t charts) : charts_(charts), watched_(isatty(STDERR_FILENO) != 0) {}
  ~Progress() { Clear(); }
  Progress(const Progress&) = delete;
  Progress& operator=(const Progress&) = delete;

  void Clear() const {
    if (watched_) std::fputs("\r\033[K", stderr);
  }
  void Show(size_t done) const {
    if (watched_) std::fprintf(stderr, "\r\033[K%zu of %zu charts", done, charts_);
  }

 private:
  size_t charts_;
  bool watched_;
};

bool TellUnreadable() {
  for (const auto& [path, why] : unreadable) {
    std::fprintf(stderr, "qlmprobe: %s: %s\n", Shown(path).c_str(), platform::EncodeUtf8(why).c_str());
  }
  return unreadable.empty();
}

}  // namespace

int LibraryCommand(Arguments& arguments) {
  StartEngine(arguments);
  if (!arguments.Good()) return kWrongUsage;
  for (const std::string& folder : arguments.Files()) {
    if (!CheckFolder(folder)) return kRefused;
  }
  const std::vector<Text> charts = FindCharts(arguments.Files());
  const bool whole = TellUnreadable();

  Counts counts;
  bool written = true;
  const Progress progress(charts.size());
  progress.Show(0);
  platform::RunInChildren(
      charts.size(), std::thread::hardware_concurrency(), kSeconds,
      [&](size_t index, std::string& bytes) { return Check(charts[index], bytes); },
      [&](size_t index, const platform::ChildAnswer& answer) {
        ++(!answer.ended             ? counts.crashed
           : answer.status == kClean ? counts.clean
           : answer.status == kFound ? counts.found
                                     : counts.unreadable);
        progress.Clear();
        written = written && WriteOutput(answer.ended ? answer.bytes : Crashed(charts[index], answer.signal));
        progress.Show(index + 1);
      });

  Json summary(qlm::JsonLayout::kOneLine);
  summary.Put("charts", charts.size());
  summary.Put("clean", counts.clean);
  summary.Put("found", counts.found);
  summary.Put("unreadable", counts.unreadable);
  summary.Put("crashed", counts.crashed);
  written = written && WriteOutput(summary.Take());
  const bool good = whole && written && counts.clean == static_cast<int64_t>(charts.size());
  return good ? kDone : kRefused;
}

}  // namespace probe
