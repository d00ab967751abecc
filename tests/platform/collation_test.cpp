// The order of texts in a language.
#include "platform/collation.h"

#include <gtest/gtest.h>

#include <cstdlib>

namespace platform {
namespace {

TEST(Collation, CaseWidthAndKindOfKanaDoNotCount) {
  const Collation collation("ja_JP");
  EXPECT_EQ(collation.Key(u"Abc"), collation.Key(u"aBC"));
  EXPECT_EQ(collation.Key(u"ＡＢＣ"), collation.Key(u"abc"));
  EXPECT_EQ(collation.Key(u"かな"), collation.Key(u"カナ"));
}

TEST(Collation, AccentsCount) {
  const Collation collation("");
  EXPECT_LT(collation.Key(u"e"), collation.Key(u"é"));
  EXPECT_LT(collation.Key(u"é"), collation.Key(u"f"));
}

TEST(Collation, KanaComeInTheirOrderAndBehindLetters) {
  const Collation collation("ja_JP");
  EXPECT_LT(collation.Key(u"z"), collation.Key(u"あ"));
  EXPECT_LT(collation.Key(u"あき"), collation.Key(u"いぬ"));
}

TEST(Collation, LanguageIsTheEnvironments) {
  setenv("LC_ALL", "sv_SE.UTF-8", 1);
  EXPECT_LT(Collation().Key(u"z"), Collation().Key(u"ä"));
  setenv("LC_ALL", "C.UTF-8", 1);
  EXPECT_LT(Collation().Key(u"ä"), Collation().Key(u"z"));
  unsetenv("LC_ALL");
  setenv("LC_COLLATE", "sv_SE", 1);
  EXPECT_LT(Collation().Key(u"z"), Collation().Key(u"ä"));
  unsetenv("LC_COLLATE");
}

TEST(Collation, AnyLocaleAndAnyTextHaveAnOrder) {
  const Collation collation("no such@language!");
  EXPECT_LT(collation.Key(u"a"), collation.Key(u"b"));
  EXPECT_NE(collation.Key(std::u16string(100'000, u'漢')).size(), 0U);
  EXPECT_NO_FATAL_FAILURE(collation.Key(std::u16string(1, char16_t{0xD800})));
}

}  // namespace
}  // namespace platform
