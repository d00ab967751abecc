// Tests of the splitting of titles.
#include "library/title_split.h"

#include <gtest/gtest.h>

#include "platform/text.h"

namespace qlm {
namespace {

struct Case {
  TextView title;
  TextView main;
  TextView sub;
};

TEST(TitleSplit, FindsTheSubTitle) {
  const Case cases[] = {
      {u"SONG [ANOTHER]", u"SONG", u"[ANOTHER]"},
      {u"SONG", u"SONG", u""},
      {u"", u"", u""},
      // Behind a blank, the mark need not be closed; the last one counts.
      {u"SONG -mix", u"SONG", u"-mix"},
      {u"A -B -C", u"A -B", u"-C"},
      {u"A  (b)", u"A ", u"(b)"},
      // Without a blank, the title must end with its partner; what stands in front keeps its blanks.
      {u"SONG(LONG)", u"SONG", u"(LONG)"},
      {u"SONG(LONG) ver", u"SONG(LONG) ver", u""},
      {u"羽ペンの行進（5鍵）", u"羽ペンの行進", u"（5鍵）"},
      {u"羽ペン ～夜～", u"羽ペン", u"～夜～"},
      {u"A-B-", u"A", u"-B-"},
      // The order of the marks is the order of their rank: a hyphen goes before a bracket.
      {u"A [B] -C", u"A [B]", u"-C"},
      {u"A -B [C]", u"A", u"-B [C]"},
      {u"A (B) <C>", u"A (B)", u"<C>"},
      // All sub-title: it stands as the main title, and nothing is left for the other.
      {u"[X]", u"[X]", u""},
      {u" [X]", u" [X]", u""},
      {u"-", u"-", u""},
      {u"-X-", u"-X-", u""},
      // An empty main part of one pair does not keep a later pair from being tried: the first hit ends it.
      {u"\"A\" x", u"\"A\" x", u""},
  };
  for (const Case& one : cases) {
    const SplitTitle split = SplitTitleOf(one.title);
    EXPECT_EQ(split.main, one.main) << platform::EncodeUtf8(one.title);
    EXPECT_EQ(split.sub, one.sub) << platform::EncodeUtf8(one.title);
  }
}

}  // namespace
}  // namespace qlm
