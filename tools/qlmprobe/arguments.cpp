// Looking up of options.
#include "tools/qlmprobe/arguments.h"

#include <cstdio>

namespace probe {

std::vector<std::string> Arguments::Values(std::string_view option) const {
  const auto found = words_.values.find(option);
  return found == words_.values.end() ? std::vector<std::string>() : found->second;
}

std::optional<std::string> Arguments::Value(std::string_view option) const {
  const std::vector<std::string> values = Values(option);
  if (values.empty()) return std::nullopt;
  return values.front();
}

std::optional<int64_t> Arguments::Number(std::string_view option) const {
  const std::optional<std::string> value = Value(option);
  return value ? platform::ToNumber(*value) : std::nullopt;
}

void Arguments::Fail(std::string why) {
  if (words_.wrong.empty()) words_.wrong = std::move(why);
}

bool Arguments::Good() const {
  if (!words_.wrong.empty())
    std::fprintf(stderr, "qlmprobe: %s; see qlmprobe --help\n", words_.wrong.c_str());
  return words_.wrong.empty();
}

}  // namespace probe
