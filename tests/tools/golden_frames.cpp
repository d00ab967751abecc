// Reading, writing and comparing of stored pictures.
#include "tests/tools/golden_frames.h"

#include <gtest/gtest.h>

#include <cstdlib>
#include <filesystem>

#include "platform/picture.h"
#include "tests/support/whole_file.h"

namespace qlm {
namespace {

namespace fs = std::filesystem;
using platform::Colour;
using platform::Surface;
using platform::SurfacePtr;

const fs::path kStored = QLM_SOURCE_DIR "/tests/data/golden/frames";
const fs::path kKept = QLM_BINARY_DIR "/golden-output/frames";

SurfacePtr ReadPicture(const fs::path& file) {
  const std::string bytes = WholeFile(file);
  return platform::DecodePicture({reinterpret_cast<const unsigned char*>(bytes.data()), bytes.size()});
}

struct Difference {
  int64_t pixels = 0;
  int32_t x = 0;  // of the first
  int32_t y = 0;
};

// What differs becomes white in `marked`, the rest is dimmed.
Difference Compare(const Surface& made, const Surface& stored, Surface& marked) {
  Difference difference;
  for (int32_t y = 0; y < made.Height(); ++y) {
    for (int32_t x = 0; x < made.Width(); ++x) {
      Colour& mark = marked.Row(y)[static_cast<size_t>(x)];
      mark = made.Pixel(x, y) >> 2 & 0x3F3F3F;
      if (made.Pixel(x, y) == stored.Pixel(x, y)) continue;
      mark = 0xFFFFFF;
      if (difference.pixels++ == 0) {
        difference.x = x;
        difference.y = y;
      }
    }
  }
  return difference;
}

void Keep(const std::string& name, const std::string& made) {
  fs::create_directories(kKept);
  fs::copy_file(made, kKept / (name + ".png"), fs::copy_options::overwrite_existing);
}

}  // namespace

void CompareWithGoldenFrame(const std::string& name, const std::string& made) {
  const fs::path golden = kStored / (name + ".png");
  const SurfacePtr picture = ReadPicture(made);
  ASSERT_NE(picture, nullptr) << made;
  SurfacePtr stored = ReadPicture(golden);
  const auto isTheSame = [&] {
    if (!stored || stored->Bounds() != picture->Bounds()) return false;
    Surface marked(picture->Width(), picture->Height());
    return Compare(*picture, *stored, marked).pixels == 0;
  };
  if (std::getenv("QLM_WRITE_GOLDEN") != nullptr && !isTheSame()) {
    fs::create_directories(kStored);
    fs::copy_file(made, golden, fs::copy_options::overwrite_existing);
    stored = picture;
  }
  if (!stored || stored->Bounds() != picture->Bounds()) {
    Keep(name, made);
    FAIL() << golden << " is no picture of this size; compare " << kKept / (name + ".png");
  }
  Surface marked(picture->Width(), picture->Height());
  const Difference difference = Compare(*picture, *stored, marked);
  if (difference.pixels == 0) return;
  Keep(name, made);
  const fs::path marks = kKept / (name + "-differing.png");
  platform::SavePng(marked, marks.string());
  FAIL() << difference.pixels << " pixels differ, the first at " << difference.x << ',' << difference.y
         << "; look at " << marks << " and compare " << kKept / (name + ".png") << " with " << golden;
}

}  // namespace qlm
