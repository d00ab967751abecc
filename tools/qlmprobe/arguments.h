// The words of a command, as its routine asks for them.
#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "platform/arguments.h"

namespace probe {

// What a command leaves with.
constexpr int kDone = 0;
constexpr int kRefused = 1;  // the file cannot be read or is refused, or the output cannot be written
constexpr int kWrongUsage = 2;

// The first thing that is wrong is kept and told by Good().
class Arguments {
 public:
  explicit Arguments(platform::Arguments words) : words_(std::move(words)) {}

  const std::string& Command() const { return words_.command; }
  bool Flag(std::string_view option) const { return words_.values.contains(option); }
  // Every value of an option that may be repeated.
  std::vector<std::string> Values(std::string_view option) const;
  std::optional<std::string> Value(std::string_view option) const;
  // Of an option whose value is a whole number.
  std::optional<int64_t> Number(std::string_view option) const;
  const std::vector<std::string>& Files() const { return words_.rest; }

  void Fail(std::string why);
  // False when something was wrong: it then stands on standard error.
  bool Good() const;

 private:
  platform::Arguments words_;
};

}  // namespace probe
