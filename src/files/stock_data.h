// The stock data of an installed program, and how a person comes by a copy: songs, skins, pictures and sounds
// lie where only the system's administrator writes, and scores belong beside their charts.
#pragma once

#include <cstdint>
#include <map>
#include <string>
#include <string_view>

#include "base/text.h"

namespace qlm {

struct DataPlace {
  Text folder;  // holds \_qlmfiles and \songs: what AppPath becomes
  Text stock;   // what the folder is filled from; empty where the data stand beside the program
};
// For a program in this folder. Without data beside it and with stock data at ..\share\quillmarch the place
// is the person's own, or, for one without a home, the stock itself.
DataPlace FindDataPlace(TextView program);

// Brings the stock of this version to AppPath, unless it is there. What a person changed, added or deleted
// stays so: only files that are new in the stock, and those that are still as an older version brought them,
// are written. False when a file could not be read or written; the rest was brought, and the next start tries
// again. `begins` is called once before the first file is written.
bool BringStock(TextView stock, TextView version, void (*begins)());

// What was brought last.
struct StockList {
  std::string version;
  std::map<std::string, uint64_t> sums;  // by path below the stock: the sum of what was brought there
};
// The file stock.txt in any bytes: a line that is too short, or has no end, says nothing.
StockList TakeStockList(std::string_view text);
std::string StockListBytes(const StockList& list);

// By which a file is known again: FNV-1a, 64 bits.
uint64_t ContentSum(std::string_view bytes);

}  // namespace qlm
