// Parsing of the command text, and the play that it asks for.
#include "shell/command_line.h"

#include <algorithm>
#include <cstdio>

#include "base/paths.h"
#include "chart/reader.h"
#include "library/jukebox.h"
#include "library/song_list.h"
#include "platform/files.h"
#include "screens/road.h"
#include "state/lists.h"
#include "state/message.h"
#include "state/session.h"
#include "state/settings.h"

namespace qlm {
namespace {

// The letter of the option that a word begins with, 0 when it is none.
char16_t OptionLetter(TextView word) {
  if (word.size() < 2 || (word[0] != u'-' && word[0] != u'/')) return 0;
  constexpr TextView kLetters = u"PSBWQ";
  const char16_t letter = UCase(Left(word, 2))[1];
  return kLetters.find(letter) == TextView::npos ? u'\0' : letter;
}

void ApplyOption(char16_t letter) {
  switch (letter) {
    case u'S': PlayEnd = true; break;
    case u'B': NoBGA = false; break;
    case u'W': NoWAV = false; break;
    default: break;  // P and Q change nothing
  }
}

bool IsList(TextView word) { return EqualsAnyCase(Right(word, 4), u".QPL"); }

// The blanks between double quotes become NUL, and the quotes vanish.
Text HideQuotedBlanks(TextView command) {
  Text hidden;
  bool quoted = false;
  for (Text& piece : Split(command, u"\"")) {
    if (quoted) std::replace(piece.begin(), piece.end(), u' ', u'\0');
    hidden += piece;
    quoted = !quoted;
  }
  return hidden;
}

// To the person at the screen and to the one at the terminal; the play runs all the same.
void ReportMissingChart(TextView path) {
  ShowMessage(Join(u"file not exist: ", GetFileName(path)));
  std::fprintf(stderr, "quillmarch: %s: there is no such chart file\n", platform::SystemPath(path).c_str());
}

}  // namespace

bool IsOption(TextView word) { return OptionLetter(word) != 0; }

std::vector<Text> CommandWords(TextView command) {
  std::vector<Text> words = Split(HideQuotedBlanks(command), u" ");
  std::erase_if(words, [](const Text& word) { return word.empty(); });
  for (Text& word : words) std::replace(word.begin(), word.end(), u'\0', u' ');
  return words;
}

bool NamesChart(TextView command) {
  const std::vector<Text> words = CommandWords(command);
  return std::any_of(words.begin(), words.end(),
                     [](TextView word) { return !IsOption(word) && !IsList(word); });
}

std::optional<bool> RunCommandLine(TextView command) {
  bool chartNamed = false;
  for (const Text& word : CommandWords(command)) {
    if (const char16_t letter = OptionLetter(word)) {
      ApplyOption(letter);
    } else if (IsList(word)) {
      LoadJukeList(word, false);
    } else {
      if (!chartNamed) ClearList();
      chartNamed = true;
      AddSong(word);
      if (!FileExists(word)) {
        ReportMissingChart(word);
      } else if (platform::FileLength(word).value_or(0) > kLongestChart) {
        std::fprintf(stderr, "quillmarch: %s: a chart of more than 256 MiB is refused\n",
                     platform::SystemPath(word).c_str());
      }
    }
  }
  if (!chartNamed) return std::nullopt;
  return PlayListEntry(0);
}

}  // namespace qlm
