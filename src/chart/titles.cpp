// The stages of the conversion, in their order. One that fails leaves the text as it was.
#include "chart/titles.h"

#include <cstddef>
#include <optional>
#include <string>
#include <utility>

#include "base/log.h"
#include "base/romaniser.h"
#include "platform/kana.h"
#include "platform/text.h"
#include "state/titles.h"

namespace qlm {
namespace {

// A dictionary whose words hold each other could let a title grow without end: an entry that would go past
// this is passed over.
constexpr size_t kLongestTitle = 65535;

// How long the title would be with this entry put in.
size_t LengthWith(TextView title, TextView from, TextView to) {
  size_t found = 0;
  for (size_t at = title.find(from); at != TextView::npos; at = title.find(from, at + from.size())) ++found;
  return title.size() - found * from.size() + found * to.size();
}

Text WithWords(Text title) {
  for (size_t i = 0; i < DictFrom.size(); ++i) {
    const Text& from = DictFrom[i];
    if (from.empty() || title.find(from) == Text::npos) continue;
    if (DictTo[i].size() > from.size() && LengthWith(title, from, DictTo[i]) > kLongestTitle) continue;
    title = Replace(title, from, DictTo[i]);
  }
  return title;
}

Text WithReadings(TextView title) {
  if (std::optional<Text> read = platform::ReadKanji(title)) return std::move(*read);
  if (!std::exchange(ToldOfNoReadings, true)) {
    DebugLog(u"# no dictionary of readings: kanji are shown as question marks");
  }
  return Text(title);
}

// One question mark for a character that the code page does not hold, one for each byte of others that the
// font does not have.
Text WithoutOtherLetters(TextView letters) {
  std::string bytes;
  for (const char16_t unit : letters) {
    // The second half of a character whose first half has become one.
    if (unit >= 0xDC00 && unit <= 0xDFFF) continue;
    bytes += platform::EncodeCp932({&unit, 1});
  }
  for (char& byte : bytes) {
    if (byte < 32 || byte > 126) byte = '?';
  }
  return platform::DecodeCp932(bytes);
}

}  // namespace

Text Cvt2ASCII(TextView title) { return ConvertTitle(title).result; }

ConvertedTitle ConvertTitle(TextView title) {
  ConvertedTitle stages;
  DebugLog(Join(u"[Cvt2ASCII]: ", title), 1);
  stages.byDict = WithWords(Text(title));
  DebugLog(Join(u"byDict: ", stages.byDict));
  stages.byMSIME = WithReadings(stages.byDict);
  DebugLog(Join(u"byMSIME: ", stages.byMSIME));
  stages.toNarrow = platform::NarrowKatakana(stages.byMSIME);
  DebugLog(Join(u"toNarrow: ", stages.toNarrow));
  stages.result = WithoutOtherLetters(Romanise(stages.toNarrow));
  DebugLog(Join(u"-- RESULT:", stages.result), -1);
  return stages;
}

}  // namespace qlm
