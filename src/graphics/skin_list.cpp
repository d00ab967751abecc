// The list of skins.
#include "graphics/skin_list.h"

#include <algorithm>
#include <optional>
#include <string>
#include <vector>

#include "base/log.h"
#include "base/paths.h"
#include "graphics/skin_lines.h"
#include "platform/files.h"
#include "platform/text.h"
#include "state/skin.h"

namespace qlm {
namespace {

// The names of the skins in the data folder, in the order of their capitals.
std::vector<Text> SkinNames() {
  std::vector<Text> names;
  for (platform::FolderEntry& entry : platform::ListFolder(DataPath(u""))) {
    const bool named = entry.name.size() > 4 && EqualsAnyCase(Right(entry.name, 4), u".BRD");
    if (named && !entry.isFolder) names.push_back(std::move(entry.name));
  }
  std::sort(names.begin(), names.end(), [](TextView a, TextView b) {
    const Text upperA = UCase(a);
    const Text upperB = UCase(b);
    return upperA != upperB ? upperA < upperB : a < b;
  });
  return names;
}

// A style that is named takes the place of "any".
void TakeStyle(TextView styles, SkinEntry& skin) {
  const auto take = [&](TextView style, bool& flag) {
    if (InStr(styles, style) == 0) return;
    flag = true;
    skin.forAny = false;
  };
  take(u"1P", skin.for1P);
  take(u"2P", skin.for2P);
  take(u"DP", skin.forDP);
}

void TakeLine(TextView line, SkinEntry& skin) {
  if (line.starts_with(u"#SKINSTYLE")) {
    TakeStyle(Mid(line, 12), skin);
  } else if (line.starts_with(u"#TITLE")) {
    skin.title = Trim(Mid(line, 8));
  }
}

SkinEntry Describe(TextView name) {
  SkinEntry skin;
  skin.path = DataPath(name);
  const std::optional<std::string> bytes = platform::ReadFilePart(skin.path, 0, kLongestSkin);
  // Quirk: lines are brought to capitals whole, so that titles stand in capitals.
  for (const Text& raw : Split(platform::DecodeCp932(bytes.value_or(std::string())), u"\n")) {
    TextView line = raw;
    if (line.ends_with(kCr)) line.remove_suffix(1);
    TakeLine(UCase(Trim(line.substr(0, line.find(u"//")))), skin);
  }
  if (skin.title.empty()) skin.title = Join(u"(", name, u")");
  return skin;
}

}  // namespace

int16_t FindSkin(TextView path) {
  for (size_t index = 0; index < skinList.size() && index <= INT16_MAX; ++index) {
    if (EqualsAnyCase(skinList[index].path, path)) return static_cast<int16_t>(index);
  }
  return -1;
}

void UpdateSkinList() {
  DebugLog(u"[UpdateSkinList]");
  skinList.clear();
  for (const Text& name : SkinNames()) skinList.push_back(Describe(name));
  SkinIndex = FindSkin(SkinPath);
  for (size_t mode = 0; mode < SkinMapPath.size(); ++mode) SkinMapIndex[mode] = FindSkin(SkinMapPath[mode]);
  DebugLog(Join(static_cast<int64_t>(skinList.size()), u" skins(s) has detected."));
}

}  // namespace qlm
