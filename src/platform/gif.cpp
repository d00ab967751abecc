// The first image of a GIF, record by record, so that what is taken from the heap goes by its size alone.
#include "platform/gif.h"

#include <gif_lib.h>

#include <algorithm>
#include <array>
#include <cstring>
#include <memory>
#include <optional>
#include <vector>

#include "platform/picture_bytes.h"

namespace platform {
namespace {

struct CloseGif {
  void operator()(GifFileType* file) const { DGifCloseFile(file, nullptr); }
};
using Gif = std::unique_ptr<GifFileType, CloseGif>;

// What the library reads: `user` holds the bytes that are left.
int TakeBytes(GifFileType* file, GifByteType* to, int wanted) {
  auto& left = *static_cast<Bytes*>(file->UserData);
  const size_t count = std::min(left.size(), static_cast<size_t>(std::max(wanted, 0)));
  if (count > 0) std::memcpy(to, left.data(), count);
  left = left.subspan(count);
  return static_cast<int>(count);
}

// Goes through an extension. One that names a transparent colour stores its index.
bool PassExtension(GifFileType* gif, std::optional<size_t>& transparent) {
  int code = 0;
  GifByteType* block = nullptr;
  if (DGifGetExtension(gif, &code, &block) == GIF_ERROR) return false;
  while (block != nullptr) {
    GraphicsControlBlock control{};
    if (code == GRAPHICS_EXT_FUNC_CODE && DGifExtensionToGCB(block[0], block + 1, &control) == GIF_OK &&
        control.TransparentColor != NO_TRANSPARENT_COLOR) {
      transparent = static_cast<size_t>(control.TransparentColor);
    }
    if (DGifGetExtensionNext(gif, &block) == GIF_ERROR) return false;
  }
  return true;
}

// Goes to the first image and reads its description. False when there is none.
bool FindImage(GifFileType* gif, std::optional<size_t>& transparent) {
  GifRecordType record = UNDEFINED_RECORD_TYPE;
  while (DGifGetRecordType(gif, &record) == GIF_OK) {
    if (record == IMAGE_DESC_RECORD_TYPE) return DGifGetImageDesc(gif) == GIF_OK;
    if (record != EXTENSION_RECORD_TYPE || !PassExtension(gif, transparent)) return false;
  }
  return false;
}

using Palette = std::array<Colour, 256>;

Palette PaletteOf(const GifFileType& gif, std::optional<size_t> transparent) {
  Palette palette;
  palette.fill(Rgb(255, 255, 255));  // of what the file gives no colour
  const ColorMapObject* const map = gif.Image.ColorMap != nullptr ? gif.Image.ColorMap : gif.SColorMap;
  for (int i = 0; map != nullptr && i < std::min(map->ColorCount, 256); ++i) {
    const GifColorType& colour = map->Colors[i];
    palette[static_cast<size_t>(i)] = Rgb(colour.Red, colour.Green, colour.Blue);
  }
  if (transparent) palette[*transparent] = 0;
  return palette;
}

// The rows of an image in the order of the file.
std::vector<int32_t> RowOrder(int32_t height, bool interlaced) {
  struct Pass {
    int32_t first;
    int32_t step;
  };
  constexpr std::array<Pass, 4> kInterlaced{{{0, 8}, {4, 8}, {2, 4}, {1, 2}}};
  constexpr std::array<Pass, 1> kPlain{{{0, 1}}};
  std::vector<int32_t> rows;
  for (const Pass& pass : interlaced ? std::span<const Pass>(kInterlaced) : std::span<const Pass>(kPlain)) {
    for (int32_t row = pass.first; row < height; row += pass.step) rows.push_back(row);
  }
  return rows;
}

}  // namespace

SurfacePtr DecodeGif(std::span<const unsigned char> bytes) {
  Bytes left = bytes;
  int error = 0;
  const Gif gif(DGifOpen(&left, TakeBytes, &error));
  std::optional<size_t> transparent;
  if (!gif || !FindImage(gif.get(), transparent)) return {};
  const PictureSize size{gif->Image.Width, gif->Image.Height};
  if (!Holdable(size) ||
      !Holdable({std::max<int64_t>(gif->SWidth, size.width), std::max<int64_t>(gif->SHeight, size.height)})) {
    return {};
  }
  const Palette palette = PaletteOf(*gif, transparent);
  auto surface = std::make_shared<Surface>(gif->Image.Width, gif->Image.Height);
  surface->Fill(surface->Bounds(), palette[0]);
  std::vector<GifPixelType> indices(static_cast<size_t>(size.width));
  for (const int32_t y : RowOrder(surface->Height(), gif->Image.Interlace)) {
    std::ranges::fill(indices, GifPixelType{0});
    const int told = DGifGetLine(gif.get(), indices.data(), static_cast<int>(indices.size()));
    std::ranges::transform(indices, surface->Row(y).begin(),
                           [&](GifPixelType index) { return palette[index]; });
    if (told == GIF_ERROR) break;  // what came before the damage is there
  }
  return surface;
}

}  // namespace platform
