// Finding words in texts as a person types them: letter case, width and the kind of kana do not count, and
// kana and Latin letters find each other.
#pragma once

#include <cstddef>
#include <vector>

#include "base/text.h"

namespace qlm {

// The form in which texts are compared: small letters, kana as katakana of full width with their marks put
// on, wide letters and signs narrow.
Text FoldForFinding(TextView text);

// Units of a word that count; what is behind them is passed over.
constexpr size_t kLongestFoundWord = 63;

// A word as it is looked for. Both texts are folded.
class FoundWord {
 public:
  explicit FoundWord(TextView word);

  // Whether the text holds the word. A word in Latin letters finds kana by any of their common spellings
  // ("si" and "shi", "n" and "nn"), also by the beginning of the last one; one in kana finds Latin letters
  // likewise. The mark of a long vowel may be left out.
  bool IsIn(TextView text) const;

 private:
  bool MayBegin(char16_t unit) const;

  Text word_;
  std::vector<bool> firsts_;  // by unit, up to the last kana: the word may begin with it
};

// The words of what was typed, folded; blanks part them.
std::vector<FoundWord> FoundWords(TextView typed);

}  // namespace qlm
