// What a sound file is by its bytes, and where its MPEG data lies.
#pragma once

#include <cstdint>
#include <string_view>

namespace qlm {

// What DecodeToBuffer and its steps answer.
constexpr int32_t kDecoded = -1;         // the buffer is made and filled
constexpr int32_t kDecodeFailed = 0;     // the caller takes the file for PCM
constexpr int32_t kNotCompressed = 999;  // likewise

// No file below this length is looked at.
constexpr int64_t kShortestSoundFile = 129;
// Detection looks no further than here.
constexpr size_t kDetectedBytes = 128;

// Bytes from `start` on, as the file's own header counts them: they may run past its end.
struct MpegData {
  int64_t start = 0;
  int64_t size = 0;
};

// Finds the data in a file of this length that begins with `head`: behind an ID3 tag, or in the chunk "data"
// of a RIFF file. kDecoded when it may be MPEG data; each step is logged.
int32_t FindMpegData(std::string_view head, int64_t fileSize, MpegData& data);

// The first frame's header as the old codec wants it.
struct MpegFormat {
  int32_t layer = 0;       // 1 to 3
  int32_t bitrate = 0;     // kbit/s; 0 for those that the table lacks
  int32_t sampleRate = 0;  // Hz; likewise
  int32_t channels = 0;
  int32_t blockSize = 0;  // bytes of a frame; 0 without a rate
};

// Reads the header at the start of the data, and leaves the bytes that are to be decoded: without this
// header, so that the first frame is lost, and without an ID3v1 tag at the end. kDecoded when there is a
// header; each step is logged.
int32_t ReadMpegHeader(std::string_view file, MpegData& data, MpegFormat& format);

}  // namespace qlm
