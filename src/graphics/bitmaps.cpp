// Picture files to surfaces.
#include "graphics/bitmaps.h"

#include <algorithm>
#include <iterator>
#include <optional>
#include <span>
#include <string>
#include <utility>

#include "base/log.h"
#include "base/paths.h"
#include "platform/files.h"
#include "platform/picture.h"
#include "state/settings.h"

namespace qlm {
namespace {

// Free video memory from which a picture goes there: a screen of 16-bit pixels. It decides a log line and
// nothing else, since there is one kind of surface.
constexpr int64_t kRoomForAScreen = int64_t{640} * 480 * 2;
// No file of a picture that we hold is longer.
constexpr int64_t kLongestFile = int64_t{128} << 20;

using Decoder = SurfacePtr (*)(std::span<const unsigned char>);

SurfacePtr Load(TextView path, Decoder decode) {
  const std::optional<int64_t> length = platform::FileLength(path);
  if (!length || *length > kLongestFile) return {};
  const std::optional<std::string> file = platform::ReadFile(path);
  if (!file) return {};
  return decode({reinterpret_cast<const unsigned char*>(file->data()), file->size()});
}

void Finish(const SurfacePtr& surface, Rect& rect) {
  if (surface) surface->SetColourKey(0, 0);
  rect = surface ? surface->Bounds() : Rect{};
}

}  // namespace

int64_t FreeVideoMemory() {
  return std::max<int64_t>(videoMemoryTotal - static_cast<int64_t>(Surface::BytesHeld()), 0);
}

void FindWidePicture(Text& path) {
  constexpr TextView kKinds[] = {u".bmp", u".png", u".jpg", u".jpeg", u".gif"};
  if (!WideCharts) return;
  if (std::optional<Text> found = FindFileOfKinds(path, kKinds)) path = std::move(*found);
}

void FitWidePicture(SurfacePtr& surface, Rect& rect, int32_t most) {
  if (!WideCharts || !surface) return;
  const int64_t longer = std::max(surface->Width(), surface->Height());
  if (longer <= most) return;
  const auto fitted = [&](int32_t side) {
    return static_cast<int32_t>((int64_t{side} * most + longer / 2) / longer);
  };
  // A side of 0 becomes 1.
  const auto smaller = std::make_shared<Surface>(fitted(surface->Width()), fitted(surface->Height()));
  smaller->Stretch(smaller->Bounds(), *surface, surface->Bounds());
  surface = smaller;
  rect = surface->Bounds();
}

bool IsVideo(TextView path) {
  constexpr TextView kKinds[] = {u"AVI", u"FLV", u"M1V", u"M2V",  u"M4V", u"MKV", u"MOV",
                                 u"MP4", u"MPG", u"OGV", u"MPEG", u"WMV", u"WEBM"};
  return HasExtension(path) && std::ranges::find(kKinds, GetExtension(path)) != std::end(kKinds);
}

SurfacePtr ReadPicture(TextView path) { return Load(path, platform::DecodePicture); }

void LoadAnyBitmap(TextView path, SurfacePtr& surface, Rect& rect) {
  const Text extension = GetExtension(path);
  if (extension == u"BMP" || extension == u"RLE") {
    LoadBitmap(path, surface, rect);
  } else {
    LoadExBitmap(path, surface, rect);
  }
}

void LoadBitmap(TextView path, SurfacePtr& surface, Rect& rect) {
  DebugLog(Join(u"[LoadBitmap] : ", path));
  const int64_t free = FreeVideoMemory();
  DebugLog(Join(free < kRoomForAScreen ? u"> on SYSRAM (VRAM:" : u"> on VRAM (VRAM:", free, u")"));
  surface = Load(path, platform::DecodeBmp);
  Finish(surface, rect);
}

void LoadExBitmap(TextView path, SurfacePtr& surface, Rect& rect) {
  DebugLog(Join(u"[LoadExBitmap] : ", path));
  surface = ReadPicture(path);
  Finish(surface, rect);
}

}  // namespace qlm
