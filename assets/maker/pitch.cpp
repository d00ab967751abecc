// Names to numbers and back.
#include "pitch.h"

#include <array>
#include <cmath>

namespace assetmaker {

std::optional<int> TakePitchClass(std::string_view& text) {
  constexpr std::string_view letters = "C D EF G A B";
  if (text.empty() || text[0] == ' ') return std::nullopt;
  const std::size_t place = letters.find(text[0]);
  if (place == std::string_view::npos) return std::nullopt;
  int pitchClass = static_cast<int>(place);
  text.remove_prefix(1);
  if (text.starts_with('#') || text.starts_with('b')) {
    pitchClass += text[0] == '#' ? 1 : 11;
    text.remove_prefix(1);
  }
  return pitchClass % 12;
}

std::optional<Pitch> PitchNamed(std::string_view name) {
  const std::optional<int> pitchClass = TakePitchClass(name);
  if (!pitchClass || name.size() != 1 || name[0] < '0' || name[0] > '9') return std::nullopt;
  return 12 * (name[0] - '0' + 1) + *pitchClass;
}

std::string FileName(Pitch pitch) {
  constexpr std::array<const char*, 12> names = {"c",  "cs", "d",  "ds", "e",  "f",
                                                 "fs", "g",  "gs", "a",  "as", "b"};
  return names[static_cast<std::size_t>(pitch % 12)] + std::to_string(pitch / 12 - 1);
}

double Frequency(Pitch pitch) { return 440 * std::exp2((pitch - 69) / 12.0); }

}  // namespace assetmaker
