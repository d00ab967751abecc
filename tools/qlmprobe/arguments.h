// The words of a command, taken out one option after the other.
#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace probe {

// What a command leaves with.
constexpr int kDone = 0;
constexpr int kRefused = 1;  // the file cannot be read or is refused
constexpr int kWrongUsage = 2;

// A whole number that fills the word.
std::optional<int64_t> ToNumber(const std::string& word);

// Each call takes an option out of the words. The first thing that is wrong is kept and told by Good().
class Arguments {
 public:
  explicit Arguments(std::vector<std::string> words) : words_(std::move(words)) {}

  bool Flag(std::string_view option);
  // Every value of an option that may be repeated.
  std::vector<std::string> Values(std::string_view option);
  std::optional<std::string> Value(std::string_view option);
  // A whole number from `least` to `most`.
  std::optional<int64_t> Number(std::string_view option, int64_t least, int64_t most);
  // An option that this version does not take.
  void Refuse(std::string_view option);

  // What is left, once all options are taken: `least` to `most` files.
  std::vector<std::string> Files(size_t least, size_t most);

  void Fail(std::string why);
  // False when something was wrong: it then stands on standard error.
  bool Good() const;

 private:
  std::vector<std::string> words_;
  std::string wrong_;
};

}  // namespace probe
