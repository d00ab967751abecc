// Includes go down the floors, never up, and never in a circle; packages are included behind platform/ only.
#include <gtest/gtest.h>

#include <filesystem>
#include <fstream>
#include <map>
#include <regex>
#include <set>
#include <string>
#include <vector>

namespace {

namespace fs = std::filesystem;

const std::map<std::string, int> kFloors = {{"platform", 0}, {"base", 1},     {"state", 2}, {"sound", 3},
                                            {"input", 3},    {"graphics", 4}, {"chart", 5}, {"play", 6},
                                            {"net", 7},      {"library", 8},  {"shell", 9}};

struct SourceFile {
  std::string folder;
  std::vector<std::string> ours;      // as in "chart/reader.h"
  std::vector<std::string> packages;  // as in <SDL2/SDL.h>
};

// By path below src/.
std::map<std::string, SourceFile> ReadSources() {
  std::map<std::string, SourceFile> files;
  const fs::path root = fs::path(QLM_SOURCE_DIR) / "src";
  const std::regex include("^#include ([<\"])([^>\"]+)[>\"]");
  for (const auto& entry : fs::recursive_directory_iterator(root)) {
    const std::string extension = entry.path().extension().string();
    if (extension != ".h" && extension != ".cpp") continue;
    const fs::path relative = fs::relative(entry.path(), root);
    SourceFile& file = files[relative.string()];
    file.folder = relative.begin()->string();
    std::ifstream in(entry.path());
    for (std::string line; std::getline(in, line);) {
      std::smatch match;
      if (!std::regex_search(line, match, include)) continue;
      if (match[1] == "\"") {
        file.ours.push_back(match[2]);
      } else if (match[2].str().ends_with(".h")) {
        file.packages.push_back(match[2]);
      }
    }
  }
  return files;
}

TEST(Floors, EveryFolderHasItsFloor) {
  for (const auto& [path, file] : ReadSources()) EXPECT_TRUE(kFloors.contains(file.folder)) << path;
}

TEST(Floors, IncludesNeverGoUp) {
  const auto files = ReadSources();
  ASSERT_GT(files.size(), 30U);
  // Leaves with nothing above them, which lower floors may use.
  const std::set<std::string> leaves = {"library/course_files.h", "net/messages.h"};
  for (const auto& [path, file] : files) {
    for (const std::string& include : file.ours) {
      ASSERT_TRUE(files.contains(include))
          << path << " includes " << include << ", which does not stand below src/";
      if (leaves.contains(include)) continue;
      EXPECT_LE(kFloors.at(files.at(include).folder), kFloors.at(file.folder))
          << path << " includes " << include;
    }
  }
}

TEST(Floors, NoTwoFilesIncludeEachOtherInACircle) {
  const auto files = ReadSources();
  std::set<std::string> done;
  std::vector<std::string> road;
  const auto visit = [&](const auto& self, const std::string& path) -> void {
    ASSERT_EQ(std::count(road.begin(), road.end(), path), 0) << path << " includes itself by a detour";
    if (done.contains(path) || !files.contains(path)) return;
    road.push_back(path);
    for (const std::string& include : files.at(path).ours) self(self, include);
    road.pop_back();
    done.insert(path);
  };
  for (const auto& [path, file] : files) visit(visit, path);
}

TEST(Floors, PackagesStandBehindThePlatformOnly) {
  for (const auto& [path, file] : ReadSources()) {
    const bool mayUsePackages = file.folder == "platform" && path.ends_with(".cpp");
    if (!mayUsePackages) {
      EXPECT_TRUE(file.packages.empty()) << path << " includes <" << file.packages.front() << ">";
    }
  }
}

}  // namespace
