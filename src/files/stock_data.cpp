// The stock data's way to a person.
#include "files/stock_data.h"

#include <array>
#include <cstdio>
#include <cstdlib>
#include <optional>
#include <string>
#include <vector>

#include "base/paths.h"
#include "platform/files.h"
#include "platform/text.h"

namespace qlm {
namespace {

constexpr TextView kDataFolder = u"\\_qlmfiles";
// What was brought: the version, then for each file its sum and its path, a line each, in UTF-8.
constexpr TextView kListName = u"stock.txt";

constexpr size_t kSumDigits = 16;

// All files below a folder, their paths beginning with a "\".
void AddFiles(TextView folder, TextView path, std::vector<Text>& files) {
  for (const platform::FolderEntry& entry : platform::ListFolder(Join(folder, path))) {
    const Text below = Join(path, u"\\", entry.name);
    if (entry.isFolder) {
      AddFiles(folder, below, files);
    } else {
      files.push_back(below);
    }
  }
}

// Whether a person's file is to become the stock's. `before` is its sum when it was brought, nothing for one
// that never was. Empty is what a power cut may have left.
bool IsToBeBrought(TextView own, uint64_t stockSum, std::optional<uint64_t> before) {
  const std::optional<int64_t> length = platform::FileLength(own);
  if (!length) return !before;
  if (*length == 0) return true;
  if (!before || before == stockSum) return false;
  const std::optional<std::string> bytes = platform::ReadFile(own);
  return bytes && ContentSum(*bytes) == before;
}

}  // namespace

StockList TakeStockList(std::string_view text) {
  StockList list;
  size_t begin = 0;
  for (size_t end = 0; (end = text.find('\n', begin)) != std::string_view::npos; begin = end + 1) {
    const std::string line(text.substr(begin, end - begin));
    if (begin == 0) {
      list.version = line;
    } else if (line.size() > kSumDigits + 1) {
      list.sums[line.substr(kSumDigits + 1)] = std::strtoull(line.c_str(), nullptr, 16);
    }
  }
  return list;
}

std::string StockListBytes(const StockList& list) {
  std::string text = list.version + "\n";
  for (const auto& [path, sum] : list.sums) {
    std::array<char, kSumDigits + 1> digits{};
    std::snprintf(digits.data(), digits.size(), "%016llx", static_cast<unsigned long long>(sum));
    text.append(digits.data()).append(" ").append(path).append("\n");
  }
  return text;
}

uint64_t ContentSum(std::string_view bytes) {
  uint64_t sum = 0xCBF2'9CE4'8422'2325;
  for (const char byte : bytes) sum = (sum ^ static_cast<unsigned char>(byte)) * 0x100'0000'01B3;
  return sum;
}

DataPlace FindDataPlace(TextView program) {
  const Text stock = Join(GetFolder(program), u"share\\quillmarch");
  if (platform::IsFolder(Join(program, kDataFolder)) || !platform::IsFolder(Join(stock, kDataFolder))) {
    return {Text(program), {}};
  }
  const Text data = platform::PersonalDataFolder();
  if (data.empty()) return {stock, {}};
  return {Join(EnsureBackslash(data), u"quillmarch"), stock};
}

bool BringStock(TextView stock, TextView version, void (*begins)()) {
  const StockList before = TakeStockList(platform::ReadFile(DataPath(kListName)).value_or(""));
  StockList brought{platform::EncodeUtf8(version), {}};
  if (before.version == brought.version) return true;
  begins();
  bool whole = true;
  std::vector<Text> files;
  AddFiles(stock, u"", files);
  for (const Text& file : files) {
    const std::optional<std::string> bytes = platform::ReadFile(Join(stock, file));
    if (!bytes) {
      whole = false;
      continue;
    }
    const std::string name = platform::EncodeUtf8(file);
    const uint64_t sum = ContentSum(*bytes);
    const auto known = before.sums.find(name);
    const Text own = Join(AppPath, file);
    if (IsToBeBrought(own, sum, known == before.sums.end() ? std::nullopt : std::optional(known->second))) {
      MakeFolders(GetFolder(own));
      whole = platform::WriteFileLater(own, *bytes) && whole;
    }
    brought.sums[name] = sum;
  }
  // The list promises what it names, so it goes to the disk last.
  platform::WaitForDisk(AppPath);
  return whole && platform::WriteFile(DataPath(kListName), StockListBytes(brought));
}

}  // namespace qlm
