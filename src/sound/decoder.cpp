// From MPEG data to a buffer. The words of the log are those of the codec layer that this one stands for.
#include "sound/decoder.h"

#include <algorithm>
#include <deque>
#include <memory>
#include <optional>
#include <string>
#include <string_view>
#include <thread>
#include <utility>
#include <vector>

#include "base/hooks.h"
#include "base/log.h"
#include "platform/clock.h"
#include "platform/files.h"
#include "platform/heap.h"
#include "platform/mp3.h"
#include "state/chart.h"

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

// A file that was looked at: what DecodeToBuffer answers unless the decoder fails, the lines that tell of it,
// and the bytes that are to be decoded, which a decoding under way has taken.
struct SoundAhead {
  Text path;
  int32_t answer = kDecodeFailed;
  std::vector<Text> lines;
  std::string file;
  size_t start = 0;
  size_t size = 0;
  std::unique_ptr<platform::Mp3Decoding> decoding;
};
std::deque<std::unique_ptr<SoundAhead>> soundsAhead;

// The steps before the decoding.
int32_t FindBytes(SoundAhead& sound) {
  const std::optional<int64_t> fileSize = platform::FileLength(sound.path);
  if (!fileSize) return Fail(u"CreateFileに失敗");
  if (*fileSize < kShortestSoundFile) return Fail(u"ファイルサイズが小さすぎます");
  const std::optional<std::string> head = platform::ReadFilePart(sound.path, 0, kDetectedBytes);
  if (!head) return Fail(u"ReadFileに失敗");

  MpegData data;
  if (const int32_t found = FindMpegData(*head, *fileSize, data); found != kDecoded) return found;
  std::optional<std::string> file = platform::ReadFile(sound.path);
  if (!file) return Fail(u"元ファイルのGlobalAllocに失敗");
  MpegFormat header;
  if (const int32_t read = ReadMpegHeader(*file, data, header); read != kDecoded) return read;
  sound.start = std::min(static_cast<size_t>(data.start), file->size());
  sound.size = static_cast<size_t>(data.size);
  sound.file = std::move(*file);
  return kDecoded;
}

std::unique_ptr<SoundAhead> LookAt(TextView path) {
  auto sound = std::make_unique<SoundAhead>();
  sound->path = path;
  sound->lines = LinesOf([&] { sound->answer = FindBytes(*sound); });
  return sound;
}

// The sound of this path if it was begun ahead. Those before it are dropped: they were passed over.
std::unique_ptr<SoundAhead> TakeAhead(TextView path) {
  const auto found =
      std::ranges::find_if(soundsAhead, [&](const auto& sound) { return sound->path == path; });
  if (found == soundsAhead.end()) return nullptr;
  std::unique_ptr<SoundAhead> sound = std::move(*found);
  soundsAhead.erase(soundsAhead.begin(), found + 1);
  return sound;
}

// Lets events run while it waits; one of them may end the load, and then what is decoded does not matter.
platform::DecodedMp3 Await(platform::Mp3Decoding& decoding) {
  constexpr uint32_t kPumpInterval = 20;  // ms
  while (!decoding.DoneWithin(kPumpInterval)) {
    if (hooks.loadPump != nullptr) hooks.loadPump();
    if (LoadAbort) decoding.GiveUp();
  }
  return decoding.Take();
}

platform::DecodedMp3 Decode(SoundAhead& sound) {
  if (sound.decoding != nullptr) return Await(*sound.decoding);
  return platform::DecodeMp3(std::string_view(sound.file).substr(sound.start, sound.size), kLongestSound);
}

}  // namespace

int32_t DecodeToBuffer(TextView path, SoundBufferPtr& buffer, platform::SoundDescription& description,
                       platform::SoundFormat& format) {
  std::unique_ptr<SoundAhead> ahead = TakeAhead(path);
  if (ahead == nullptr) ahead = LookAt(path);
  for (const Text& line : ahead->lines) DebugLog(line);
  if (ahead->answer != kDecoded) return ahead->answer;

  const uint32_t begin = platform::Now();
  const platform::DecodedMp3 sound = Decode(*ahead);
  if (sound.error != platform::Mp3Error::kNone) return FailDecoding(sound.error);
  DebugLog(Join(u"> Decode complete in ", platform::Elapsed(platform::Now(), begin), u"ms"));
  buffer = BufferOf(sound, description, format);
  UnprepareHeader();
  CloseStream();
  return kDecoded;
}

void DecodeAhead(TextView path) {
  if (soundsAhead.size() >= SoundsAtOnce()) soundsAhead.pop_front();
  platform::WithinMemory([&] {
    std::unique_ptr<SoundAhead> sound = LookAt(path);
    if (sound->answer == kDecoded) {
      sound->decoding = std::make_unique<platform::Mp3Decoding>(std::move(sound->file), sound->start,
                                                                sound->size, kLongestSound);
    }
    soundsAhead.push_back(std::move(sound));
  });
}

void ForgetSoundsAhead() { soundsAhead.clear(); }

size_t SoundsAtOnce() {
  constexpr size_t kFewest = 2;
  constexpr size_t kMost = 8;  // since each may have the size of the longest sound
  static const size_t cores = std::clamp<size_t>(std::thread::hardware_concurrency(), kFewest, kMost);
  return cores;
}

}  // namespace qlm
