// The command `keys`: a key file by what its keys do, and the making of one.
#include "tools/qlmprobe/keys.h"

#include <array>
#include <cstdio>
#include <optional>

#include "files/key_table.h"
#include "platform/files.h"
#include "state/keys.h"
#include "tools/qlmprobe/commands.h"
#include "tools/qlmprobe/engine.h"

namespace probe {
namespace {

// Meanings of menus, from 1 on.
constexpr std::array<qlm::TextView, 8> kMenuNames = {u"01ESC", u"02TAB", u"03Enter", u"04↑",
                                                     u"05↓",   u"06←",   u"07→",     u"08★"};

bool IsLane(int64_t code) { return code >= 11 && code <= 29 && code != 20; }
bool IsMenu(int64_t code) { return code >= 1 && code <= static_cast<int64_t>(kMenuNames.size()); }

// As a list shows it: the function, a tab, and each input in brackets.
void PutFunction(Json& json, int16_t code) {
  qlm::Text text =
      IsMenu(code) ? qlm::Text(kMenuNames[static_cast<size_t>(code - 1)]) : qlm::ToText(int32_t{code});
  text += u"\t";
  json.BeginObject();
  json.Put("code", code);
  json.Key("inputs").BeginArray();
  for (int32_t input = 0; input <= qlm::KeyMap.kLast; ++input) {
    if (qlm::KeyMap[input] != code) continue;
    json.Value(input);
    text += qlm::Join(u"[", input, u"]");
  }
  json.EndArray();
  json.Put("text", qlm::TextView(text));
  json.EndObject();
}

struct NewKey {
  int32_t input;
  int16_t code;
};

// "44=11".
std::optional<NewKey> ToNewKey(const std::string& word) {
  const size_t equals = word.find('=');
  if (equals == std::string::npos) return std::nullopt;
  const std::optional<int64_t> input = platform::ToNumber(word.substr(0, equals));
  const std::optional<int64_t> code = platform::ToNumber(word.substr(equals + 1));
  if (!input || !code || *input < 1 || *input > qlm::KeyMap.kLast) return std::nullopt;
  if (*code != 0 && !IsMenu(*code) && !IsLane(*code)) return std::nullopt;
  return NewKey{static_cast<int32_t>(*input), static_cast<int16_t>(*code)};
}

std::vector<NewKey> TakeNewKeys(Arguments& arguments) {
  std::vector<NewKey> keys;
  for (const std::string& word : arguments.Values("--set")) {
    if (const std::optional<NewKey> key = ToNewKey(word)) {
      keys.push_back(*key);
    } else {
      arguments.Fail(
          "--set wants INPUT=CODE, an input from 1 to 400 and a code of 0 to 8, 11 to 19 or 21 to 29");
    }
  }
  return keys;
}

// Starts from the file where there is one, else from the keys of a new installation.
bool ChangeKeyFile(const std::string& file, const std::vector<NewKey>& keys) {
  if (platform::FindPath(GamePath(file)) && !ReadKeyFile(file)) return false;
  for (const NewKey& key : keys) qlm::KeyMap[key.input] = key.code;
  if (platform::WriteFile(GamePath(file), qlm::KeyTableBytes())) return true;
  std::fprintf(stderr, "qlmprobe: %s: the file cannot be written\n", file.c_str());
  return false;
}

}  // namespace

bool ReadKeyFile(const std::string& file) {
  const std::optional<std::string> bytes = platform::ReadFile(GamePath(file));
  if (!bytes) {
    CheckReadable(file);
    return false;
  }
  qlm::TakeKeyTable(*bytes);
  return true;
}

void PutKeys(Json& json) {
  json.Key("functions").BeginArray();
  for (int16_t code = 11; code <= 29; ++code) {
    if (IsLane(code)) PutFunction(json, code);
  }
  for (int16_t code = 1; IsMenu(code); ++code) PutFunction(json, code);
  json.EndArray();
  json.Key("unknown").BeginArray();
  for (int32_t input = 0; input <= qlm::KeyMap.kLast; ++input) {
    const int16_t code = qlm::KeyMap[input];
    if (code != 0 && !IsMenu(code) && !IsLane(code)) json.Row(input, code);
  }
  json.EndArray();
}

int KeysCommand(Arguments& arguments) {
  StartEngine(arguments);
  const std::vector<NewKey> keys = TakeNewKeys(arguments);
  const std::vector<std::string>& files = arguments.Files();
  if (!arguments.Good()) return kWrongUsage;
  const bool done = keys.empty() ? ReadKeyFile(files[0]) : ChangeKeyFile(files[0], keys);
  if (!done) return kRefused;
  Json json;
  PutKeys(json);
  return Print(json, kDone);
}

}  // namespace probe
