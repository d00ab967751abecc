// The first image of a GIF: the blocks up to it, its colours, its compressed indices.
#include "platform/gif.h"

#include <algorithm>
#include <array>
#include <cstdint>
#include <optional>
#include <vector>

#include "platform/picture_bytes.h"

namespace platform {
namespace {

using Palette = std::array<Colour, 256>;

constexpr uint32_t kMostCodeBits = 12;
constexpr uint32_t kCodes = 1 << kMostCodeBits;

// Where an image stands in the file, and what came before it.
struct GifImage {
  PictureSize size;
  bool interlaced = false;
  Palette palette{};
  std::optional<uint32_t> transparent;  // index
  Bytes data;                           // from the code size on
};

// Reads the file's blocks forward.
class GifReader {
 public:
  explicit GifReader(Bytes bytes) : bytes_(bytes) {}

  std::optional<GifImage> FirstImage();

 private:
  void ReadPalette(uint32_t flags);
  void ReadExtension();
  std::optional<GifImage> ReadImage();

  static constexpr size_t kScreenBytes = 13;  // with the signature
  static constexpr size_t kImageBytes = 9;

  Bytes bytes_;
  size_t at_ = 0;
  Palette palette_{};
  std::optional<uint32_t> transparent_;
};

std::optional<GifImage> GifReader::FirstImage() {
  palette_.fill(Rgb(255, 255, 255));  // what no palette of the file gives
  at_ = kScreenBytes;
  ReadPalette(Byte(bytes_, 10));
  while (at_ < bytes_.size()) {
    switch (bytes_[at_++]) {
      case '!': ReadExtension(); break;
      case ',': return ReadImage();
      case ';': return {};
      default: break;  // bytes between blocks are passed over, as decoders do
    }
  }
  return {};
}

// The colour table that follows a field with these flags, if any.
void GifReader::ReadPalette(uint32_t flags) {
  if ((flags & 0x80) == 0) return;
  const size_t colours = size_t{2} << (flags & 7);
  for (size_t i = 0; i < colours; ++i, at_ += 3) {
    palette_[i] = Rgb(Byte(bytes_, at_), Byte(bytes_, at_ + 1), Byte(bytes_, at_ + 2));
  }
}

void GifReader::ReadExtension() {
  constexpr uint32_t kGraphicControl = 0xF9;
  if (Byte(bytes_, at_) == kGraphicControl && (Byte(bytes_, at_ + 2) & 1) != 0) {
    transparent_ = Byte(bytes_, at_ + 5);
  }
  for (++at_; Byte(bytes_, at_) != 0; at_ += 1 + Byte(bytes_, at_)) {
  }
  ++at_;
}

std::optional<GifImage> GifReader::ReadImage() {
  const uint32_t flags = Byte(bytes_, at_ + 8);
  const PictureSize screen{Little16(bytes_, 6), Little16(bytes_, 8)};
  GifImage image;
  image.size = {Little16(bytes_, at_ + 4), Little16(bytes_, at_ + 6)};
  if (!Holdable(image.size) ||
      !Holdable({std::max(screen.width, image.size.width), std::max(screen.height, image.size.height)})) {
    return {};
  }
  image.interlaced = (flags & 0x40) != 0;
  at_ += kImageBytes;
  ReadPalette(flags);
  image.palette = palette_;
  image.transparent = transparent_;
  image.data = From(bytes_, at_);
  return image;
}

// The codes of an image: bits from the lowest on, in blocks that each tell their length.
class CodeReader {
 public:
  explicit CodeReader(Bytes data) : data_(data) {}

  // Nothing behind the last whole code.
  std::optional<uint32_t> Next(uint32_t bits) {
    while (held_ < bits) {
      if (left_ == 0) left_ = Byte(data_, at_++);
      if (left_ == 0 || at_ >= data_.size()) return {};
      window_ |= uint32_t{data_[at_++]} << held_;
      held_ += 8;
      --left_;
    }
    const uint32_t code = window_ & ((1U << bits) - 1);
    window_ >>= bits;
    held_ -= bits;
    return code;
  }

 private:
  Bytes data_;
  size_t at_ = 0;
  uint32_t left_ = 0;    // bytes of this block
  uint32_t window_ = 0;  // bits read ahead
  uint32_t held_ = 0;
};

// Gives the image's indices one by one.
class IndexReader {
 public:
  // `data` begins with the bits of an index. More than codes can have gives no index at all.
  explicit IndexReader(Bytes data)
      : codes_(From(data, 1)), indexBits_(Byte(data, 0)), clear_(1U << (indexBits_ % kMostCodeBits)) {
    if (indexBits_ < kMostCodeBits) Clear();
  }

  // Nothing at the end of the data and at a damaged place.
  std::optional<uint32_t> Next() {
    if (waiting_.empty() && !ReadCode()) return {};
    const uint32_t index = waiting_.back();
    waiting_.pop_back();
    return index;
  }

 private:
  void Clear() {
    codeBits_ = indexBits_ + 1;
    count_ = clear_ + 2;
    last_.reset();
  }

  // Puts the indices of the next code into waiting_, the last one first.
  bool ReadCode() {
    std::optional<uint32_t> code;
    do {
      code = codeBits_ == 0 ? std::nullopt : codes_.Next(codeBits_);
      if (!code || *code == clear_ + 1) return false;
      if (*code == clear_) Clear();
    } while (*code == clear_);

    if (!last_) {
      if (*code > clear_) return false;
      first_ = *code;
      waiting_.push_back(*code);
    } else {
      if (*code > count_) return false;
      uint32_t link = *code;
      // A code that is only now being made: the one before, and its first index again.
      if (link == count_) {
        waiting_.push_back(first_);
        link = *last_;
      }
      for (; link > clear_; link = before_[link]) waiting_.push_back(index_[link]);
      first_ = link;
      waiting_.push_back(first_);
      Add(*last_, first_);
    }
    last_ = code;
    return true;
  }

  void Add(uint32_t before, uint32_t index) {
    if (count_ >= kCodes) return;
    before_[count_] = static_cast<uint16_t>(before);
    index_[count_] = static_cast<uint16_t>(index);
    ++count_;
    if (count_ == 1U << codeBits_ && codeBits_ < kMostCodeBits) ++codeBits_;
  }

  CodeReader codes_;
  uint32_t indexBits_;
  uint32_t clear_;
  uint32_t codeBits_ = 0;
  uint32_t count_ = 0;            // codes that are made
  std::optional<uint32_t> last_;  // the code before
  uint32_t first_ = 0;            // and its first index
  std::array<uint16_t, kCodes> before_{};
  std::array<uint16_t, kCodes> index_{};
  std::vector<uint32_t> waiting_;
};

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
  std::optional<GifImage> image = GifReader(bytes).FirstImage();
  if (!image) return {};
  if (image->transparent) image->palette[*image->transparent] = 0;
  auto surface = std::make_shared<Surface>(static_cast<int32_t>(image->size.width),
                                           static_cast<int32_t>(image->size.height));
  surface->Fill(surface->Bounds(), image->palette[0]);
  IndexReader indices(image->data);
  for (const int32_t y : RowOrder(surface->Height(), image->interlaced)) {
    for (Colour& pixel : surface->Row(y)) {
      const std::optional<uint32_t> index = indices.Next();
      if (!index) return surface;
      pixel = image->palette[*index & 255];
    }
  }
  return surface;
}

}  // namespace platform
