// Checks of a chart's text: line ends, hidden commands, encoding.
#include <algorithm>

#include "platform/text.h"
#include "tools/qlmprobe/check_facts.h"

namespace probe {
namespace {

constexpr std::string_view kUtf8Mark = "\xEF\xBB\xBF";

// Walks the lines of a text, of which one may be as long as the whole file.
class Lines {
 public:
  explicit Lines(std::string_view bytes) : rest_(bytes) {}

  bool Next() {
    if (rest_.empty()) return false;
    const size_t length = std::min(rest_.find_first_of("\r\n"), rest_.size());
    const size_t end = length == rest_.size() ? 0 : rest_.substr(length, 2) == "\r\n" ? 2 : 1;
    line = rest_.substr(0, length);
    endBefore = endOfLine_;
    endOfLine_ = rest_.substr(length, end);
    rest_.remove_prefix(length + end);
    ++number;
    return true;
  }

  int64_t number = 0;  // of the line at hand, from 1
  std::string_view line;
  std::string_view endBefore;  // of the line before: "\r\n", "\n" or "\r"; nothing in the first

 private:
  std::string_view rest_;
  std::string_view endOfLine_;
};

bool HoldsMoreThanAscii(std::string_view bytes) {
  return std::any_of(bytes.begin(), bytes.end(), [](char byte) { return (byte & 0x80) != 0; });
}

void CheckEncoding(Findings& findings, std::string_view bytes) {
  if (HoldsMoreThanAscii(bytes) && platform::IsUtf8(bytes)) {
    findings.Add(0, "encoding",
                 u"the text is UTF-8, and the game reads Shift-JIS: names and titles in it come out wrong");
  }
}

// Whether a command is hidden from the game, which looks for a "#" right behind a CR LF.
void CheckSeen(Findings& findings, const Lines& at, bool anyCrLf) {
  const size_t mark = at.line.find_first_not_of(" \t");
  if (mark == std::string_view::npos || at.line[mark] != '#') return;
  if (mark > 0) {
    findings.Add(at.number, "blank", u"blanks before the # hide the command");
  } else if (at.number == 1) {
    findings.Add(1, "first-line", u"the first line of a file is never read; put an empty line before it");
  } else if (anyCrLf && at.endBefore != "\r\n") {
    findings.Add(at.number, "line-ends",
                 qlm::Join(u"the line before ends in ", at.endBefore == "\n" ? u"LF" : u"CR",
                           u" alone, so that this command is not read"));
  }
  if (at.line == "#") findings.Add(at.number, "empty", u"a # alone swallows the line behind it");
}

}  // namespace

std::string CheckText(Findings& findings, std::string_view bytes) {
  if (const size_t nul = bytes.find('\0'); nul != std::string_view::npos) {
    const auto line = std::count(bytes.begin(), bytes.begin() + static_cast<std::ptrdiff_t>(nul), '\n') + 1;
    findings.Add(line, "nul", u"a zero byte ends the chart here");
    bytes = bytes.substr(0, nul);
  }
  CheckEncoding(findings, bytes);
  if (bytes.starts_with(kUtf8Mark)) bytes.remove_prefix(kUtf8Mark.size());

  const bool anyCrLf = bytes.find("\r\n") != std::string_view::npos;
  if (!anyCrLf && bytes.find('\n') != std::string_view::npos) {
    findings.Add(0, "line-ends", u"the lines end in LF alone: the game reads nothing; save with CR LF");
  }
  std::string meant = "\r\n";
  meant.reserve(bytes.size() + 4);
  for (Lines lines(bytes); lines.Next();) {
    CheckSeen(findings, lines, anyCrLf);
    if (lines.line != "#") meant += lines.line;
    meant += "\r\n";
  }
  return meant;
}

}  // namespace probe
