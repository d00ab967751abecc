// Taking options out of a command's words.
#include "tools/qlmprobe/arguments.h"

#include <algorithm>
#include <charconv>
#include <cstdio>

namespace probe {

std::optional<int64_t> ToNumber(const std::string& word) {
  int64_t number = 0;
  const char* const end = word.data() + word.size();
  const auto result = std::from_chars(word.data(), end, number);
  if (result.ec != std::errc() || result.ptr != end) return std::nullopt;
  return number;
}

bool Arguments::Flag(std::string_view option) { return std::erase(words_, option) > 0; }

std::vector<std::string> Arguments::Values(std::string_view option) {
  std::vector<std::string> values;
  for (auto word = std::find(words_.begin(), words_.end(), option); word != words_.end();
       word = std::find(word, words_.end(), option)) {
    if (word + 1 == words_.end()) {
      Fail(std::string(option) + " wants a value behind it");
      words_.erase(word);
      break;
    }
    values.push_back(*(word + 1));
    word = words_.erase(word, word + 2);
  }
  return values;
}

std::optional<std::string> Arguments::Value(std::string_view option) {
  const std::vector<std::string> values = Values(option);
  if (values.size() > 1) Fail(std::string(option) + " is given more than once");
  if (values.empty()) return std::nullopt;
  return values.front();
}

std::optional<int64_t> Arguments::Number(std::string_view option, int64_t least, int64_t most) {
  const std::optional<std::string> value = Value(option);
  if (!value) return std::nullopt;
  const std::optional<int64_t> number = ToNumber(*value);
  if (number && *number >= least && *number <= most) return number;
  Fail(std::string(option) + " wants a whole number from " + std::to_string(least) + " to " +
       std::to_string(most));
  return std::nullopt;
}

void Arguments::Refuse(std::string_view option) {
  if (std::find(words_.begin(), words_.end(), option) == words_.end()) return;
  Fail(std::string(option) + " does not work in this version");
  Values(option);
}

std::vector<std::string> Arguments::Files(size_t least, size_t most) {
  for (const std::string& word : words_) {
    if (word.starts_with("--")) Fail("there is no option " + word + " for this command");
  }
  if (words_.size() < least) Fail("a file is missing");
  if (words_.size() > most) Fail("one file too many: " + words_.back());
  return words_;
}

void Arguments::Fail(std::string why) {
  if (wrong_.empty()) wrong_ = std::move(why);
}

bool Arguments::Good() const {
  if (!wrong_.empty()) std::fprintf(stderr, "qlmprobe: %s; see qlmprobe --help\n", wrong_.c_str());
  return wrong_.empty();
}

}  // namespace probe
