// Detection on the first 128 bytes, and the four bytes of a frame header.
#include "sound/mp3_header.h"

#include <algorithm>
#include <cstddef>

#include "base/log.h"
#include "base/numbers.h"

namespace qlm {
namespace {

constexpr size_t kLastDataPlace = 120;

// kbit/s, by the header's index, the layer from 1 on, and 0 for MPEG-1, 1 for the versions behind it.
constexpr int32_t kBitrates[16][3][2] = {
    {{0, 0}, {0, 0}, {0, 0}},
    {{32, 32}, {32, 8}, {32, 8}},
    {{64, 48}, {48, 16}, {40, 16}},
    {{96, 56}, {56, 24}, {48, 24}},
    {{128, 64}, {64, 32}, {56, 32}},
    {{160, 80}, {80, 40}, {64, 40}},
    {{192, 96}, {96, 48}, {80, 48}},
    {{224, 112}, {112, 56}, {96, 56}},
    {{256, 128}, {128, 64}, {112, 64}},
    {{288, 144}, {160, 80}, {128, 80}},
    {{320, 160}, {192, 96}, {160, 96}},
    {{352, 176}, {224, 112}, {192, 112}},
    {{384, 192}, {256, 128}, {224, 128}},
    {{416, 224}, {320, 144}, {256, 144}},
    {{448, 256}, {384, 160}, {320, 160}},
    {{0, 0}, {0, 0}, {0, 0}},
};
constexpr int32_t kSampleRates[4][2] = {{44100, 22050}, {48000, 24000}, {32000, 16000}, {0, 0}};

// Bytes as numbers; behind the end there are zeros.
class Bytes {
 public:
  explicit Bytes(std::string_view bytes) : bytes_(bytes) {}
  uint32_t operator[](size_t place) const {
    return place < bytes_.size() ? static_cast<unsigned char>(bytes_[place]) : 0;
  }
  bool Holds(size_t place, std::string_view word) const {
    return place < bytes_.size() && bytes_.substr(place).starts_with(word);
  }

 private:
  std::string_view bytes_;
};

int32_t SearchDataChunk(const Bytes& head, MpegData& data) {
  for (size_t p = 4; p <= kLastDataPlace; ++p) {
    if (!head.Holds(p, "data")) continue;
    data.start = static_cast<int64_t>(p) + 8;
    data.size = int64_t{head[p + 4]} | int64_t{head[p + 5]} << 8 | int64_t{head[p + 6]} << 16 |
                int64_t{head[p + 7]} << 24;
    DebugLog(Join(u"> data chunk found at ", static_cast<int64_t>(p), u" datasize: ", data.size));
    return kDecoded;
  }
  DebugLog(u"RIFFデータなのに先頭128バイト内にdataチャンクが見つかりませんでした");
  return kDecodeFailed;
}

int32_t FindInWave(const Bytes& head, MpegData& data) {
  DebugLog(u"> RIFF WAVE Header detected.");
  switch (head[21] * 256 + head[20]) {
    case 1: DebugLog(u"> Format ID = 1 : LinerPCM file"); return kNotCompressed;
    case 85: DebugLog(u"> Format ID = 85 : MPEG file"); return SearchDataChunk(head, data);
    default: DebugLog(u"> Format ID : unknown ID"); return kNotCompressed;
  }
}

// Quirk: each byte of the tag's size counts whole, though only seven bits of each hold it.
int32_t SkipId3(const Bytes& head, int64_t fileSize, MpegData& data) {
  const int64_t size =
      (int64_t{head[6]} << 21) + (int64_t{head[7]} << 14) + (int64_t{head[8]} << 7) + int64_t{head[9]};
  const bool footer = head[3] >= 5 && (head[5] & 2) != 0;
  const int64_t offset = size + (footer ? 20 : 10);
  if (fileSize <= offset + static_cast<int64_t>(kDetectedBytes)) {
    DebugLog(u"ID3タグを考えるとファイルサイズが小さすぎます");
    return kDecodeFailed;
  }
  data = {offset, fileSize - offset};
  return kDecoded;
}

// Takes the ID3v1 tag off the end.
void CutTag(const Bytes& file, int64_t fileSize, MpegData& data) {
  constexpr int64_t kTagBytes = 128;
  const int64_t end = std::min(data.start + data.size, fileSize);
  if (end >= kTagBytes && file.Holds(static_cast<size_t>(end - kTagBytes), "TAG"))
    data.size = end - data.start - kTagBytes;
}

}  // namespace

int32_t FindMpegData(std::string_view head, int64_t fileSize, MpegData& data) {
  const Bytes bytes(head.substr(0, kDetectedBytes));
  data = {0, fileSize};
  if (bytes.Holds(0, "RIFF")) {
    if (bytes.Holds(8, "WAVE")) return FindInWave(bytes, data);
    if (bytes.Holds(8, "RMP3")) DebugLog(u"> RIFF RMP3 Header detected.");
    return SearchDataChunk(bytes, data);
  }
  return bytes.Holds(0, "ID3") ? SkipId3(bytes, fileSize, data) : kDecoded;
}

int32_t ReadMpegHeader(std::string_view file, MpegData& data, MpegFormat& format) {
  DebugLog(u"> MP3 loading mode.");
  const Bytes bytes(file);
  const auto start = static_cast<size_t>(data.start);
  // Quirk: one bit of the second byte is enough where the format has three.
  if (bytes[start] != 255 || (bytes[start + 1] & 0xF8) == 0) return kNotCompressed;
  const uint32_t second = bytes[start + 1];
  const uint32_t third = bytes[start + 2];
  format.layer = 4 - static_cast<int32_t>((second >> 1) & 3);
  if (format.layer == 4) {
    DebugLog(u"無効なレイヤです");
    return kDecodeFailed;
  }
  const size_t version = (second & 8) == 0 ? 1 : 0;
  format.bitrate = kBitrates[third >> 4][format.layer - 1][version];
  format.sampleRate = kSampleRates[(third >> 2) & 3][version];
  format.channels = bytes[start + 3] >> 6 == 3 ? 1 : 2;
  format.blockSize = format.sampleRate == 0
                         ? 0
                         : static_cast<int32_t>(RoundHalfEven(format.bitrate * 144000.0 / format.sampleRate));
  // Quirk: the word is "Stereo" for one channel too.
  DebugLog(Join(u"> Format: ", format.bitrate, u"kbps ", format.sampleRate, u"Hz ", u"Stereo"));
  CutTag(bytes, static_cast<int64_t>(file.size()), data);
  // Quirk: without its header the first frame is lost.
  data.start += 4;
  data.size = std::max<int64_t>(data.size - 4, 0);
  return kDecoded;
}

}  // namespace qlm
