// Checks of a chart's text: line ends, hidden commands, encoding.
#include <algorithm>

#include "platform/text.h"
#include "tools/qlmprobe/check_facts.h"

namespace probe {
namespace {

using qlm::Text;
using qlm::TextView;

constexpr std::string_view kUtf8Mark = "\xEF\xBB\xBF";

struct RawLine {
  std::string_view bytes;
  std::string_view end;  // "\r\n", "\n", "\r", or nothing at the end of the file
};

std::vector<RawLine> SplitLines(std::string_view bytes) {
  std::vector<RawLine> lines;
  while (!bytes.empty()) {
    const size_t length = std::min(bytes.find_first_of("\r\n"), bytes.size());
    const size_t end = length == bytes.size() ? 0 : bytes.substr(length, 2) == "\r\n" ? 2 : 1;
    lines.push_back({bytes.substr(0, length), bytes.substr(length, end)});
    bytes.remove_prefix(length + end);
  }
  return lines;
}

bool HoldsMoreThanAscii(std::string_view bytes) {
  return std::any_of(bytes.begin(), bytes.end(), [](char byte) { return (byte & 0x80) != 0; });
}

void CheckEncoding(ChartFacts& facts, std::string_view bytes) {
  if (HoldsMoreThanAscii(bytes) && platform::IsUtf8(bytes)) {
    facts.Find(0, "encoding",
               u"the text is UTF-8, and the game reads Shift-JIS: names and titles in it come out wrong");
  }
}

// Whether the game finds the command: its "#" must stand right behind a CR LF.
void CheckSeen(ChartFacts& facts, int64_t number, std::string_view endBefore, bool anyCrLf) {
  if (number == 1) {
    facts.Find(1, "first-line", u"the first line of a file is never read; put an empty line before it");
  } else if (anyCrLf && endBefore != "\r\n") {
    facts.Find(number, "line-ends",
               Text(u"the line before ends in ") + (endBefore == "\n" ? u"LF" : u"CR") +
                   u" alone, so that this command is not read");
  }
}

}  // namespace

void CheckText(ChartFacts& facts, std::string_view bytes) {
  if (const size_t nul = bytes.find('\0'); nul != std::string_view::npos) {
    const auto line = std::count(bytes.begin(), bytes.begin() + static_cast<std::ptrdiff_t>(nul), '\n') + 1;
    facts.Find(line, "nul", u"a zero byte ends the chart here");
    bytes = bytes.substr(0, nul);
  }
  CheckEncoding(facts, bytes);
  if (bytes.starts_with(kUtf8Mark)) bytes.remove_prefix(kUtf8Mark.size());

  const std::vector<RawLine> lines = SplitLines(bytes);
  const auto endsIn = [&](std::string_view end) {
    return std::any_of(lines.begin(), lines.end(), [&](const RawLine& line) { return line.end == end; });
  };
  const bool anyCrLf = endsIn("\r\n");
  if (!anyCrLf && endsIn("\n")) {
    facts.Find(0, "line-ends", u"the lines end in LF alone: the game reads nothing; save with CR LF");
  }
  bool conditional = false;
  for (size_t i = 0; i < lines.size(); ++i) {
    const auto number = static_cast<int64_t>(i) + 1;
    const Text text = platform::DecodeCp932(lines[i].bytes);
    const size_t mark = text.find_first_not_of(u" \t");
    if (mark == Text::npos || text[mark] != u'#') continue;
    if (mark > 0) {
      facts.Find(number, "blank", u"blanks before the # hide the command");
      continue;
    }
    CheckSeen(facts, number, i > 0 ? lines[i - 1].end : std::string_view(), anyCrLf);
    const Text command = text.substr(1);
    if (command.empty()) {
      facts.Find(number, "empty", u"a # alone swallows the line behind it");
      continue;
    }
    if (qlm::BeginsWith(command, u"IF ")) conditional = true;
    facts.lines.push_back({number, command, conditional});
    if (qlm::BeginsWith(command, u"END")) conditional = false;
  }
}

}  // namespace probe
