// Words in texts. All ways in which a word may begin and go on are followed at once, so that no text takes
// longer than its length: bit n of a set stands for n units of the word that have been seen so far.
#include "base/finding.h"

#include <algorithm>
#include <array>
#include <cstdint>
#include <utility>

#include "platform/text.h"

namespace qlm {
namespace {

constexpr char16_t kFirstKana = u'ァ';
constexpr char16_t kLastKana = u'ヺ';
constexpr char16_t kLong = u'ー';
constexpr char16_t kDot = u'・';
constexpr char16_t kDoubling = u'ッ';

constexpr bool Between(char16_t c, char16_t first, char16_t last) { return c >= first && c <= last; }
constexpr bool IsKana(char16_t c) { return Between(c, kFirstKana, kLastKana); }
constexpr bool IsLatin(char16_t c) { return Between(c, u'a', u'z'); }
constexpr bool IsVowel(char16_t c) { return c == u'a' || c == u'i' || c == u'u' || c == u'e' || c == u'o'; }
constexpr bool IsConsonant(char16_t c) { return IsLatin(c) && !IsVowel(c); }

// Two Latin letters of which the first says that the consonant is doubled: "kk", and "tc" as in "matcha".
constexpr bool Doubles(char16_t first, char16_t second) {
  return second == first || (first == u't' && second == u'c');
}

// Folding.

// Half-width kana from U+FF66 on, and the signs in front of them from U+FF61 on.
constexpr char16_t kFirstHalf = 0xFF61;
constexpr char16_t kHalfVoice = 0xFF9E;
constexpr char16_t kHalfHalfVoice = 0xFF9F;
constexpr TextView kWideOfHalf =
    u"。「」、・ヲァィゥェォャュョッーアイウエオカキクケコサシスセソタチツテトナニヌネノハヒフヘホマミムメモ"
    u"ヤユヨラリルレロワン";
static_assert(kWideOfHalf.size() == kHalfVoice - kFirstHalf);

// The kana with a voice mark, or itself where it takes none. Voiced kana follow their plain ones.
char16_t Voiced(char16_t kana) {
  if (kana == u'ウ') return u'ヴ';
  const bool voices = TextView(u"カキクケコサシスセソタチツテトハヒフヘホ").find(kana) != TextView::npos;
  return voices ? static_cast<char16_t>(kana + 1) : kana;
}

char16_t HalfVoiced(char16_t kana) {
  const bool voices = TextView(u"ハヒフヘホ").find(kana) != TextView::npos;
  return voices ? static_cast<char16_t>(kana + 2) : kana;
}

constexpr bool IsVoiceMark(char16_t c) { return c == kHalfVoice || c == u'\u3099' || c == u'\u309B'; }
constexpr bool IsHalfVoiceMark(char16_t c) { return c == kHalfHalfVoice || c == u'\u309A' || c == u'\u309C'; }

char16_t Fold(char16_t c) {
  if (c < 0x80) return Between(c, u'A', u'Z') ? static_cast<char16_t>(c + 32) : c;
  if (Between(c, u'ぁ', u'ゖ')) return static_cast<char16_t>(c + (u'ァ' - u'ぁ'));
  if (Between(c, u'！', u'～')) return Fold(static_cast<char16_t>(c - (u'！' - u'!')));
  if (Between(c, kFirstHalf, static_cast<char16_t>(kHalfVoice - 1))) return kWideOfHalf[c - kFirstHalf];
  if (c == u'　') return u' ';
  // Kana and kanji have no case.
  if (Between(c, 0x3000, 0x9FFF)) return c;
  return platform::UpperCase(c);
}

// Spellings.

struct Spelling {
  TextView kana;  // one or two
  TextView latin;
};

// Of single kana, the usual one first.
constexpr Spelling kSingle[] = {
    {u"ァ", u"a xa la"},
    {u"ア", u"a"},
    {u"ィ", u"i xi li"},
    {u"イ", u"i yi"},
    {u"ゥ", u"u xu lu"},
    {u"ウ", u"u wu"},
    {u"ェ", u"e xe le"},
    {u"エ", u"e"},
    {u"ォ", u"o xo lo"},
    {u"オ", u"o"},
    {u"カ", u"ka ca"},
    {u"ガ", u"ga"},
    {u"キ", u"ki"},
    {u"ギ", u"gi"},
    {u"ク", u"ku cu qu"},
    {u"グ", u"gu"},
    {u"ケ", u"ke"},
    {u"ゲ", u"ge"},
    {u"コ", u"ko co"},
    {u"ゴ", u"go"},
    {u"サ", u"sa"},
    {u"ザ", u"za"},
    {u"シ", u"si shi ci"},
    {u"ジ", u"zi ji"},
    {u"ス", u"su"},
    {u"ズ", u"zu"},
    {u"セ", u"se ce"},
    {u"ゼ", u"ze"},
    {u"ソ", u"so"},
    {u"ゾ", u"zo"},
    {u"タ", u"ta"},
    {u"ダ", u"da"},
    {u"チ", u"ti chi"},
    {u"ヂ", u"di ji zi"},
    {u"ッ", u"xtu ltu xtsu ltsu"},
    {u"ツ", u"tu tsu"},
    {u"ヅ", u"du zu dzu"},
    {u"テ", u"te"},
    {u"デ", u"de"},
    {u"ト", u"to"},
    {u"ド", u"do"},
    {u"ナ", u"na"},
    {u"ニ", u"ni"},
    {u"ヌ", u"nu"},
    {u"ネ", u"ne"},
    {u"ノ", u"no"},
    {u"ハ", u"ha"},
    {u"バ", u"ba"},
    {u"パ", u"pa"},
    {u"ヒ", u"hi"},
    {u"ビ", u"bi"},
    {u"ピ", u"pi"},
    {u"フ", u"hu fu"},
    {u"ブ", u"bu"},
    {u"プ", u"pu"},
    {u"ヘ", u"he"},
    {u"ベ", u"be"},
    {u"ペ", u"pe"},
    {u"ホ", u"ho"},
    {u"ボ", u"bo"},
    {u"ポ", u"po"},
    {u"マ", u"ma"},
    {u"ミ", u"mi"},
    {u"ム", u"mu"},
    {u"メ", u"me"},
    {u"モ", u"mo"},
    {u"ャ", u"ya xya lya"},
    {u"ヤ", u"ya"},
    {u"ュ", u"yu xyu lyu"},
    {u"ユ", u"yu"},
    {u"ョ", u"yo xyo lyo"},
    {u"ヨ", u"yo"},
    {u"ラ", u"ra la"},
    {u"リ", u"ri li"},
    {u"ル", u"ru lu"},
    {u"レ", u"re le"},
    {u"ロ", u"ro lo"},
    {u"ヮ", u"wa xwa lwa"},
    {u"ワ", u"wa"},
    {u"ヰ", u"wi i"},
    {u"ヱ", u"we e"},
    {u"ヲ", u"wo o"},
    {u"ン", u"n nn n' m"},
    {u"ヴ", u"vu"},
    {u"ヵ", u"ka xka"},
    {u"ヶ", u"ke ga ka xke"},
};

// What a kana begins with in front of small ones, each of which adds its vowel.
struct Stem {
  char16_t kana;
  TextView smalls;
  TextView latin;
};
constexpr Stem kStems[] = {
    {u'キ', u"ャュョ", u"ky"},         {u'ギ', u"ャュョ", u"gy"},
    {u'シ', u"ャュェョ", u"sy sh"},    {u'ジ', u"ャュェョ", u"zy j jy"},
    {u'チ', u"ャュェョ", u"ty ch cy"}, {u'ヂ', u"ャュョ", u"dy j zy"},
    {u'ニ', u"ャュョ", u"ny"},         {u'ヒ', u"ャュョ", u"hy"},
    {u'ビ', u"ャュョ", u"by"},         {u'ピ', u"ャュョ", u"py"},
    {u'ミ', u"ャュョ", u"my"},         {u'リ', u"ャュョ", u"ry ly"},
    {u'フ', u"ァィェォ", u"f"},        {u'ヴ', u"ァィェォ", u"v"},
    {u'ツ', u"ァィェォ", u"ts"},       {u'ウ', u"ィェォ", u"w"},
    {u'ク', u"ァィェォ", u"kw qu q"},  {u'テ', u"ィ", u"t th"},
    {u'デ', u"ィ", u"d dh"},           {u'ト', u"ゥ", u"t tw"},
    {u'ド', u"ゥ", u"d dw"},           {u'フ', u"ャュョ", u"fy"},
    {u'ヴ', u"ャュョ", u"vy"},         {u'テ', u"ュ", u"ty th"},
    {u'デ', u"ュ", u"dy dh"},          {u'イ', u"ェ", u"y"},
    {u'グ', u"ァィェォ", u"gw"},
};

char16_t VowelOfSmall(char16_t small) {
  switch (small) {
    case u'ァ':
    case u'ャ': return u'a';
    case u'ィ': return u'i';
    case u'ゥ':
    case u'ュ': return u'u';
    case u'ェ': return u'e';
    default: return u'o';
  }
}

// One way to write one or two kana in Latin letters.
struct Way {
  char16_t second = 0;  // the small kana behind the first one; 0 for none
  Text latin;
};

class Ways {
 public:
  Ways() {
    for (const Spelling& single : kSingle) {
      for (const Text& latin : Split(single.latin, u" ")) Of(single.kana[0]).push_back({0, latin});
    }
    for (const Stem& stem : kStems) {
      for (const Text& latin : Split(stem.latin, u" ")) {
        for (const char16_t small : stem.smalls) {
          Of(stem.kana).push_back({small, latin + VowelOfSmall(small)});
        }
      }
    }
  }

  // Of the kana with which a text begins.
  const std::vector<Way>& Of(char16_t kana) const { return ways_[static_cast<size_t>(kana - kFirstKana)]; }

 private:
  std::vector<Way>& Of(char16_t kana) { return ways_[static_cast<size_t>(kana - kFirstKana)]; }

  std::array<std::vector<Way>, kLastKana - kFirstKana + 1> ways_;
};

const Ways& AllWays() {
  static const Ways ways;
  return ways;
}

// Kana that a way takes from a text that begins with its first one; 0 where its second one does not follow.
size_t KanaOf(const Way& way, TextView text) {
  if (way.second == 0) return 1;
  return text.size() > 1 && text[1] == way.second ? 2 : 0;
}

// Units up to the end of the kana; all others may begin a word only as they are.
constexpr size_t kFirstUnits = kLastKana + 1;

// Looking.

// The sets of the next places of the text. No step takes more units of it than the longest spelling has.
constexpr size_t kLongestStep = 4;
using Sets = std::array<uint64_t, kLongestStep + 1>;

// Whether a word whose rest is still to be seen has been found behind this unit. Latin letters seldom tell of
// a long vowel.
bool IsFound(TextView rest, char16_t before) {
  return rest.empty() || (IsLatin(before) && rest.find_first_not_of(kLong) == TextView::npos);
}

// All that may follow where `at` units of the word have been seen and the text goes on as `text`.
class Steps {
 public:
  Steps(TextView word, TextView text, size_t place, Sets& sets)
      : word_(word), before_(text.substr(0, place)), text_(text.substr(place)), sets_(sets) {}

  // True where the word is at its end, or the letters that it still has begin a spelling of the text.
  bool From(size_t at) {
    const TextView rest = word_.substr(at);
    if (at > 0 && IsFound(rest, before_.back())) return true;
    const char16_t c = text_[0];
    if (c == rest[0]) To(1, at + 1);
    if (IsLatin(rest[0]) && IsKana(c) && SpellText(rest, at)) return true;
    if (IsKana(rest[0]) && IsLatin(c)) SpellWord(rest, at);
    if (at > 0) PassSigns(rest, at);
    return false;
  }

 private:
  void To(size_t units, size_t seen) { sets_[units] |= uint64_t{1} << seen; }

  bool SpellText(TextView rest, size_t at) {
    for (const Way& way : AllWays().Of(text_[0])) {
      const size_t kana = KanaOf(way, text_);
      if (kana == 0) continue;
      if (rest.starts_with(way.latin)) {
        To(kana, at + way.latin.size());
      } else if (TextView(way.latin).starts_with(rest)) {
        return true;
      }
    }
    if (text_[0] == kDoubling) DoubleInText(rest, at);
    return false;
  }

  // The first of two consonants alike, or that which the word ends with for now.
  void DoubleInText(TextView rest, size_t at) {
    if (!IsConsonant(rest[0])) return;
    if (rest.size() == 1) return To(1, at);
    if (Doubles(rest[0], rest[1])) To(1, at + 1);
  }

  void SpellWord(TextView rest, size_t at) {
    for (const Way& way : AllWays().Of(rest[0])) {
      const size_t kana = KanaOf(way, rest);
      if (kana != 0 && text_.starts_with(way.latin)) To(way.latin.size(), at + kana);
    }
    if (rest[0] == kDoubling && text_.size() > 1 && IsConsonant(text_[0]) && Doubles(text_[0], text_[1])) {
      To(1, at + 1);
    }
  }

  // Marks of long vowels: left out, written as a hyphen, or as the vowel once more. Dots are left out.
  void PassSigns(TextView rest, size_t at) {
    const char16_t c = text_[0];
    if (c == kLong || c == kDot) To(1, at);
    if (c == kLong && (rest[0] == u'-' || (IsVowel(rest[0]) && word_[at - 1] == rest[0]))) To(1, at + 1);
    if (rest[0] == kLong && IsLatin(c)) To(0, at + 1);
    if (rest[0] == kLong && (c == u'-' || (IsVowel(c) && before_.ends_with(c)))) To(1, at + 1);
  }

  TextView word_;
  TextView before_;
  TextView text_;
  Sets& sets_;
};

}  // namespace

Text FoldForFinding(TextView text) {
  Text folded;
  folded.reserve(text.size());
  for (const char16_t c : text) {
    if (IsVoiceMark(c)) {
      if (!folded.empty()) folded.back() = Voiced(folded.back());
    } else if (IsHalfVoiceMark(c)) {
      if (!folded.empty()) folded.back() = HalfVoiced(folded.back());
    } else {
      folded += Fold(c);
    }
  }
  return folded;
}

FoundWord::FoundWord(TextView word) : word_(word.substr(0, kLongestFoundWord)), firsts_(kFirstUnits) {
  if (word_.empty()) return;
  const char16_t first = word_[0];
  if (first < kFirstUnits) firsts_[first] = true;
  if (IsLatin(first)) {
    for (char16_t kana = kFirstKana; kana <= kLastKana; ++kana) {
      const auto& ways = AllWays().Of(kana);
      firsts_[kana] = kana == kDoubling
                          ? IsConsonant(first)
                          : std::ranges::any_of(ways, [&](const Way& way) { return way.latin[0] == first; });
    }
  } else if (IsKana(first)) {
    for (const Way& way : AllWays().Of(first)) firsts_[way.latin[0]] = true;
    if (first == kDoubling) std::fill(firsts_.begin() + u'a', firsts_.begin() + u'z' + 1, true);
  }
}

bool FoundWord::MayBegin(char16_t unit) const {
  return unit < kFirstUnits ? firsts_[unit] : unit == word_[0];
}

bool FoundWord::IsIn(TextView text) const {
  if (word_.empty()) return true;
  Sets sets{};
  for (size_t place = 0; place < text.size(); ++place) {
    uint64_t now = sets[0];
    if (MayBegin(text[place])) now |= 1;
    // Steps that take nothing of the text come back to its own set, with more of the word seen.
    sets[0] = now;
    for (size_t at = 0; at <= word_.size() && sets[0] >> at != 0; ++at) {
      if ((sets[0] >> at & 1) == 0) continue;
      if (Steps(word_, text, place, sets).From(at)) return true;
    }
    std::shift_left(sets.begin(), sets.end(), 1);
    sets.back() = 0;
  }
  for (size_t at = 1; at <= word_.size(); ++at) {
    if ((sets[0] >> at & 1) != 0 && IsFound(TextView(word_).substr(at), text.back())) return true;
  }
  return false;
}

std::vector<FoundWord> FoundWords(TextView typed) {
  std::vector<FoundWord> words;
  for (const Text& word : Split(FoldForFinding(typed), u" ")) {
    if (!word.empty()) words.emplace_back(word);
  }
  return words;
}

}  // namespace qlm
