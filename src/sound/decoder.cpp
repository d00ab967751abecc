// From MPEG data, and the sound files of today, to a buffer. The words of the log on MPEG are those of the
// codec layer that this one stands for.
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
#include "base/paths.h"
#include "platform/clock.h"
#include "platform/files.h"
#include "platform/heap.h"
#include "platform/mp3.h"
#include "platform/sound_decoding.h"
#include "platform/sound_file.h"
#include "state/chart.h"
#include "state/load_budget.h"
#include "state/settings.h"

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

int32_t FailDecoding(platform::DecodeError error) {
  switch (error) {
    case platform::DecodeError::kNoDecoder:
      DebugLog(u"acmStreamOpen失敗: ACMに異常があります");
      return kDecodeFailed;
    case platform::DecodeError::kNoSamples: DebugLog(u"変換後サイズが異常です"); break;
    case platform::DecodeError::kTooLong: DebugLog(u"先ファイルのGlobalAllocに失敗"); break;
    default: DebugLog(u"acmStreamConvertに失敗"); UnprepareHeader();
  }
  CloseStream();
  return kDecodeFailed;
}

platform::SoundFormat FormatOf(const platform::DecodedSound& sound) {
  platform::SoundFormat format;
  format.tag = 1;
  format.channels = static_cast<uint16_t>(sound.channels);
  format.samplesPerSec = static_cast<uint32_t>(sound.rate);
  format.bitsPerSample = 16;
  format.blockAlign = static_cast<uint16_t>(2 * sound.channels);
  format.avgBytesPerSec = format.samplesPerSec * format.blockAlign;
  return format;
}

SoundBufferPtr BufferOf(platform::DecodedSound sound, platform::SoundDescription& description,
                        platform::SoundFormat& format) {
  description.bytes = static_cast<uint32_t>(sound.samples.size());
  format = FormatOf(sound);
  return platform::SoundBufferOf(std::move(sound.samples), format).buffer;
}

// A file that was looked at: what DecodeToBuffer answers unless the decoder fails, the lines that tell of it,
// and the work to be done, which a decoding under way has taken. Of a sound of today there is the work alone.
struct SoundAhead {
  Text path;
  bool ofToday = false;
  int32_t answer = kDecodeFailed;
  std::vector<Text> lines;
  platform::DecodingWork work;
  std::unique_ptr<platform::SoundDecoding> decoding;
};
std::deque<std::unique_ptr<SoundAhead>> soundsAhead;
std::optional<platform::SoundDecoders> decoders;

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
  const size_t start = std::min(static_cast<size_t>(data.start), file->size());
  const auto size = static_cast<size_t>(data.size);
  sound.work = [file = std::move(*file), start, size](platform::DecodingOrders* orders) {
    return platform::DecodeMp3(std::string_view(file).substr(start, size), kLongestSound, orders);
  };
  return kDecoded;
}

bool IsOfToday(TextView path) {
  return WideCharts && platform::IsSoundFile(
                           platform::ReadFilePart(path, 0, platform::kSoundFileHead).value_or(std::string()));
}

std::unique_ptr<SoundAhead> LookAt(TextView path) {
  auto sound = std::make_unique<SoundAhead>();
  sound->path = path;
  sound->ofToday = IsOfToday(path);
  if (sound->ofToday) {
    sound->work = [file = platform::SystemPath(path)](platform::DecodingOrders* orders) {
      return platform::DecodeSoundFileAt(file, kLongestSound, orders);
    };
  } else {
    sound->lines = LinesOf([&] { sound->answer = FindBytes(*sound); });
  }
  return sound;
}

// The sound of this path. If it was begun ahead, those before it are dropped: they were passed over.
std::unique_ptr<SoundAhead> TakeSound(TextView path) {
  const auto found =
      std::ranges::find_if(soundsAhead, [&](const auto& sound) { return sound->path == path; });
  if (found == soundsAhead.end()) return LookAt(path);
  std::unique_ptr<SoundAhead> sound = std::move(*found);
  soundsAhead.erase(soundsAhead.begin(), found + 1);
  return sound;
}

// Lets events run while it waits; one of them may end the load, and then what is decoded does not matter.
platform::DecodedSound Await(platform::SoundDecoding& decoding) {
  constexpr uint32_t kPumpInterval = 20;  // ms
  while (!decoding.DoneWithin(kPumpInterval)) {
    if (hooks.loadPump != nullptr) hooks.loadPump();
    if (LoadAbort) decoding.GiveUp();
  }
  return decoding.Take();
}

platform::DecodedSound Decode(SoundAhead& sound) {
  return sound.decoding != nullptr ? Await(*sound.decoding) : sound.work(nullptr);
}

void LogTime(uint32_t begin) {
  DebugLog(Join(u"> Decode complete in ", platform::Elapsed(platform::Now(), begin), u"ms"));
}

TextView WhyNot(platform::DecodeError error) {
  switch (error) {
    case platform::DecodeError::kNoSamples: return u"there are no samples in it";
    case platform::DecodeError::kTooLong:
      return u"its samples are more than 256 MiB, or than there is memory for";
    case platform::DecodeError::kManyChannels: return u"it has more than 2 channels";
    default: return u"it is damaged, or of a coding that is not known";
  }
}

int32_t DecodeOfToday(SoundAhead& file, SoundBufferPtr& buffer, platform::SoundDescription& description,
                      platform::SoundFormat& format) {
  const uint32_t begin = platform::Now();
  platform::DecodedSound sound = Decode(file);
  if (sound.error != platform::DecodeError::kNone) {
    DebugLog(Join(u"# ", GetFileName(file.path), u": ", WhyNot(sound.error)));
    return kDecodeFailed;
  }
  LogTime(begin);
  buffer = BufferOf(std::move(sound), description, format);
  return kDecoded;
}

// Bytes that one sound may take ahead of its turn, so that memory is bounded beside what the chart holds.
constexpr int64_t kMostAhead = int64_t{16} << 20;

size_t Threads() {
  constexpr size_t kFewest = 2;
  constexpr size_t kMost = 8;
  static const size_t cores = std::clamp<size_t>(std::thread::hardware_concurrency(), kFewest, kMost);
  return cores;
}

}  // namespace

int32_t DecodeToBuffer(TextView path, SoundBufferPtr& buffer, platform::SoundDescription& description,
                       platform::SoundFormat& format) {
  const std::unique_ptr<SoundAhead> file = TakeSound(path);
  if (file->ofToday) return DecodeOfToday(*file, buffer, description, format);
  for (const Text& line : file->lines) DebugLog(line);
  if (file->answer != kDecoded) return file->answer;

  const uint32_t begin = platform::Now();
  platform::DecodedSound sound = Decode(*file);
  if (sound.error != platform::DecodeError::kNone) return FailDecoding(sound.error);
  LogTime(begin);
  buffer = BufferOf(std::move(sound), description, format);
  UnprepareHeader();
  CloseStream();
  return kDecoded;
}

void DecodeAhead(TextView path) {
  if (soundsAhead.size() >= SoundsAtOnce()) soundsAhead.pop_front();
  platform::WithinMemory([&] {
    std::unique_ptr<SoundAhead> sound = LookAt(path);
    if (sound->work != nullptr) {
      if (!decoders) decoders.emplace(Threads());
      const int64_t share = LoadBudgetLeft() / static_cast<int64_t>(SoundsAtOnce());
      sound->decoding = decoders->Begin(std::move(sound->work),
                                        static_cast<size_t>(std::clamp<int64_t>(share, 0, kMostAhead)));
    }
    soundsAhead.push_back(std::move(sound));
  });
}

void ForgetSoundsAhead() {
  soundsAhead.clear();
  decoders.reset();
}

// Enough for the threads to go on while a frame of the loading screen waits to be shown.
size_t SoundsAtOnce() { return 8 * Threads(); }

}  // namespace qlm
