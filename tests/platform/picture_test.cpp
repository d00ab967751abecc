// Picture files: every kind of BMP, the compressed kinds, and files that lie about themselves.
#include "platform/picture.h"

#include <SDL.h>
#include <gtest/gtest.h>
#include <unistd.h>

#include <algorithm>
#include <chrono>
#include <filesystem>
#include <fstream>
#include <iterator>
#include <vector>

#include "tools/media_files/bmp.h"

namespace platform {
namespace {

using Bytes = std::vector<unsigned char>;
using Rows = std::vector<std::vector<Colour>>;

Rows Seen(const SurfacePtr& surface) {
  Rows rows;
  for (int32_t y = 0; surface && y < surface->Height(); ++y) {
    rows.emplace_back(surface->Row(y).begin(), surface->Row(y).end());
  }
  return rows;
}

void Put16(Bytes& bytes, uint32_t value) {
  bytes.push_back(static_cast<unsigned char>(value));
  bytes.push_back(static_cast<unsigned char>(value >> 8));
}
void Put32(Bytes& bytes, uint32_t value) {
  Put16(bytes, value);
  Put16(bytes, value >> 16);
}
void PutAll(Bytes& bytes, const Bytes& more) { bytes.insert(bytes.end(), more.begin(), more.end()); }

using Bmp = media::BmpFile;

Bytes FileOf(const Bmp& bmp) {
  const std::string bytes = bmp.Bytes();
  return {bytes.begin(), bytes.end()};
}

TEST(DecodeBmp, OneBit) {
  const SurfacePtr picture = DecodeBmp(FileOf({.width = 10,
                                               .height = 1,
                                               .bits = 1,
                                               .table = {0x000080, 0xFFFFFF},
                                               .data = {0b10100000, 0b01000000, 0, 0}}));
  EXPECT_EQ(Seen(picture), (Rows{{0xFFFFFF, 0x000080, 0xFFFFFF, 0x000080, 0x000080, 0x000080, 0x000080,
                                  0x000080, 0x000080, 0xFFFFFF}}));
}

TEST(DecodeBmp, FourBits) {
  const SurfacePtr picture = DecodeBmp(FileOf({.width = 3,
                                               .height = 2,
                                               .bits = 4,
                                               .table = {1, 2, 3, 4},
                                               .data = {0x32, 0x10, 0, 0, 0x01, 0x20, 0, 0},
                                               .coloursUsed = 4}));
  EXPECT_EQ(Seen(picture), (Rows{{1, 2, 3}, {4, 3, 2}}));
}

TEST(DecodeBmp, EightBitsAndIndicesBehindThePaletteAreBlack) {
  const SurfacePtr picture = DecodeBmp(FileOf({.width = 3,
                                               .height = 1,
                                               .bits = 8,
                                               .table = {0x010203, 0x040506},
                                               .data = {1, 0, 200, 0},
                                               .coloursUsed = 2}));
  EXPECT_EQ(Seen(picture), (Rows{{0x040506, 0x010203, 0}}));
}

TEST(DecodeBmp, SixteenBitsWithoutMasksHaveFiveToAChannel) {
  const SurfacePtr picture = DecodeBmp(FileOf(
      {.width = 4, .height = 1, .bits = 16, .data = {0x00, 0x7C, 0xE0, 0x03, 0x1F, 0x00, 0x10, 0x80}}));
  EXPECT_EQ(Seen(picture), (Rows{{0xFF0000, 0x00FF00, 0x0000FF, 0x000084}}));  // 16 * 255 / 31 = 131.6
}

TEST(DecodeBmp, SixteenBitsWithMasks) {
  const SurfacePtr picture = DecodeBmp(FileOf({.width = 2,
                                               .height = 1,
                                               .bits = 16,
                                               .compression = 3,
                                               .table = {0xF800, 0x07E0, 0x001F},
                                               .data = {0xE0, 0x07, 0x00, 0xF8}}));
  EXPECT_EQ(Seen(picture), (Rows{{0x00FF00, 0xFF0000}}));
}

TEST(DecodeBmp, TwentyFourBitsFromTheBottomUp) {
  const SurfacePtr picture = DecodeBmp(
      FileOf({.width = 1, .height = 2, .bits = 24, .data = {0x03, 0x02, 0x01, 0, 0x30, 0x20, 0x10, 0}}));
  EXPECT_EQ(Seen(picture), (Rows{{0x102030}, {0x010203}}));
}

TEST(DecodeBmp, NegativeHeightIsFromTheTopDown) {
  const SurfacePtr picture = DecodeBmp(
      FileOf({.width = 1, .height = -2, .bits = 24, .data = {0x03, 0x02, 0x01, 0, 0x30, 0x20, 0x10, 0}}));
  EXPECT_EQ(Seen(picture), (Rows{{0x010203}, {0x102030}}));
}

TEST(DecodeBmp, ThirtyTwoBitsPassOverTheFourthChannel) {
  const SurfacePtr picture = DecodeBmp(
      FileOf({.width = 2, .height = 1, .bits = 32, .data = {0x03, 0x02, 0x01, 0, 0x30, 0x20, 0x10, 0x80}}));
  EXPECT_EQ(Seen(picture), (Rows{{0x010203, 0x102030}}));
}

TEST(DecodeBmp, OddMasksDoNotStrayOutOfTheChannel) {
  const SurfacePtr picture = DecodeBmp(FileOf({.width = 1,
                                               .height = 1,
                                               .bits = 32,
                                               .compression = 3,
                                               .table = {0xFFFFFFFF, 0, 0x80000001},
                                               .data = {0xFF, 0xFF, 0xFF, 0xFF}}));
  EXPECT_EQ(Seen(picture), (Rows{{0xFF00FF}}));
}

TEST(DecodeBmp, RunLengthOfEightBits) {
  const SurfacePtr picture =
      DecodeBmp(FileOf({.width = 4,
                        .height = 3,
                        .bits = 8,
                        .compression = 1,
                        .table = {0xAA, 0xBB, 0xCC},
                        .data = {3, 1, 0, 0,               // three of 1, end of line
                                 0, 3, 0, 1, 2, 0, 0, 0,   // three literals, end of line
                                 0, 2, 1, 0, 2, 2, 0, 1},  // a step, two of 2, end
                        .coloursUsed = 3}));
  EXPECT_EQ(Seen(picture), (Rows{{0, 0xCC, 0xCC, 0}, {0xAA, 0xBB, 0xCC, 0}, {0xBB, 0xBB, 0xBB, 0}}));
}

TEST(DecodeBmp, RunLengthOfFourBits) {
  const SurfacePtr picture =
      DecodeBmp(FileOf({.width = 5,
                        .height = 2,
                        .bits = 4,
                        .compression = 2,
                        .table = {0xAA, 0xBB, 0xCC},
                        .data = {5, 0x12, 0, 0,              // 1 2 1 2 1
                                 0, 5, 0x01, 0x20, 0x10, 0,  // 0 1 2 0 1 and a byte to fill up
                                 0, 1},
                        .coloursUsed = 3}));
  EXPECT_EQ(Seen(picture), (Rows{{0xAA, 0xBB, 0xCC, 0xAA, 0xBB}, {0xBB, 0xCC, 0xBB, 0xCC, 0xBB}}));
}

TEST(DecodeBmp, RunsOverTheEdgesAreCut) {
  const SurfacePtr picture =
      DecodeBmp(FileOf({.width = 2,
                        .height = 1,
                        .bits = 8,
                        .compression = 1,
                        .table = {0xAA, 0xBB},
                        .data = {255, 1, 0, 2, 255, 0, 9, 0, 0, 0, 4, 0, 0, 2, 0, 200, 9, 1},
                        .coloursUsed = 2}));
  EXPECT_EQ(Seen(picture), (Rows{{0xBB, 0xBB}}));
}

TEST(DecodeBmp, RunsOfAFileThatEndsEarlyAreSeen) {
  Bmp bmp{.width = 2,
          .height = 2,
          .bits = 8,
          .compression = 1,
          .table = {0xAA, 0xBB},
          .data = {2, 1, 0, 0, 1, 1},  // two of 1, end of line, one of 1, and no end mark
          .coloursUsed = 2};
  EXPECT_EQ(Seen(DecodeBmp(FileOf(bmp))), (Rows{{0xBB, 0}, {0xBB, 0xBB}}));
  bmp.data = {2, 1, 0, 0, 0, 4, 1};  // cut within four literals
  EXPECT_EQ(Seen(DecodeBmp(FileOf(bmp))), (Rows{{0, 0}, {0xBB, 0xBB}}));
  bmp.data = {2, 1, 0};
  EXPECT_EQ(Seen(DecodeBmp(FileOf(bmp))), (Rows{{0, 0}, {0xBB, 0xBB}}));
}

TEST(DecodeBmp, OldShortHeader) {
  Bytes bytes{'B', 'M'};
  Put32(bytes, 0);
  Put32(bytes, 0);
  Put32(bytes, 26 + 6);
  Put32(bytes, 12);
  Put16(bytes, 2);
  Put16(bytes, 1);
  Put16(bytes, 1);
  Put16(bytes, 1);
  PutAll(bytes, {0x30, 0x20, 0x10, 0x03, 0x02, 0x01});  // two colours of three bytes
  PutAll(bytes, {0b01000000, 0, 0, 0});
  EXPECT_EQ(Seen(DecodeBmp(bytes)), (Rows{{0x102030, 0x010203}}));
}

TEST(DecodeBmp, MissingDataOffsetMeansBehindThePalette) {
  Bytes bytes =
      FileOf({.width = 1, .height = 1, .bits = 8, .table = {7, 8}, .data = {1, 0, 0, 0}, .coloursUsed = 2});
  bytes[10] = 0;
  EXPECT_EQ(Seen(DecodeBmp(bytes)), (Rows{{8}}));
}

TEST(DecodeBmp, PixelsThatTheFileDoesNotHoldStayBlack) {
  Bytes bytes =
      FileOf({.width = 2, .height = 2, .bits = 24, .data = {1, 0, 0, 2, 0, 0, 0, 0, 3, 0, 0, 4, 0, 0, 0, 0}});
  bytes.resize(bytes.size() - 4);  // the last pixel of the top row and the filling
  EXPECT_EQ(Seen(DecodeBmp(bytes)), (Rows{{3, 0}, {1, 2}}));
  bytes.resize(54);
  EXPECT_EQ(Seen(DecodeBmp(bytes)), (Rows{{0, 0}, {0, 0}}));
}

TEST(DecodeBmp, RefusesWhatIsNoPicture) {
  const Bytes whole = FileOf({.width = 1, .height = 1, .bits = 24, .data = {1, 2, 3, 0}});
  EXPECT_EQ(DecodeBmp({}), nullptr);
  EXPECT_EQ(DecodeBmp(Bytes{'B', 'M'}), nullptr);
  for (size_t size = 0; size < 54; ++size) {
    EXPECT_EQ(DecodeBmp(std::span(whole).first(size)), nullptr) << size;
  }
  Bytes other = whole;
  other[0] = 'X';
  EXPECT_EQ(DecodeBmp(other), nullptr);
}

TEST(DecodeBmp, RefusesUnknownKinds) {
  for (const uint32_t bits : {0U, 2U, 3U, 15U, 48U, 64U}) {
    EXPECT_EQ(DecodeBmp(FileOf({.width = 1, .height = 1, .bits = bits, .data = Bytes(64)})), nullptr) << bits;
  }
  EXPECT_EQ(DecodeBmp(FileOf({.width = 1, .height = 1, .bits = 4, .compression = 1, .data = Bytes(64)})),
            nullptr);
  EXPECT_EQ(DecodeBmp(FileOf({.width = 1, .height = 1, .bits = 8, .compression = 2, .data = Bytes(64)})),
            nullptr);
  EXPECT_EQ(DecodeBmp(FileOf({.width = 1, .height = 1, .bits = 24, .compression = 3, .data = Bytes(64)})),
            nullptr);
  EXPECT_EQ(DecodeBmp(FileOf({.width = 1, .height = 1, .bits = 24, .compression = 4, .data = Bytes(64)})),
            nullptr);
}

TEST(DecodeBmp, RefusesHostileSizesWithoutHoldingThem) {
  const size_t before = Surface::BytesHeld();
  for (const auto& [width, height] :
       std::initializer_list<std::pair<int32_t, int32_t>>{{0, 1},
                                                          {1, 0},
                                                          {-1, 1},
                                                          {16385, 1},
                                                          {1, 16385},
                                                          {1, INT32_MIN},
                                                          {INT32_MAX, INT32_MAX},
                                                          {4097, 4096}}) {
    EXPECT_EQ(DecodeBmp(FileOf({.width = width, .height = height, .bits = 24})), nullptr)
        << width << ' ' << height;
  }
  EXPECT_EQ(Surface::BytesHeld(), before);
}

TEST(DecodePicture, TakesBmpToo) {
  EXPECT_EQ(Seen(DecodePicture(FileOf({.width = 1, .height = 1, .bits = 24, .data = {3, 2, 1, 0}}))),
            (Rows{{0x010203}}));
}

TEST(DecodePicture, RefusesOtherBytes) {
  EXPECT_EQ(DecodePicture({}), nullptr);
  EXPECT_EQ(DecodePicture(Bytes{'h', 'e', 'l', 'l', 'o'}), nullptr);
}

// Two pixels: opaque (200, 100, 50) and the same at half opacity. Its compressed data are one stored block.
// Any PNG file, chunk by chunk.
class PngWriter {
 public:
  void Chunk(const char* name, const Bytes& content) {
    PutBig(bytes_, static_cast<uint32_t>(content.size()));
    Bytes named(name, name + 4);
    PutAll(named, content);
    PutAll(bytes_, named);
    PutBig(bytes_, Checksum(named));
  }
  // 8 bits a channel; colour type 6 has an opacity too.
  void Header(uint32_t width, uint32_t height) {
    Bytes head;
    PutBig(head, width);
    PutBig(head, height);
    PutAll(head, {8, 6, 0, 0, 0});
    Chunk("IHDR", head);
  }
  const Bytes& File() const { return bytes_; }

  static void PutBig(Bytes& bytes, uint32_t value) {
    for (int shift = 24; shift >= 0; shift -= 8) bytes.push_back(static_cast<unsigned char>(value >> shift));
  }

 private:
  static uint32_t Checksum(const Bytes& bytes) {
    uint32_t value = 0xFFFFFFFF;
    for (const unsigned char byte : bytes) {
      value ^= byte;
      for (int i = 0; i < 8; ++i) value = value >> 1 ^ ((value & 1) != 0 ? 0xEDB88320 : 0);
    }
    return ~value;
  }

  Bytes bytes_{0x89, 'P', 'N', 'G', '\r', '\n', 0x1A, '\n'};
};

// The pixels of a picture of 2 by 1, for a header that says so.
void PutTwoPixels(PngWriter& png) {
  const Bytes row{0, 200, 100, 50, 255, 200, 100, 50, 128};
  Bytes zlib{0x78, 0x01, 1, 9, 0, 0xF6, 0xFF};
  PutAll(zlib, row);
  uint32_t low = 1;
  uint32_t high = 0;
  for (const unsigned char byte : row) {
    low += byte;
    high += low;
  }
  PngWriter::PutBig(zlib, high << 16 | low);
  png.Chunk("IDAT", zlib);
  png.Chunk("IEND", {});
}

Bytes SmallPng(uint32_t width, uint32_t height) {
  PngWriter png;
  png.Header(width, height);
  PutTwoPixels(png);
  return png.File();
}

// Sees what the picture library asks of the heap.
class LibraryHeap {
 public:
  LibraryHeap() {
    SDL_GetMemoryFunctions(&malloc_, &calloc_, &realloc_, &free_);
    largest_ = 0;
    SDL_SetMemoryFunctions([](size_t size) { return malloc_(Noted(size)); },
                           [](size_t count, size_t size) {
                             return calloc_(count, Noted(count * size) / std::max<size_t>(count, 1));
                           },
                           [](void* memory, size_t size) { return realloc_(memory, Noted(size)); }, free_);
  }
  ~LibraryHeap() { SDL_SetMemoryFunctions(malloc_, calloc_, realloc_, free_); }
  LibraryHeap(const LibraryHeap&) = delete;
  LibraryHeap& operator=(const LibraryHeap&) = delete;

  // Bytes of the largest piece asked for.
  static size_t Largest() { return largest_; }

 private:
  static size_t Noted(size_t size) {
    largest_ = std::max(largest_, size);
    return size;
  }

  static inline SDL_malloc_func malloc_ = nullptr;
  static inline SDL_calloc_func calloc_ = nullptr;
  static inline SDL_realloc_func realloc_ = nullptr;
  static inline SDL_free_func free_ = nullptr;
  static inline size_t largest_ = 0;
};

constexpr size_t kLittle = 1 << 20;

TEST(DecodePicture, LaysTransparencyOverBlack) {
  // 200, 100 and 50 times 128 / 255 are 100.4, 50.2 and 25.1.
  EXPECT_EQ(Seen(DecodePicture(SmallPng(2, 1))), (Rows{{0xC86432, 0x643219}}));
}

TEST(DecodePicture, RefusesHostilePngSizes) {
  EXPECT_EQ(DecodePicture(SmallPng(0x7FFFFFFF, 0x7FFFFFFF)), nullptr);
  EXPECT_EQ(DecodePicture(SmallPng(4097, 4096)), nullptr);
  EXPECT_EQ(DecodePicture(SmallPng(0, 1)), nullptr);
}

TEST(DecodePicture, RefusesDamagedPng) {
  Bytes png = SmallPng(2, 1);
  png.resize(png.size() - 30);
  EXPECT_EQ(DecodePicture(png), nullptr);
}

TEST(DecodePicture, RefusesPngWhoseChunksRunPastTheFile) {
  Bytes png = SmallPng(2, 1);
  png[33] = 0x7E;  // the second chunk asks for 2 GB
  EXPECT_EQ(DecodePicture(png), nullptr);
  png = SmallPng(2, 1);
  png.resize(png.size() - 12);  // no end
  EXPECT_EQ(DecodePicture(png), nullptr);
}

// The bytes where a header would tell a small size belong to another chunk.
TEST(DecodePicture, RefusesPngWhoseHeaderIsNotItsFirstChunk) {
  PngWriter png;
  png.Chunk("quLm", {0, 0, 0, 2, 0, 0, 0, 1, 8, 6, 0, 0, 0});
  png.Header(30000, 30000);
  PutTwoPixels(png);
  const LibraryHeap heap;
  EXPECT_EQ(DecodePicture(png.File()), nullptr);
  EXPECT_LT(LibraryHeap::Largest(), kLittle);
}

// One pixel, palette black and orange, pixel value 1.
Bytes SmallGif(uint32_t screenWidth, uint32_t imageWidth) {
  Bytes gif{'G', 'I', 'F', '8', '9', 'a'};
  Put16(gif, screenWidth);
  Put16(gif, 1);
  PutAll(gif, {0x80, 0, 0, 0, 0, 0, 0xFF, 0x80, 0x10});
  PutAll(gif, {0x21, 0xFE, 3, 'h', 'i', '!', 0});  // a comment
  PutAll(gif, {0x2C, 0, 0, 0, 0});
  Put16(gif, imageWidth);
  Put16(gif, 1);
  PutAll(gif, {0, 2, 2, 0x4C, 0x01, 0, 0x3B});  // codes of 3 bits: clear, 1, end
  return gif;
}

TEST(DecodePicture, Gif) { EXPECT_EQ(Seen(DecodePicture(SmallGif(1, 1))), (Rows{{0xFF8010}})); }

TEST(DecodePicture, RefusesHostileGifSizes) {
  EXPECT_EQ(DecodePicture(SmallGif(65535, 1)), nullptr);
  EXPECT_EQ(DecodePicture(SmallGif(1, 65535)), nullptr);
  Bytes endless{'G', 'I', 'F', '8', '9', 'a', 1, 0, 1, 0, 0, 0, 0, 0x21, 0xFE, 200};
  EXPECT_EQ(DecodePicture(endless), nullptr);
}

// The start of a GIF whose colours 0 to 3 are black, orange, blue and white.
Bytes GifStart(uint32_t width, uint32_t height) {
  Bytes gif{'G', 'I', 'F', '8', '9', 'a'};
  Put16(gif, width);
  Put16(gif, height);
  PutAll(gif, {0x81, 0, 0, 0, 0, 0, 0xFF, 0x80, 0x10, 0, 0, 0xFF, 0xFF, 0xFF, 0xFF});
  return gif;
}

void PutImage(Bytes& gif, uint32_t width, uint32_t height, unsigned char flags, const Bytes& data) {
  PutAll(gif, {0x2C, 0, 0, 0, 0});
  Put16(gif, width);
  Put16(gif, height);
  gif.push_back(flags);
  PutAll(gif, data);
}

// Codes of 3 bits, lowest first: clear (4), then 1 2 3 1 with a fourth bit from the last one on, since 8
// codes are then made, and the end (5) in 4 bits: 100 001 010 011 0001 0101.
const Bytes kFourIndices = {2, 3, 0b10001100, 0b00010110, 0b00000101, 0};

TEST(DecodePicture, GifRowsComeInTheOrderOfTheFile) {
  Bytes gif = GifStart(2, 2);
  PutImage(gif, 2, 2, 0, kFourIndices);
  EXPECT_EQ(Seen(DecodePicture(gif)), (Rows{{0xFF8010, 0x0000FF}, {0xFFFFFF, 0xFF8010}}));
}

// Each eighth row from 0, each eighth from 4, each fourth from 2, each second from 1: 0, 2, 1, 3 of four
// rows.
TEST(DecodePicture, InterlacedGifRowsAreSortedIn) {
  Bytes gif = GifStart(1, 4);
  PutImage(gif, 1, 4, 0x40, kFourIndices);
  EXPECT_EQ(Seen(DecodePicture(gif)), (Rows{{0xFF8010}, {0xFFFFFF}, {0x0000FF}, {0xFF8010}}));
}

TEST(DecodePicture, AGifsTransparentColourIsBlack) {
  Bytes gif = GifStart(4, 1);
  PutAll(gif, {0x21, 0xF9, 4, 1, 0, 0, 2, 0});
  PutImage(gif, 4, 1, 0, kFourIndices);
  EXPECT_EQ(Seen(DecodePicture(gif)), (Rows{{0xFF8010, 0, 0xFFFFFF, 0xFF8010}}));
}

TEST(DecodePicture, AGifsImageMayHaveItsOwnColours) {
  Bytes gif = GifStart(4, 1);
  Bytes data = {1, 1, 1, 2, 2, 2, 3, 3, 3, 4, 4, 4};
  PutAll(data, kFourIndices);
  PutImage(gif, 4, 1, 0x81, data);
  EXPECT_EQ(Seen(DecodePicture(gif)), (Rows{{0x020202, 0x030303, 0x040404, 0x020202}}));
}

TEST(DecodePicture, AGifThatEndsEarlyShowsWhatIsThere) {
  Bytes gif = GifStart(4, 1);
  PutImage(gif, 4, 1, 0, {2, 1, 0b10001100});  // a block with clear, 1, and two bits of the next code
  EXPECT_EQ(Seen(DecodePicture(gif)), (Rows{{0xFF8010, 0, 0, 0}}));
}

// A code that is only being made: clear (4), 1, 6 which is 1 and 1 again, end: 100 001 110 101.
TEST(DecodePicture, AGifsCodeMayNameItself) {
  Bytes gif = GifStart(3, 1);
  PutImage(gif, 3, 1, 0, {2, 2, 0b10001100, 0b00001011, 0});
  EXPECT_EQ(Seen(DecodePicture(gif)), (Rows{{0xFF8010, 0xFF8010, 0xFF8010}}));
}

// An animation's later images are never looked at, also where the first has no pixels or none that can be
// read.
TEST(DecodePicture, AGifsLaterImagesTakeNothing) {
  for (const unsigned char codeSize : {2, 12, 255}) {
    Bytes gif = GifStart(1, 1);
    PutImage(gif, 1, 1, 0, {codeSize, 0});
    PutImage(gif, 60000, 60000, 0, kFourIndices);
    gif.push_back(0x3B);
    const LibraryHeap heap;
    const SurfacePtr seen = DecodePicture(gif);
    if (codeSize == 2) {
      EXPECT_EQ(Seen(seen), (Rows{{0}}));
    } else {
      EXPECT_EQ(seen, nullptr) << int{codeSize};  // no code is so wide
    }
    EXPECT_LT(LibraryHeap::Largest(), kLittle) << int{codeSize};
  }
  Bytes gif = GifStart(1, 1);
  PutImage(gif, 0, 5, 0, kFourIndices);
  PutImage(gif, 1, 1, 0, kFourIndices);
  EXPECT_EQ(DecodePicture(gif), nullptr);
}

TEST(DecodePicture, RefusesHostileJpegSizes) {
  const Bytes start{0xFF, 0xD8, 0xFF, 0xE0, 0, 4, 'q', 'm'};
  Bytes huge = start;
  PutAll(huge, {0xFF, 0xC0, 0, 11, 8, 0xFF, 0xFF, 0xFF, 0xFF, 1, 1, 0x11, 0});
  EXPECT_EQ(DecodePicture(huge), nullptr);
  EXPECT_EQ(DecodePicture(start), nullptr);
  EXPECT_EQ(DecodePicture(Bytes{0xFF, 0xD8, 0xFF, 0xFF, 0xFF, 0xFF, 0xFF, 0xFF, 0xFF, 0xFF, 0xFF, 0xFF}),
            nullptr);
}

TEST(SavePng, WritesWhatDecodesToTheSamePixels) {
  Surface picture(3, 2);
  picture.Fill({0, 0, 1, 1}, 0x123456);
  picture.Fill({1, 0, 3, 2}, 0xFFFEFD);
  const std::string path = testing::TempDir() + "picture_test_" + std::to_string(getpid()) + ".png";
  ASSERT_TRUE(SavePng(picture, path));
  std::ifstream file(path, std::ios::binary);
  const Bytes bytes{std::istreambuf_iterator<char>(file), std::istreambuf_iterator<char>()};
  EXPECT_EQ(Seen(DecodePicture(bytes)), (Rows{{0x123456, 0xFFFEFD, 0xFFFEFD}, {0, 0xFFFEFD, 0xFFFEFD}}));
  EXPECT_EQ(bytes[25], 2);  // colour without an alpha channel
  std::filesystem::remove(path);
}

TEST(SavePng, SaysWhenItCouldNotWrite) {
  EXPECT_FALSE(SavePng(Surface(1, 1), "/no/such/folder/picture.png"));
}

}  // namespace
}  // namespace platform
