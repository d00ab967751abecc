// The floors of docs/ARCHITECTURE.md hold: includes and named dependencies go down or stay in their folder,
// never up, to the side or in a circle, and packages are included behind platform/ and in forms/ only.
#include <gtest/gtest.h>

#include <algorithm>
#include <filesystem>
#include <fstream>
#include <map>
#include <regex>
#include <set>
#include <sstream>
#include <string>
#include <vector>

namespace {

namespace fs = std::filesystem;

const fs::path kTree = QLM_SOURCE_DIR;

std::string ReadFile(const fs::path& path) {
  std::ifstream in(path);
  std::stringstream text;
  text << in.rdbuf();
  return text.str();
}

// The floor of each folder, from the table's rows "| 8 | `play/`, `library/` | ...".
std::map<std::string, int> ReadFloors() {
  std::map<std::string, int> floors;
  std::istringstream lines(ReadFile(kTree / "docs/ARCHITECTURE.md"));
  const std::regex row(R"(^\| (\d+) \|([^|]*)\|)");
  const std::regex folder(R"(`(\w+)/`)");
  for (std::string line; std::getline(lines, line);) {
    std::smatch match;
    if (!std::regex_search(line, match, row)) continue;
    const std::string folders = match[2];
    for (std::sregex_iterator each(folders.begin(), folders.end(), folder), end; each != end; ++each) {
      floors[(*each)[1]] = std::stoi(match[1]);
    }
  }
  return floors;
}

struct SourceFile {
  std::string folder;
  std::vector<std::string> ours;      // as in "chart/reader.h"
  std::vector<std::string> packages;  // as in <SDL.h>
};

// By path below src/.
std::map<std::string, SourceFile> ReadSources() {
  std::map<std::string, SourceFile> files;
  const fs::path root = kTree / "src";
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
      } else if (match[2].str().ends_with(".h") || match[2].str().starts_with("Q")) {
        file.packages.push_back(match[2]);
      }
    }
  }
  return files;
}

// A library of the game, as a CMakeLists.txt below src/ names it.
struct Library {
  std::string folder;
  std::vector<std::string> uses;
};

std::map<std::string, Library> ReadLibraries() {
  std::map<std::string, Library> libraries;
  const std::regex command(R"(qlm_library\(([^)]*)\))");
  for (const auto& entry : fs::directory_iterator(kTree / "src")) {
    const std::string text = ReadFile(entry.path() / "CMakeLists.txt");
    for (std::sregex_iterator each(text.begin(), text.end(), command), end; each != end; ++each) {
      std::istringstream words((*each)[1]);
      std::string name;
      words >> name;
      Library& library = libraries[name];
      library.folder = entry.path().filename().string();
      bool uses = false;
      for (std::string word; words >> word;) {
        if (word == "SOURCES" || word == "USES" || word == "PRIVATE_USES") {
          uses = word != "SOURCES";
        } else if (uses) {
          library.uses.push_back(word);
        }
      }
    }
  }
  return libraries;
}

// Whether something of folder `from` may use something of folder `to`.
bool MayUse(const std::map<std::string, int>& floors, const std::string& from, const std::string& to) {
  return from == to || floors.at(to) < floors.at(from);
}

TEST(Floors, EveryFolderHasItsFloor) {
  const auto floors = ReadFloors();
  std::set<std::string> folders;
  for (const auto& entry : fs::directory_iterator(kTree / "src")) {
    folders.insert(entry.path().filename().string());
  }
  std::set<std::string> listed;
  for (const auto& [folder, floor] : floors) listed.insert(folder);
  EXPECT_EQ(listed, folders);
}

TEST(Floors, IncludesGoDownOrStayInTheirFolder) {
  const auto floors = ReadFloors();
  const auto files = ReadSources();
  ASSERT_GT(files.size(), 100U);
  for (const auto& [path, file] : files) {
    for (const std::string& include : file.ours) {
      ASSERT_TRUE(files.contains(include))
          << path << " includes " << include << ", which does not stand below src/";
      EXPECT_TRUE(MayUse(floors, file.folder, files.at(include).folder)) << path << " includes " << include;
    }
  }
}

TEST(Floors, LibrariesNameNoDependencyAboveThem) {
  const auto floors = ReadFloors();
  const auto libraries = ReadLibraries();
  ASSERT_GE(libraries.size(), floors.size());
  for (const auto& [name, library] : libraries) {
    for (const std::string& use : library.uses) {
      if (use.find("::") != std::string::npos) {
        // A package: seen by platform and forms alone.
        EXPECT_TRUE(library.folder == "platform" || library.folder == "forms") << name << " uses " << use;
        continue;
      }
      ASSERT_TRUE(libraries.contains(use)) << name << " uses " << use << ", which is no library of the game";
      EXPECT_TRUE(MayUse(floors, library.folder, libraries.at(use).folder)) << name << " uses " << use;
    }
  }
}

// An include that no named dependency covers would link only by chance.
TEST(Floors, IncludesAreCoveredByNamedDependencies) {
  const auto libraries = ReadLibraries();
  std::map<std::string, std::set<std::string>> reached;  // folders, by the folder that reaches them
  for (const auto& [name, library] : libraries) {
    std::vector<std::string> open = {name};
    std::set<std::string> seen;
    while (!open.empty()) {
      const std::string at = open.back();
      open.pop_back();
      if (!libraries.contains(at) || !seen.insert(at).second) continue;
      reached[library.folder].insert(libraries.at(at).folder);
      for (const std::string& use : libraries.at(at).uses) open.push_back(use);
    }
  }
  const auto files = ReadSources();
  for (const auto& [path, file] : files) {
    for (const std::string& include : file.ours) {
      EXPECT_TRUE(reached[file.folder].contains(files.at(include).folder)) << path << " includes " << include;
    }
  }
}

TEST(Floors, NoTwoFilesIncludeEachOtherInACircle) {
  const auto files = ReadSources();
  std::set<std::string> done;
  std::vector<std::string> way;
  const auto visit = [&](const auto& self, const std::string& path) -> void {
    ASSERT_EQ(std::count(way.begin(), way.end(), path), 0) << path << " includes itself by a detour";
    if (done.contains(path) || !files.contains(path)) return;
    way.push_back(path);
    for (const std::string& include : files.at(path).ours) self(self, include);
    way.pop_back();
    done.insert(path);
  };
  for (const auto& [path, file] : files) visit(visit, path);
}

TEST(Floors, EverySourceFileHasAHeaderOfItsOwnName) {
  const auto files = ReadSources();
  for (const auto& [path, file] : files) {
    if (!path.ends_with(".cpp") || path == "shell/main.cpp") continue;
    const std::string header = path.substr(0, path.size() - 4) + ".h";
    ASSERT_TRUE(files.contains(header)) << path;
    EXPECT_EQ(std::count(file.ours.begin(), file.ours.end(), header), 1) << path;
  }
}

TEST(Floors, PackagesStandBehindThePlatformAndInTheFormsOnly) {
  for (const auto& [path, file] : ReadSources()) {
    const bool mayUsePackages =
        (file.folder == "platform" && path.ends_with(".cpp")) || file.folder == "forms";
    if (!mayUsePackages) {
      EXPECT_TRUE(file.packages.empty()) << path << " includes <" << file.packages.front() << ">";
    }
  }
}

}  // namespace
