// The command `title`: the stages of a title's conversion, and its two lines in the song select.
#include "chart/titles.h"
#include "files/title_dictionary.h"
#include "library/title_split.h"
#include "platform/text.h"
#include "tools/qlmprobe/commands.h"
#include "tools/qlmprobe/engine.h"

namespace probe {

int TitleCommand(Arguments& arguments) {
  StartEngine(arguments);
  const std::optional<std::string> dictionary = arguments.Value("--dict");
  if (!arguments.Good()) return kWrongUsage;
  if (dictionary) {
    if (!CheckReadable(*dictionary)) return kRefused;
    qlm::LoadTitleDictionary(GamePath(*dictionary));
  }

  const qlm::Text title = platform::DecodeUtf8(arguments.Files()[0]);
  const qlm::ConvertedTitle stages = qlm::ConvertTitle(title);
  const qlm::SplitTitle split = qlm::SplitTitleOf(title);
  Json json;
  json.Put("byDict", stages.byDict);
  json.Put("byMSIME", stages.byMSIME);
  json.Put("toNarrow", stages.toNarrow);
  json.Put("result", stages.result);
  json.Put("main", split.main);
  json.Put("sub", split.sub);
  return Print(json, kDone);
}

}  // namespace probe
