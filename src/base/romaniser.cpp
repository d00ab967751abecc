// The letters of each kana.
#include "base/romaniser.h"

#include <cstddef>

namespace qlm {
namespace {

constexpr TextView kVowels = u"AIUEO";
// Of the groups of five kana from ｱ on; 0 for none.
constexpr char16_t kConsonants[] = {0, u'K', u'S', u'T', u'N', u'H', u'M'};

constexpr bool Between(char16_t c, char16_t first, char16_t last) { return c >= first && c <= last; }

// The letters so far, looked at from their end.
class Letters {
 public:
  void Add(TextView letters) { text_ += letters; }
  void Add(char16_t letter) {
    if (letter != 0) text_ += letter;
  }

  // The letter at this place, 1 being the last; 0 where there is none.
  char16_t FromEnd(size_t place) const { return place <= text_.size() ? text_[text_.size() - place] : u'\0'; }
  size_t Size() const { return text_.size(); }

  // For places that are there.
  void Put(size_t placeFromEnd, char16_t letter) { text_[text_.size() - placeFromEnd] = letter; }
  void ReplaceLast(size_t count, TextView by) { text_.replace(text_.size() - count, count, by); }

  Text Take() { return std::move(text_); }

 private:
  Text text_;
};

// The letter that ｯ doubles, by the character behind it.
char16_t DoubledConsonant(char16_t next) {
  if (Between(next, u'ｱ', u'ﾓ')) return kConsonants[(next - u'ｱ') / 5];
  if (Between(next, u'ﾔ', u'ﾖ')) return u'Y';
  if (Between(next, u'ﾗ', u'ﾛ')) return u'R';
  if (next == u'ﾜ' || next == u'ｦ') return u'W';
  return 0;
}

void VoiceS(Letters& letters) {
  const char16_t third = letters.FromEnd(3);
  if (third == u'T') return letters.ReplaceLast(3, u"DU");
  if (third == u'H') {
    if (letters.FromEnd(4) == u'C') letters.ReplaceLast(4, u"DU");
    return;
  }
  if (letters.FromEnd(1) == u'I') return letters.ReplaceLast(2, u"JI");
  letters.Put(2, u'Z');
}

void VoiceH(Letters& letters) {
  const char16_t third = letters.FromEnd(3);
  if (third == u'T' || third == u'C') return letters.ReplaceLast(3, u"DI");
  letters.Put(2, u'B');
}

void Voice(Letters& letters) {
  switch (letters.FromEnd(2)) {
    case u'K': return letters.Put(2, u'G');
    case u'S': return VoiceS(letters);
    case u'T': return letters.Put(2, u'D');
    case u'H':
    case u'F': return VoiceH(letters);
    default: return;
  }
}

void HalfVoice(Letters& letters) {
  if (letters.FromEnd(2) == u'H' || letters.FromEnd(2) == u'F') letters.Put(2, u'P');
}

void AddSmallY(Letters& letters, char16_t vowel) {
  const char16_t third = letters.FromEnd(3);
  switch (letters.FromEnd(2)) {
    case u'\0': break;
    case u'J': letters.ReplaceLast(1, u""); break;
    case u'T': letters.ReplaceLast(2, u"CH"); break;
    case u'S': letters.Put(1, u'H'); break;
    case u'H':
      if (third == u'C' || third == u'D') {
        letters.ReplaceLast(1, u"");
      } else {
        letters.Put(1, u'Y');
      }
      break;
    default: letters.Put(1, u'Y');
  }
  letters.Add(vowel);
}

// Signs and the kana that have letters of their own; nothing for others.
TextView LettersOfItsOwn(char16_t c) {
  switch (c) {
    case u'ｰ': return u"-";
    case u'｢':
    case u'『':
    case u'【':
    case u'≪':
    case u'〈':
    case u'《': return u"[";
    case u'｣':
    case u'』':
    case u'】':
    case u'≫':
    case u'〉':
    case u'》': return u"]";
    case u'･': return u".";
    case u'､': return u",";
    case u'｡': return u".";
    // Quirk: a small vowel is an H, so that ﾌｧ reads FUH.
    case u'ｧ':
    case u'ｨ':
    case u'ｩ':
    case u'ｪ':
    case u'ｫ': return u"H";
    case u'ﾁ': return u"CHI";
    case u'ﾂ': return u"TSU";
    case u'ﾌ': return u"FU";
    case u'ﾔ': return u"YA";
    case u'ﾕ': return u"YU";
    case u'ﾖ': return u"YO";
    case u'ﾜ': return u"WA";
    case u'ﾝ': return u"N";
    case u'ｦ': return u"WO";
    default: return {};
  }
}

void AddCharacter(Letters& letters, char16_t c) {
  if (const TextView own = LettersOfItsOwn(c); !own.empty()) return letters.Add(own);
  if (Between(c, u'ｱ', u'ﾓ')) {
    letters.Add(kConsonants[(c - u'ｱ') / 5]);
    letters.Add(kVowels[(c - u'ｱ') % 5]);
  } else if (Between(c, u'ﾗ', u'ﾛ')) {
    letters.Add(u'R');
    letters.Add(kVowels[c - u'ﾗ']);
  } else {
    letters.Add(TextView(&c, 1));
  }
}

}  // namespace

Text Romanise(TextView narrow) {
  Letters letters;
  for (size_t i = 0; i < narrow.size(); ++i) {
    switch (narrow[i]) {
      case u'ｯ': letters.Add(DoubledConsonant(i + 1 < narrow.size() ? narrow[i + 1] : u'\0')); break;
      case u'ﾞ': Voice(letters); break;
      case u'ﾟ': HalfVoice(letters); break;
      case u'ｬ': AddSmallY(letters, u'A'); break;
      case u'ｭ': AddSmallY(letters, u'U'); break;
      case u'ｮ': AddSmallY(letters, u'O'); break;
      default: AddCharacter(letters, narrow[i]);
    }
  }
  return letters.Take();
}

}  // namespace qlm
