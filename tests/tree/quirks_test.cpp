// Each oddity that is kept on purpose stands in docs/QUIRKS.md, with its place and its test.
#include <gtest/gtest.h>

#include <filesystem>
#include <map>
#include <regex>
#include <set>
#include <string>
#include <vector>

#include "tests/support/whole_file.h"

namespace {

namespace fs = std::filesystem;

const fs::path kRoot = QLM_SOURCE_DIR;

// Every piece of a text between single backquotes that fits.
std::vector<std::string> Quoted(const std::string& text, const std::string& pattern) {
  const std::regex quoted("`(" + pattern + ")`");
  std::vector<std::string> found;
  for (std::sregex_iterator at(text.begin(), text.end(), quoted), end; at != end; ++at) {
    found.push_back((*at)[1]);
  }
  return found;
}

// How often each file is named.
std::map<std::string, int> NamedFiles(const std::string& document) {
  std::map<std::string, int> named;
  for (const std::string& file : Quoted(document, "(?:src|tools)/[a-z0-9_/.]+")) ++named[file];
  return named;
}

std::set<std::string> TestsOfTheTree() {
  const std::regex declared(R"(TEST(?:_F|_P)?\((\w+),\s*(\w+)\))");
  std::set<std::string> tests;
  for (const auto& entry : fs::recursive_directory_iterator(kRoot / "tests")) {
    if (entry.path().extension() != ".cpp") continue;
    const std::string text = qlm::WholeFile(entry.path());
    for (std::sregex_iterator at(text.begin(), text.end(), declared), end; at != end; ++at) {
      tests.insert((*at)[1].str() + "." + (*at)[2].str());
    }
  }
  return tests;
}

TEST(Quirks, EachHasAnEntryThatNamesItsFile) {
  const std::map<std::string, int> named = NamedFiles(qlm::WholeFile(kRoot / "docs/QUIRKS.md"));
  const std::string mark = "Quirk:";
  int places = 0;
  for (const char* const folder : {"src", "tools"}) {
    for (const auto& entry : fs::recursive_directory_iterator(kRoot / folder)) {
      if (!entry.is_regular_file()) continue;
      const std::string text = qlm::WholeFile(entry.path());
      int quirks = 0;
      for (size_t at = text.find(mark); at != std::string::npos; at = text.find(mark, at + 1)) ++quirks;
      if (quirks == 0) continue;
      places += quirks;
      const std::string file = fs::relative(entry.path(), kRoot).string();
      const auto entries = named.find(file);
      EXPECT_EQ(entries == named.end() ? 0 : entries->second, quirks)
          << "entries of docs/QUIRKS.md that name " << file;
    }
  }
  EXPECT_GT(places, 30);
}

TEST(Quirks, EntriesNameFilesThatHaveOne) {
  for (const auto& [file, times] : NamedFiles(qlm::WholeFile(kRoot / "docs/QUIRKS.md"))) {
    EXPECT_NE(qlm::WholeFile(kRoot / file).find("Quirk:"), std::string::npos) << file;
  }
}

TEST(Quirks, EntriesNameTestsThatExist) {
  const std::vector<std::string> named =
      Quoted(qlm::WholeFile(kRoot / "docs/QUIRKS.md"), R"([A-Z]\w+\.[A-Z]\w+)");
  const std::set<std::string> tests = TestsOfTheTree();
  EXPECT_GT(named.size(), 30U);
  for (const std::string& test : named) EXPECT_TRUE(tests.contains(test)) << test;
}

}  // namespace
