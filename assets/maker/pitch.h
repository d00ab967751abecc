// Notes by name, and their frequencies in equal temperament.
#pragma once

#include <optional>
#include <string>
#include <string_view>

namespace assetmaker {

// A key of the piano as MIDI numbers it: 69 is A4, 60 middle C.
using Pitch = int;
constexpr Pitch lowestPitch = 12, highestPitch = 131;  // C0 and B9, between which pitches have names

// "A4", "Bb5", "C#2"; nothing for anything else.
std::optional<Pitch> PitchNamed(std::string_view name);

// The pitch class (0 for C to 11 for B) at the start of a text, as in "Bbm7"; the text loses it. Nothing, and
// an unchanged text, when there is none.
std::optional<int> TakePitchClass(std::string_view& text);

// The name as file names hold it: "a4", "cs2" for a C sharp; flats are written as sharps.
std::string FileName(Pitch pitch);

// In Hz, A4 being 440.
double Frequency(Pitch pitch);

}  // namespace assetmaker
