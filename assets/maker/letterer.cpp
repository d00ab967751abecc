// The letterer: sets the text of a drawing in faces of whole pixels, so that letters are crisp and no font is
// needed.
#include <cstdio>
#include <filesystem>
#include <fstream>
#include <map>
#include <sstream>
#include <string>

#include "lettering.h"

namespace {

std::string ContentOf(const std::filesystem::path& file) {
  std::ostringstream content;
  content << std::ifstream(file, std::ios::binary).rdbuf();
  return content.str();
}

int Complain(const std::string& file, const std::string& message) {
  std::fprintf(stderr, "letterer: %s: %s\n", file.c_str(), message.c_str());
  return 1;
}

}  // namespace

int main(int argc, char** argv) {
  if (argc < 3) {
    std::fputs("usage: letterer IN.svg OUT.svg [FACE.txt...]\n", stderr);
    return 2;
  }
  assetmaker::LetteringError error;
  std::map<std::string, assetmaker::Face> faces;
  for (int i = 3; i < argc; ++i) {
    const std::filesystem::path file = argv[i];
    const std::optional<assetmaker::Face> face = assetmaker::ReadFace(ContentOf(file), error);
    if (!face) return Complain(argv[i], error.message);
    faces[file.stem().string()] = *face;
  }
  const std::optional<std::string> drawing = assetmaker::SetLettering(ContentOf(argv[1]), faces, error);
  if (!drawing) return Complain(argv[1], error.message);
  std::ofstream out(argv[2], std::ios::binary);
  out << *drawing;
  out.close();
  return out ? 0 : Complain(argv[2], "cannot be written");
}
