// docs/FILES.md tells every setting as the table of settings has it.
#include <gtest/gtest.h>

#include <array>
#include <fstream>
#include <sstream>
#include <string>
#include <vector>

#include "files/settings_keys.h"
#include "tests/support/game_test.h"

namespace qlm {
namespace {

std::string Document() {
  std::ifstream in(QLM_SOURCE_DIR "/docs/FILES.md");
  std::stringstream text;
  text << in.rdbuf();
  return text.str();
}

// A default as the document writes it.
Text Written(TextView value) {
  const TextView file = value.substr(value.rfind(u'\\') + 1);
  return file.empty() ? Text(u"empty") : Join(u"`", file, u"`");
}

Text FormOf(const SettingVariable& variable) {
  constexpr std::array<TextView, 7> kForms = {u"flag", u"whole", u"byte",  u"single",
                                              u"text", u"path",  u"0 or 1"};
  return Text(kForms[variable.index()]);
}

TEST(FilesDocument, TellsEverySettingInItsOrder) {
  const std::string document = Document();
  size_t place = document.find("## qlm_conf.ini");
  ASSERT_NE(place, std::string::npos);
  std::vector<SettingKey> rows(SettingKeys().begin(), SettingKeys().end());
  rows.insert(rows.end(), OwnSettingKeys().begin(), OwnSettingKeys().end());
  for (const SettingKey& row : rows) {
    const Text absent = row.absent.data() == nullptr ? Text(u"nothing") : Written(row.absent);
    const Text noFile = row.noFile ? Written(*row.noFile) : Text(u"stays");
    const std::string line = Utf8(Join(u"| ", row.section, u" | ", row.key, u" | ", FormOf(row.variable),
                                       u" | ", absent, u" | ", noFile, u" | "));
    const size_t found = document.find(line, place);
    EXPECT_NE(found, std::string::npos) << line;
    if (found != std::string::npos) place = found;
  }
}

}  // namespace
}  // namespace qlm
