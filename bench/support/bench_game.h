// The ground of a benchmark: a fresh game, without a log file, in a folder of its own.
#pragma once

#include <string>
#include <string_view>

#include "base/text.h"

namespace qlm {

class BenchGame {
 public:
  BenchGame();
  ~BenchGame();
  BenchGame(const BenchGame&) = delete;
  BenchGame& operator=(const BenchGame&) = delete;

  // Writes bytes below AppPath, making folders; gives the path in the game's form.
  Text WriteData(TextView name, std::string_view bytes) const;

 private:
  std::string folder_;
};

}  // namespace qlm
