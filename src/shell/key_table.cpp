// The key table between memory and file.
#include "shell/key_table.h"

#include <bit>
#include <cstddef>
#include <optional>

#include "base/log.h"
#include "base/paths.h"
#include "platform/files.h"
#include "platform/window.h"
#include "state/keys.h"

namespace qlm {
namespace {

constexpr DefaultKey kDefaultKeys[] = {
    {44, 11},  // Z
    {31, 12},  // S
    {45, 13},  // X
    {32, 14},  // D
    {46, 15},  // C
    {33, 18},  // F
    {47, 19},  // V
    {57, 16},  // Space
    {42, 16},  // left Shift
    {49, 21},  // N
    {36, 22},  // J
    {50, 23},  // M
    {37, 24},  // K
    {51, 25},  // ,
    {38, 26},  // L
    {52, 28},  // .
    {28, 29},  // Enter
    {54, 29},  // right Shift
};

Text KeyTablePath() { return DataPath(u"qlm_keycnf.dat"); }

uint8_t ByteAt(std::string_view bytes, size_t place) {
  return place < bytes.size() ? static_cast<uint8_t>(bytes[place]) : uint8_t{0};
}

}  // namespace

std::span<const DefaultKey> DefaultKeys() { return kDefaultKeys; }

void SetDefaultKeyMap() {
  KeyMap.Clear();
  for (const DefaultKey& row : kDefaultKeys) KeyMap[row.key] = row.code;
}

void TakeKeyTable(std::string_view bytes) {
  size_t place = 0;
  for (int16_t& code : KeyMap) {
    code =
        std::bit_cast<int16_t>(static_cast<uint16_t>(ByteAt(bytes, place) | ByteAt(bytes, place + 1) << 8));
    place += 2;
  }
}

std::string KeyTableBytes() {
  std::string bytes;
  for (const int16_t code : KeyMap) {
    const auto pattern = std::bit_cast<uint16_t>(code);
    bytes.push_back(static_cast<char>(pattern & 255));
    bytes.push_back(static_cast<char>(pattern >> 8));
  }
  return bytes;
}

void LoadKeyTable() {
  if (!platform::FindPath(KeyTablePath())) {
    DebugLog(u"# Key-config file wasn't detected. Load default setting.");
    SetDefaultKeyMap();
    return;
  }
  const std::optional<std::string> bytes = platform::ReadFile(KeyTablePath());
  DebugLog(u"Key-config loaded.");
  if (bytes) {
    TakeKeyTable(*bytes);
    return;
  }
  platform::MessageBox(platform::BoxIcon::kInformation, u"information",
                       u"キーコンフィグをリセットしました。");
  SetDefaultKeyMap();
}

void SaveKeyTable() { platform::WriteFile(KeyTablePath(), KeyTableBytes()); }

}  // namespace qlm
