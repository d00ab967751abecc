// The key table between memory and file.
#include "files/key_table.h"

#include <bit>
#include <cstddef>
#include <optional>

#include "base/bytes.h"
#include "base/log.h"
#include "base/paths.h"
#include "files/data_folder.h"
#include "platform/files.h"

namespace qlm {
namespace {

struct DefaultKey {
  int32_t key;
  int16_t code;
};
// All others do nothing.
constexpr DefaultKey kDefaultKeys[] = {
    {kKeyZ, 11},      {kKeyS, 12},     {kKeyX, 13},          {kKeyD, 14},         {kKeyC, 15},
    {kKeyF, 18},      {kKeyV, 19},     {kKeySpace, 16},      {kKeyLeftShift, 16}, {kKeyN, 21},
    {kKeyJ, 22},      {kKeyM, 23},     {kKeyK, 24},          {kKeyComma, 25},     {kKeyL, 26},
    {kKeyPeriod, 28}, {kKeyEnter, 29}, {kKeyRightShift, 29},
};

constexpr TextView kKeyTableName = u"qlm_keycnf.dat";

Text KeyTablePath() { return DataPath(kKeyTableName); }

uint8_t ByteAt(std::string_view bytes, size_t place) {
  return place < bytes.size() ? static_cast<uint8_t>(bytes[place]) : uint8_t{0};
}

}  // namespace

KeyTable DefaultKeyTable() {
  KeyTable table;
  for (const DefaultKey& row : kDefaultKeys) table[row.key] = row.code;
  return table;
}

void SetDefaultKeyMap() { KeyMap = DefaultKeyTable(); }

void TakeKeyTable(std::string_view bytes) {
  size_t place = 0;
  for (int16_t& code : KeyMap) {
    code =
        std::bit_cast<int16_t>(static_cast<uint16_t>(ByteAt(bytes, place) | ByteAt(bytes, place + 1) << 8));
    place += 2;
  }
}

std::string KeyTableBytes() {
  ByteWriter bytes;
  for (const int16_t code : KeyMap) bytes.I16(code);
  return bytes.Take();
}

bool LoadKeyTable() {
  if (!platform::FindPath(KeyTablePath())) {
    DebugLog(u"# Key-config file wasn't detected. Load default setting.");
    SetDefaultKeyMap();
    return true;
  }
  const std::optional<std::string> bytes = platform::ReadFile(KeyTablePath());
  DebugLog(u"Key-config loaded.");
  if (bytes) {
    TakeKeyTable(*bytes);
  } else {
    SetDefaultKeyMap();
  }
  return bytes.has_value();
}

bool SaveKeyTable() { return SaveDataFile(kKeyTableName, KeyTableBytes()); }

}  // namespace qlm
