// Picture files: BMP by a decoder of our own, GIF by its library, PNG and JPEG by the picture library once
// their header has told a size that we are willing to hold.
#include "platform/picture.h"

#include <SDL.h>
#include <SDL_image.h>

#include <algorithm>
#include <array>
#include <bit>
#include <cstring>
#include <fstream>
#include <optional>
#include <string_view>
#include <vector>

#include "platform/gif.h"
#include "platform/heap.h"
#include "platform/picture_bytes.h"

namespace platform {
namespace {

// BMP. The library's own reader (SDL 2.26) gives the same pixels for every intact file, but no picture at all
// for one that is cut short anywhere, be it in the padding of its last row, for run-length data without an
// end mark, for an index behind a short palette, and for 16-bit masks other than its own formats'; and where
// the data's offset is 0 it shows the palette as pixels. Charts hold such files, and what is there of them is
// to be seen.

constexpr size_t kFileHeaderBytes = 14;
constexpr uint32_t kCoreHeaderBytes = 12;
constexpr uint32_t kInfoHeaderBytes = 40;

enum Compression : uint32_t {
  kPlain = 0,
  kRunLength8 = 1,
  kRunLength4 = 2,
  kBitFields = 3,
  kAlphaBitFields = 6
};

struct BmpHeader {
  PictureSize size;
  bool topDown = false;
  uint32_t bits = 0;
  uint32_t compression = kPlain;
  std::array<uint32_t, 3> masks{};    // red, green, blue, of 16 and 32 bits
  std::array<Colour, 256> palette{};  // of up to 8 bits; black behind the file's last entry
  size_t dataOffset = 0;

  bool RunLength() const { return compression == kRunLength8 || compression == kRunLength4; }
};

bool KnownKind(uint32_t bits, uint32_t compression) {
  switch (compression) {
    case kPlain: return bits == 1 || bits == 4 || bits == 8 || bits == 16 || bits == 24 || bits == 32;
    case kRunLength8: return bits == 8;
    case kRunLength4: return bits == 4;
    case kBitFields:
    case kAlphaBitFields: return bits == 16 || bits == 32;
    default: return false;
  }
}

std::optional<BmpHeader> ReadBmpHeader(Bytes bytes) {
  BmpHeader header;
  const uint32_t infoBytes = Little32(bytes, kFileHeaderBytes);
  const bool core = infoBytes == kCoreHeaderBytes;
  if (!StartsWith(bytes, "BM") || (!core && infoBytes < kInfoHeaderBytes) ||
      bytes.size() - kFileHeaderBytes < infoBytes) {
    return {};
  }
  const Bytes info = From(bytes, kFileHeaderBytes);
  uint32_t colours = 0;
  if (core) {
    header.size = {Little16(info, 4), Little16(info, 6)};
    header.bits = Little16(info, 10);
  } else {
    const auto height = static_cast<int32_t>(Little32(info, 8));
    header.topDown = height < 0;
    header.size = {static_cast<int32_t>(Little32(info, 4)), std::abs(static_cast<int64_t>(height))};
    header.bits = Little16(info, 14);
    header.compression = Little32(info, 16);
    colours = Little32(info, 32);
  }
  if (!KnownKind(header.bits, header.compression) || !Holdable(header.size)) {
    return {};
  }
  size_t paletteOffset = kFileHeaderBytes + infoBytes;
  if (header.compression == kPlain) {
    header.masks = header.bits == 16 ? std::array<uint32_t, 3>{0x7C00, 0x03E0, 0x001F}
                                     : std::array<uint32_t, 3>{0xFF0000, 0x00FF00, 0x0000FF};
  } else if (!header.RunLength()) {
    // The masks stand in the longer headers at the very place where they follow the shorter one.
    for (size_t i = 0; i < header.masks.size(); ++i) {
      header.masks[i] = Little32(info, kInfoHeaderBytes + 4 * i);
    }
    paletteOffset = std::max(paletteOffset, kFileHeaderBytes + kInfoHeaderBytes + 12);
  }
  const size_t entryBytes = core ? 3 : 4;
  if (header.bits <= 8) {
    const uint32_t most = 1U << header.bits;
    colours = colours == 0 || colours > most ? most : colours;
    for (size_t i = 0; i < colours; ++i) {
      header.palette[i] = Little32(bytes, paletteOffset + i * entryBytes) & 0xFFFFFF;
    }
  }
  header.dataOffset = Little32(bytes, 10);
  if (header.dataOffset < kFileHeaderBytes + infoBytes) {  // some writers leave it 0
    header.dataOffset = paletteOffset + (header.bits <= 8 ? colours * entryBytes : 0);
  }
  return header;
}

// One channel of a pixel with masks, spread over 0 to 255.
class Channel {
 public:
  explicit Channel(uint32_t mask)
      : mask_(mask), shift_(mask == 0 ? 0 : std::countr_zero(mask)), largest_(mask_ >> shift_) {}
  uint32_t Of(uint32_t pixel) const {
    const uint64_t value = (pixel & mask_) >> shift_;
    return largest_ == 0 ? 0 : static_cast<uint32_t>((value * 255 + largest_ / 2) / largest_);
  }

 private:
  uint32_t mask_;
  int shift_;
  uint64_t largest_;
};

// One row as the file stores it; `data` may hold fewer pixels than the row.
void ReadPlainRow(const BmpHeader& header, Bytes data, std::span<Colour> row) {
  const size_t count = std::min(row.size(), data.size() * 8 / header.bits);
  const unsigned char* from = data.data();
  switch (header.bits) {
    case 1:
    case 4: {
      const size_t perByte = 8 / header.bits;
      for (size_t i = 0; i < count; ++i) {
        const size_t shift = (perByte - 1 - i % perByte) * header.bits;
        row[i] = header.palette[from[i / perByte] >> shift & ((1U << header.bits) - 1)];
      }
      break;
    }
    case 8:
      for (size_t i = 0; i < count; ++i) {
        row[i] = header.palette[from[i]];
      }
      break;
    case 24:
      for (size_t i = 0; i < count; ++i, from += 3) {
        row[i] = Rgb(from[2], from[1], from[0]);
      }
      break;
    default: {
      const Channel red(header.masks[0]);
      const Channel green(header.masks[1]);
      const Channel blue(header.masks[2]);
      const size_t pixelBytes = header.bits / 8;
      for (size_t i = 0; i < count; ++i) {
        const uint32_t pixel = pixelBytes == 2 ? Little16(data, 2 * i) : Little32(data, 4 * i);
        row[i] = Rgb(red.Of(pixel), green.Of(pixel), blue.Of(pixel));
      }
    }
  }
}

// A row counted in the order of the file, which begins at the bottom of the picture.
std::span<Colour> FileRow(const BmpHeader& header, Surface& surface, int64_t index) {
  return surface.Row(static_cast<int32_t>(header.topDown ? index : surface.Height() - 1 - index));
}

void ReadPlain(const BmpHeader& header, Bytes data, Surface& surface) {
  const size_t stride = (static_cast<size_t>(header.size.width) * header.bits + 31) / 32 * 4;
  for (int64_t index = 0; index < surface.Height() && !data.empty(); ++index) {
    ReadPlainRow(header, data.first(std::min(stride, data.size())), FileRow(header, surface, index));
    data = From(data, stride);
  }
}

// Runs and literals of palette indices, two to a byte with 4 bits. What no run covers stays black.
void ReadRunLength(const BmpHeader& header, Bytes data, Surface& surface) {
  const bool halves = header.bits == 4;
  size_t x = 0;
  int64_t y = 0;
  size_t at = 0;
  const auto put = [&](uint32_t byte, size_t i) {
    const std::span<Colour> row = FileRow(header, surface, y);
    if (x < row.size()) {
      row[x] = header.palette[!halves ? byte : i % 2 == 0 ? byte >> 4 : byte & 15];
    }
    ++x;
  };
  while (at + 1 < data.size() && y < surface.Height()) {
    const uint32_t count = data[at];
    const uint32_t value = data[at + 1];
    at += 2;
    if (count > 0) {
      for (size_t i = 0; i < count; ++i) {
        put(value, i);
      }
    } else if (value == 0) {  // end of the line
      x = 0;
      ++y;
    } else if (value == 1) {  // end of the picture
      break;
    } else if (value == 2) {  // a step to the right and up
      x += Byte(data, at);
      y += Byte(data, at + 1);
      at += 2;
    } else {  // that many literals, filled up to an even count of bytes
      const size_t literalBytes = halves ? (value + 1) / 2 : value;
      if (at + literalBytes > data.size()) {
        break;
      }
      for (size_t i = 0; i < value; ++i) {
        put(data[at + (halves ? i / 2 : i)], i);
      }
      at += literalBytes + literalBytes % 2;
    }
  }
}

// The other kinds.

// Only when the header stands first, where the library looks for it too, and all chunks up to the last one
// lie in the file: the library takes a chunk's length on trust and goes on reading, though nothing is left,
// for as long as it says.
std::optional<PictureSize> PngSize(Bytes bytes) {
  constexpr size_t kSignatureBytes = 8;
  constexpr size_t kFrameBytes = 12;  // of a chunk: length, name, checksum
  if (!StartsWith(From(bytes, kSignatureBytes + 4), "IHDR")) return {};
  size_t at = kSignatureBytes;
  while (bytes.size() - at >= kFrameBytes) {
    const size_t length = Big32(bytes, at);
    if (length > bytes.size() - at - kFrameBytes) return {};
    if (StartsWith(From(bytes, at + 4), "IEND")) return PictureSize{Big32(bytes, 16), Big32(bytes, 20)};
    at += length + kFrameBytes;
  }
  return {};
}

// The first frame header among the segments.
std::optional<PictureSize> JpegSize(Bytes bytes) {
  size_t at = 2;
  while (at + 9 < bytes.size()) {
    if (bytes[at] != 0xFF) {
      ++at;  // bytes between segments are passed over, as decoders do
      continue;
    }
    const uint32_t marker = bytes[at + 1];
    const bool frame = marker >= 0xC0 && marker <= 0xCF && marker != 0xC4 && marker != 0xC8 && marker != 0xCC;
    const bool bare = marker == 0x01 || (marker >= 0xD0 && marker <= 0xD8);
    if (frame) {
      return PictureSize{Big16(bytes, at + 7), Big16(bytes, at + 5)};
    }
    if (marker == 0xFF) {
      ++at;
    } else if (marker == 0x00 || bare) {
      at += 2;
    } else {
      at += 2 + std::max<size_t>(Big16(bytes, at + 2), 2);
    }
  }
  return {};
}

struct SdlSurfaceRelease {
  void operator()(SDL_Surface* surface) const { SDL_FreeSurface(surface); }
};
using SdlSurface = std::unique_ptr<SDL_Surface, SdlSurfaceRelease>;

Colour OverBlack(uint32_t pixel) {
  const uint32_t opacity = pixel >> 24;
  const auto channel = [&](int shift) { return ((pixel >> shift & 255) * opacity + 127) / 255; };
  return Rgb(channel(16), channel(8), channel(0));
}

// By the library, once the size that the file declares is one that we are willing to hold. What it makes of
// the file is asked again.
SurfacePtr DecodeWithLibrary(Bytes bytes, const char* kind, const std::optional<PictureSize>& declared) {
  if (!declared || !Holdable(*declared)) {
    return {};
  }
  SDL_RWops* const stream = SDL_RWFromConstMem(bytes.data(), static_cast<int>(bytes.size()));
  const SdlSurface decoded(IMG_LoadTyped_RW(stream, 1, kind));
  if (!decoded || !Holdable({decoded->w, decoded->h})) {
    return {};
  }
  const SdlSurface pixels(SDL_ConvertSurfaceFormat(decoded.get(), SDL_PIXELFORMAT_ARGB8888, 0));
  if (!pixels) {
    return {};
  }
  auto surface = std::make_shared<Surface>(pixels->w, pixels->h);
  for (int32_t y = 0; y < surface->Height(); ++y) {
    const auto* const from = static_cast<const unsigned char*>(pixels->pixels) + ptrdiff_t{y} * pixels->pitch;
    std::span<Colour> row = surface->Row(y);
    std::memcpy(row.data(), from, row.size_bytes());
    std::ranges::transform(row, row.begin(), OverBlack);
  }
  return surface;
}

SurfacePtr ReadBmp(Bytes bytes) {
  const std::optional<BmpHeader> header = ReadBmpHeader(bytes);
  if (!header) {
    return {};
  }
  auto surface = std::make_shared<Surface>(static_cast<int32_t>(header->size.width),
                                           static_cast<int32_t>(header->size.height));
  const Bytes data = From(bytes, header->dataOffset);
  if (header->RunLength()) {
    ReadRunLength(*header, data, *surface);
  } else {
    ReadPlain(*header, data, *surface);
  }
  return surface;
}

SurfacePtr ReadPng(Bytes bytes) { return DecodeWithLibrary(bytes, "PNG", PngSize(bytes)); }
SurfacePtr ReadJpeg(Bytes bytes) { return DecodeWithLibrary(bytes, "JPG", JpegSize(bytes)); }

struct Kind {
  std::string_view start;
  SurfacePtr (*read)(Bytes);
};
constexpr std::array<Kind, 4> kKinds{{{"\x89PNG\r\n\x1A\n", ReadPng},
                                      {"\xFF\xD8\xFF", ReadJpeg},
                                      {"GIF87a", DecodeGif},
                                      {"GIF89a", DecodeGif}}};

// Null also when there is no memory for what the reader makes.
SurfacePtr Decode(SurfacePtr (*read)(Bytes), Bytes bytes) {
  SurfacePtr surface;
  WithinMemory([&] { surface = read(bytes); });
  return surface;
}

}  // namespace

SurfacePtr DecodeBmp(std::span<const unsigned char> bytes) { return Decode(ReadBmp, bytes); }

SurfacePtr DecodePicture(std::span<const unsigned char> bytes) {
  for (const Kind& kind : kKinds) {
    if (StartsWith(bytes, kind.start)) {
      return Decode(kind.read, bytes);
    }
  }
  return DecodeBmp(bytes);
}

bool SavePng(const Surface& surface, const std::string& path) {
  const SdlSurface pixels(
      SDL_CreateRGBSurfaceWithFormat(0, surface.Width(), surface.Height(), 24, SDL_PIXELFORMAT_RGB24));
  if (!pixels) {
    return false;
  }
  for (int32_t y = 0; y < surface.Height(); ++y) {
    auto* to = static_cast<unsigned char*>(pixels->pixels) + ptrdiff_t{y} * pixels->pitch;
    for (const Colour colour : surface.Row(y)) {
      *to++ = static_cast<unsigned char>(colour >> 16);
      *to++ = static_cast<unsigned char>(colour >> 8);
      *to++ = static_cast<unsigned char>(colour);
    }
  }
  // Packed in memory: the package does not tell when the disk is full. What cannot be packed grows a little.
  std::vector<unsigned char> packed(
      static_cast<size_t>(surface.Width()) * static_cast<size_t>(surface.Height()) * 4 + 65536);
  SDL_RWops* const memory = SDL_RWFromMem(packed.data(), static_cast<int>(packed.size()));
  if (memory == nullptr) return false;
  const bool done = IMG_SavePNG_RW(pixels.get(), memory, 0) == 0;
  const auto size = static_cast<std::streamsize>(SDL_RWtell(memory));
  SDL_RWclose(memory);
  std::ofstream file(path, std::ios::binary | std::ios::trunc);
  file.write(reinterpret_cast<const char*>(packed.data()), size);
  return done && file.flush().good();
}

}  // namespace platform
