// The skin in use follows its files.
#include "graphics/skin_watch.h"

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <memory>
#include <optional>
#include <tuple>
#include <utility>
#include <vector>

#include "base/paths.h"
#include "base/text.h"
#include "graphics/draw.h"
#include "graphics/inks.h"
#include "graphics/skin.h"
#include "graphics/skin_check.h"
#include "graphics/skin_directives.h"
#include "platform/clock.h"
#include "platform/file_watch.h"
#include "platform/font.h"
#include "platform/line_breaks.h"
#include "state/message.h"
#include "state/skin.h"
#include "state/surfaces.h"

namespace qlm {
namespace {

constexpr platform::FontLook kLook{.height = 12};

struct Watch {
  SkinReport report;    // of the last load
  bool loaded = false;  // by the game, and not yet looked at
  platform::FileWatch files;
  std::vector<Text> known;                  // findings of the skin in use
  std::optional<uint32_t> changedAt;        // clock of the last change that is not yet taken
  std::vector<platform::TextMask> trouble;  // its lines on the screen
};
std::unique_ptr<Watch> watch;

Watch& TheWatch() {
  if (!watch) watch = std::make_unique<Watch>();
  return *watch;
}

// What a load of a skin changes beside its tables.
auto AroundTables() {
  return std::tie(SysFont, SysFontW, SysFontH, MessageRect, FullRect, DDSkinBack, SkinFile, TitleChars,
                  SkinPath, SkinIndex, BgaX, BgaY, BgaW, BgaH, BgaTarget);
}

template <typename... Ts>
std::tuple<Ts...> CopyOf(const std::tuple<Ts&...>& references) {
  return references;
}

std::vector<Text> FilesOf(const SkinReport& report, TextView skin) {
  std::vector<Text> files = {Text(skin)};
  for (const auto& [number, name] : report.files) files.push_back(SkinPicturePath(name));
  if (!report.background.empty()) files.push_back(SkinPicturePath(report.background));
  return files;
}

std::vector<SkinReport::Remark> FindingsOf(const SkinReport& report, TextView skin) {
  if (!FileExists(skin)) return {{0, u"there is no such file"}};
  if (report.set.empty()) return {{0, u"no line of it says anything that the game knows"}};
  return CheckSkin(report);
}

std::vector<Text> TextsOf(const std::vector<SkinReport::Remark>& findings) {
  std::vector<Text> texts;
  texts.reserve(findings.size());
  for (const SkinReport::Remark& finding : findings) texts.push_back(finding.text);
  return texts;
}

// The game has loaded a skin: it is as good as it is.
void TakeLoadedSkin(Watch& own) {
  own.loaded = false;
  own.changedAt.reset();
  own.trouble.clear();
  own.known = TextsOf(FindingsOf(own.report, SkinPath));
  own.files.Follow(FilesOf(own.report, SkinPath));
}

// Lines that had the same to say before may have gone to other places.
std::vector<SkinReport::Remark> NewFindings(const std::vector<SkinReport::Remark>& findings,
                                            std::vector<Text> known) {
  std::vector<SkinReport::Remark> fresh;
  for (const SkinReport::Remark& finding : findings) {
    const auto before = std::ranges::find(known, finding.text);
    if (before == known.end()) {
      fresh.push_back(finding);
    } else {
      known.erase(before);
    }
  }
  return fresh;
}

int32_t WidthOf(std::u16string_view line) { return platform::FontTextWidth(line, kLook.height); }

void TellTrouble(Watch& own, const std::vector<SkinReport::Remark>& findings, TextView skin) {
  constexpr int32_t kWidth = 616;
  constexpr size_t kMostLines = 10;
  const TextView name = GetFileName(skin);
  std::vector<Text> lines = {Join(name, u" was not taken; the last good skin stays")};
  for (const SkinReport::Remark& finding : findings) {
    const Text place = finding.line > 0 ? Join(name, u":", finding.line) : Text(name);
    for (Text& line : platform::BreakLines(Join(place, u": ", finding.text), kWidth, WidthOf)) {
      lines.push_back(std::move(line));
    }
  }
  if (lines.size() > kMostLines) {
    lines.resize(kMostLines);
    lines.back() = Join(u"… qlmprobe skin ", name, u" tells all");
  }
  own.trouble.clear();
  for (const Text& line : lines) own.trouble.push_back(platform::RenderText(line, kLook));
}

void Reload(Watch& own) {
  const Text skin = SkinPath;
  auto tables = CopyOf(SkinTables());
  auto around = CopyOf(AroundTables());
  const std::vector<Text> filesBefore = FilesOf(own.report, skin);
  loadSkin(skin, false);
  own.loaded = false;
  const std::vector<SkinReport::Remark> findings = FindingsOf(own.report, skin);
  const std::vector<SkinReport::Remark> fresh = NewFindings(findings, own.known);
  // Pictures that are named now, and those that the last good skin has, which may come back.
  std::vector<Text> files = FilesOf(own.report, skin);
  if (fresh.empty()) {
    own.known = TextsOf(findings);
    own.trouble.clear();
    ShowMessage(Join(u"SKIN RELOADED: ", GetFileName(skin)));
  } else {
    SkinTables() = std::move(tables);
    AroundTables() = std::move(around);
    TellTrouble(own, fresh, skin);
    files.insert(files.end(), filesBefore.begin(), filesBefore.end());
  }
  own.files.Follow(files);
}

}  // namespace

SkinReport* NewWatchedReport() {
  Watch& own = TheWatch();
  own.report = {};
  own.loaded = true;
  return &own.report;
}

void FollowSkin() {
  constexpr int32_t kSettles = 100;  // ms: programs write a file in steps, and several files one by one
  if (!watch) return;
  if (watch->loaded) TakeLoadedSkin(*watch);
  const uint32_t now = platform::Now();
  if (watch->files.Changed()) watch->changedAt = now;
  if (!watch->changedAt || platform::Elapsed(now, *watch->changedAt) < kSettles) return;
  watch->changedAt.reset();
  Reload(*watch);
}

void DrawSkinTrouble() {
  constexpr int32_t kLeft = 12;
  constexpr int32_t kTop = 6;
  constexpr int32_t kLineHeight = 15;
  if (!watch || watch->trouble.empty() || !DDBack) return;
  const auto lines = static_cast<int32_t>(watch->trouble.size());
  DrawStrip({0, 0, kScreen.right, 2 * kTop + lines * kLineHeight});
  int32_t y = kTop;
  for (const platform::TextMask& line : watch->trouble) {
    platform::DrawMask(*DDBack, kScreen, kLeft, y, line, y == kTop ? inks::kGold : inks::kPaper);
    y += kLineHeight;
  }
}

void ForgetWatchedSkin() { watch.reset(); }

}  // namespace qlm
