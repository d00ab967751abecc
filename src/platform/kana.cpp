// Script and width of kana by ICU, readings by MeCab.
#include "platform/kana.h"

#include <mecab.h>
#include <unicode/utrans.h>

#include <algorithm>
#include <cstdint>
#include <memory>

#include "platform/text.h"

namespace platform {
namespace {

// Runs the rules of one ICU transliterator. A set in front of the first rule would hold for all of them:
// rules begin with one that does nothing.
class Transliterator {
 public:
  explicit Transliterator(std::u16string_view rules) {
    UErrorCode status = U_ZERO_ERROR;
    UParseError where;
    rules_.reset(utrans_openU(u"qlm", 3, UTRANS_FORWARD, rules.data(), static_cast<int32_t>(rules.size()),
                              &where, &status));
    if (U_FAILURE(status)) rules_.reset();
  }

  // The text as it is when it cannot be converted.
  std::u16string Convert(std::u16string_view text) const {
    if (rules_ == nullptr) return std::u16string(text);
    std::u16string out(text);
    out.resize(text.size() * kLongestGrowth);
    auto length = static_cast<int32_t>(text.size());
    int32_t limit = length;
    UErrorCode status = U_ZERO_ERROR;
    utrans_transUChars(rules_.get(), out.data(), &length, static_cast<int32_t>(out.size()), 0, &limit,
                       &status);
    if (U_FAILURE(status)) return std::u16string(text);
    out.resize(static_cast<size_t>(length));
    return out;
  }

 private:
  // A voiced kana is the only thing that grows: to two characters.
  static constexpr size_t kLongestGrowth = 2;

  struct Close {
    void operator()(UTransliterator* rules) const { utrans_close(rules); }
  };
  std::unique_ptr<UTransliterator, Close> rules_;
};

constexpr bool IsBlankOrAscii(char16_t unit) {
  return unit < 0x80 || unit == u'　' || (unit >= u'！' && unit <= u'～');
}

// ICU's half-width marks stand for combining ones, ours for those that stand alone.
std::u16string WidenKana(std::u16string_view text) {
  static const Transliterator rules(
      u":: Null; :: [\\uFF61-\\uFF9F] Halfwidth-Fullwidth; \\u3099 > \\u309B; \\u309A > \\u309C;");
  return rules.Convert(text);
}

// The dictionary that the system's configuration of MeCab names.
class Reader {
 public:
  Reader() : model_(MeCab::createModel("")) {
    if (model_ == nullptr) return;
    tagger_.reset(model_->createTagger());
    const MeCab::DictionaryInfo* const dictionary = model_->dictionary_info();
    // Dictionaries of other makes keep the reading elsewhere, or do not tell it.
    good_ = tagger_ != nullptr && dictionary != nullptr && IsUtf8Name(dictionary->charset) &&
            Read(u"漢字") == u"カンジ";
  }

  bool Good() const { return good_; }

  // A text without blanks and ASCII, of kLongestRun characters at most.
  std::u16string Read(std::u16string_view text) const {
    const std::unique_ptr<MeCab::Lattice> lattice(model_->createLattice());
    const std::string bytes = EncodeUtf8(text);
    if (lattice == nullptr) return std::u16string(text);
    lattice->set_sentence(bytes.data(), bytes.size());
    if (!tagger_->parse(lattice.get())) return std::u16string(text);
    std::string read;
    for (const MeCab::Node* node = lattice->bos_node(); node != nullptr; node = node->next) {
      if (node->stat == MECAB_BOS_NODE || node->stat == MECAB_EOS_NODE) continue;
      const std::string_view surface(node->surface, node->length);
      const std::string_view reading = Field(node->feature, kReadingField);
      const bool known = node->stat == MECAB_NOR_NODE && !reading.empty() && reading != "*";
      read += known ? reading : surface;
    }
    return DecodeUtf8(read);
  }

 private:
  static constexpr size_t kReadingField = 7;  // in kana, as it is written, not as it is pronounced

  static bool IsUtf8Name(std::string_view charset) {
    return charset == "UTF-8" || charset == "UTF8" || charset == "utf-8" || charset == "utf8";
  }

  static std::string_view Field(std::string_view features, size_t index) {
    for (; index > 0; --index) {
      const size_t comma = features.find(',');
      if (comma == std::string_view::npos) return {};
      features.remove_prefix(comma + 1);
    }
    return features.substr(0, features.find(','));
  }

  std::unique_ptr<MeCab::Model> model_;
  std::unique_ptr<MeCab::Tagger> tagger_;
  bool good_ = false;
};

// What MeCab weighs at a time grows with the length: a longer run is read in pieces.
constexpr size_t kLongestRun = 4096;

}  // namespace

std::u16string NarrowKatakana(std::u16string_view text) {
  static const Transliterator rules(
      u":: Null; :: [ぁ-ゖゝゞ] Hiragana-Katakana; :: [\\uFF01-\\uFF5E\\u3000ァ-ヺー。「」、・] "
      u"Fullwidth-Halfwidth;"
      u"\\u309B > \\uFF9E; \\u309C > \\uFF9F;");
  return rules.Convert(text);
}

std::optional<std::u16string> ReadKanji(std::u16string_view text) {
  static const Reader reader;
  if (!reader.Good()) return std::nullopt;
  const std::u16string wide = WidenKana(text);
  std::u16string read;
  for (auto run = wide.begin(); run != wide.end();) {
    const auto spelled = std::find_if_not(run, wide.end(), IsBlankOrAscii);
    read.append(run, spelled);
    run = std::find_if(spelled, wide.end(), IsBlankOrAscii);
    for (auto piece = spelled; piece != run;) {
      const auto end = piece + std::min<std::ptrdiff_t>(run - piece, kLongestRun);
      read += reader.Read({piece, end});
      piece = end;
    }
  }
  return read;
}

}  // namespace platform
