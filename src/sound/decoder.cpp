// From MPEG data to a buffer. The words of the log are those of the codec layer that this one stands for.
#include "sound/decoder.h"

#include <algorithm>
#include <optional>
#include <string>
#include <string_view>

#include "base/log.h"
#include "platform/clock.h"
#include "platform/files.h"
#include "platform/mp3.h"

namespace qlm {
namespace {

constexpr size_t kLongestSound = size_t{256} << 20;  // bytes, as of every buffer

int32_t Fail(TextView words) {
  DebugLog(words);
  return kDecodeFailed;
}

// Quirk: the tests behind these calls are the wrong way round, so that each that succeeds is logged as a
// failure.
void UnprepareHeader() { DebugLog(u"acmStreamUnprepareHeaderに失敗\n続ける？"); }
void CloseStream() { DebugLog(u"acmStreamCloseに失敗\n続ける？"); }

int32_t FailDecoding(platform::Mp3Error error) {
  switch (error) {
    case platform::Mp3Error::kNoDecoder:
      DebugLog(u"acmStreamOpen失敗: ACMに異常があります");
      return kDecodeFailed;
    case platform::Mp3Error::kNoSamples: DebugLog(u"変換後サイズが異常です"); break;
    case platform::Mp3Error::kTooLong: DebugLog(u"先ファイルのGlobalAllocに失敗"); break;
    default: DebugLog(u"acmStreamConvertに失敗"); UnprepareHeader();
  }
  CloseStream();
  return kDecodeFailed;
}

platform::SoundFormat FormatOf(const platform::DecodedMp3& sound) {
  platform::SoundFormat format;
  format.tag = 1;
  format.channels = static_cast<uint16_t>(sound.channels);
  format.samplesPerSec = static_cast<uint32_t>(sound.rate);
  format.bitsPerSample = 16;
  format.blockAlign = static_cast<uint16_t>(2 * sound.channels);
  format.avgBytesPerSec = format.samplesPerSec * format.blockAlign;
  return format;
}

SoundBufferPtr BufferOf(const platform::DecodedMp3& sound, platform::SoundDescription& description,
                        platform::SoundFormat& format) {
  description.bytes = static_cast<uint32_t>(sound.samples.size());
  format = FormatOf(sound);
  SoundBufferPtr buffer = platform::CreateSoundBuffer(description, format).buffer;
  if (buffer == nullptr) return nullptr;
  buffer->Write(0, {reinterpret_cast<const unsigned char*>(sound.samples.data()), sound.samples.size()});
  return buffer;
}

}  // namespace

int32_t DecodeToBuffer(TextView path, SoundBufferPtr& buffer, platform::SoundDescription& description,
                       platform::SoundFormat& format) {
  const std::optional<int64_t> fileSize = platform::FileLength(path);
  if (!fileSize) return Fail(u"CreateFileに失敗");
  if (*fileSize < kShortestSoundFile) return Fail(u"ファイルサイズが小さすぎます");
  const std::optional<std::string> head = platform::ReadFilePart(path, 0, kDetectedBytes);
  if (!head) return Fail(u"ReadFileに失敗");

  MpegData data;
  if (const int32_t found = FindMpegData(*head, *fileSize, data); found != kDecoded) return found;
  const std::optional<std::string> file = platform::ReadFile(path);
  if (!file) return Fail(u"元ファイルのGlobalAllocに失敗");
  MpegFormat header;
  if (const int32_t read = ReadMpegHeader(*file, data, header); read != kDecoded) return read;

  const uint32_t begin = platform::Now();
  const std::string_view source = *file;
  const auto start = std::min(static_cast<size_t>(data.start), source.size());
  const platform::DecodedMp3 sound =
      platform::DecodeMp3(source.substr(start, static_cast<size_t>(data.size)), kLongestSound);
  if (sound.error != platform::Mp3Error::kNone) return FailDecoding(sound.error);
  DebugLog(Join(u"> Decode complete in ", platform::Elapsed(platform::Now(), begin), u"ms"));
  buffer = BufferOf(sound, description, format);
  UnprepareHeader();
  CloseStream();
  return kDecoded;
}

}  // namespace qlm
