// What is looked for in the tables of a loaded chart, and the words for it.
#include "chart/trouble.h"

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <cstdio>
#include <span>
#include <vector>

#include "base/paths.h"
#include "platform/files.h"
#include "platform/terminal.h"
#include "platform/text.h"
#include "state/chart.h"
#include "state/message.h"
#include "state/settings.h"
#include "state/slots.h"
#include "state/sounds.h"

namespace qlm {
namespace {

constexpr size_t kLine = 30;  // characters that fit into the picture

bool IsHeard(const ChartObj& obj) {
  return obj.channel == 1 || (obj.channel >= 31 && obj.channel <= 49) || IsNoteChannel(obj.channel);
}

std::span<const ChartObj> Objects() {
  return std::span(objs).first(std::min(objs.size(), static_cast<size_t>(std::max(objCount, 0))));
}

bool IsEmpty() { return std::ranges::none_of(Objects(), IsHeard); }

// Sounds are named, and none of them could be loaded.
bool IsSilent() {
  constexpr int kLoadsAll = 0;
  if (NoWAV || WAVLoadmode != kLoadsAll) return false;
  bool named = false;
  for (int32_t slot = 0; slot <= LastSlot; ++slot) {
    if (WavBuffer[slot] != nullptr) return false;
    named = named || !WavFile[slot].empty();
  }
  return named;
}

// The tempo that an object sets; the one before where it sets none.
float TempoBehind(const ChartObj& obj, float before) {
  if (obj.channel == 3) return static_cast<float>(obj.value);
  if (obj.channel != 8) return before;
  const float* const tempo = BpmTable.Find(obj.value);
  return tempo == nullptr ? before : *tempo;
}

// Position stands still, or runs backwards, with objects still ahead.
bool NeverEnds() {
  float tempo = HdrBPM;
  int32_t pos = 0;
  for (const ChartObj& obj : Objects()) {
    if (obj.pos > pos && !(tempo > 0)) return true;
    pos = obj.pos;
    tempo = TempoBehind(obj, tempo);
  }
  return false;
}

// The file as a person would type it; the letters of the screen are ASCII.
Text NameOnScreen(TextView path) {
  const TextView name = GetFileName(path);
  const bool ascii = std::ranges::all_of(name, [](char16_t unit) { return unit > ' ' && unit < 127; });
  return ascii && name.size() <= kLine ? Text(name) : Text(u"CHART");
}

// Cut at blanks into lines that fit.
std::vector<Text> InLines(const Text& sentence) {
  std::vector<Text> lines;
  for (const Text& word : Split(sentence, u" ")) {
    if (lines.empty() || lines.back().size() + 1 + word.size() > kLine) {
      lines.push_back(word);
    } else {
      lines.back() += Join(u" ", word);
    }
  }
  return lines;
}

}  // namespace

std::string CheckCommand(TextView path) {
  return platform::TerminalCommand("qlmprobe", "check", platform::SystemPath(path));
}

TextView TroubleOfChart() {
  if (IsEmpty()) return u"This chart is empty, since no note and no sound was read";
  if (NeverEnds()) return u"This chart never ends, since its tempo is 0";
  if (IsSilent()) return u"This chart is silent, since none of its sounds was loaded";
  return u"";
}

void TellTrouble(TextView path) {
  const TextView trouble = TroubleOfChart();
  if (trouble.empty()) return;
  chartTrouble = InLines(Join(trouble, u"; qlmprobe check ", NameOnScreen(path), u" says why"));
  std::fprintf(stderr, "quillmarch: %s; %s says why\n", platform::EncodeUtf8(trouble).c_str(),
               CheckCommand(path).c_str());
}

}  // namespace qlm
