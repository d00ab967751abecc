// From a sound file to a filled buffer.
#include "sound/buffers.h"

#include <cstdint>
#include <optional>
#include <span>
#include <string>
#include <string_view>
#include <utility>

#include "base/cursor.h"
#include "base/log.h"
#include "base/paths.h"
#include "platform/files.h"
#include "sound/decoder.h"
#include "state/load_budget.h"
#include "state/settings.h"

namespace qlm {
namespace {

// Frequency, pan, volume, position notification, sound without the focus, exact play position.
constexpr uint32_t kBufferFlags = 0x181E0;

constexpr uint32_t kPlainFormatBytes = 16;

// The one open sound file, read forward. It is held in pieces long enough that most sounds take one visit to
// the disk, and that a walk over countless tiny chunks takes few.
class SoundFile {
 public:
  void Open(TextView path) {
    path_ = path;
    piece_.clear();
    pieceStart_ = place_ = 0;
  }
  void Close() { Open({}); }

  // The next `count` bytes, fewer at the end of the file; at most kPiece of them. They stay until the next
  // call.
  std::string_view Next(size_t count) { return Take(count, count); }
  // The same, but as many as are at hand; none only at the end.
  std::string_view Some(size_t count) { return Take(count, 1); }
  void Skip(int64_t count) { place_ += count; }

  static constexpr size_t kPiece = 1 << 20;

 private:
  std::string_view Take(size_t count, size_t wanted) {
    const int64_t held = pieceStart_ + static_cast<int64_t>(piece_.size()) - place_;
    if (held < static_cast<int64_t>(wanted)) {
      piece_ = platform::ReadFilePart(path_, place_, kPiece).value_or(std::string());
      pieceStart_ = place_;
    }
    const std::string_view bytes =
        std::string_view(piece_).substr(static_cast<size_t>(place_ - pieceStart_), count);
    Skip(static_cast<int64_t>(bytes.size()));
    return bytes;
  }

  Text path_;
  std::string piece_;
  int64_t pieceStart_ = 0;
  int64_t place_ = 0;
};

SoundFile soundFile;

// The format record at the start of a RIFF file; nothing when the file begins otherwise.
std::optional<platform::SoundFormat> NextFormat() {
  Cursor head(soundFile.Next(20));
  const bool riff = head.Bytes(4) == "RIFF";
  head.Skip(4);
  const bool wave = head.Bytes(4) == "WAVE";
  head.Skip(4);  // whatever this chunk calls itself
  const uint32_t size = head.U32();
  if (!riff || !wave || size < kPlainFormatBytes) return std::nullopt;

  Cursor record(soundFile.Next(kPlainFormatBytes));
  platform::SoundFormat format;
  format.tag = record.U16();
  format.channels = record.U16();
  format.samplesPerSec = record.U32();
  format.avgBytesPerSec = record.U32();
  format.blockAlign = record.U16();
  format.bitsPerSample = record.U16();
  if (!record.Good()) return std::nullopt;
  soundFile.Skip(size - kPlainFormatBytes);
  return format;
}

// Goes to the first sample and gives the data's length; nothing when the file ends before.
// Quirk: a chunk of odd size is taken to be followed at once by the next one. A file that pads such a chunk
// in front of its samples is not recognised.
std::optional<uint32_t> NextDataSize() {
  while (true) {
    Cursor chunk(soundFile.Next(8));
    const std::string_view id = chunk.Bytes(4);
    const uint32_t size = chunk.U32();
    if (!chunk.Good()) return std::nullopt;
    if (id == "data") return size;
    soundFile.Skip(size);
  }
}

// Fills the buffer with the file's samples. Where the file ends early, the buffer keeps its zeros.
void ReadSamples(platform::SoundBuffer& buffer, uint32_t size) {
  for (uint32_t at = 0; at < size;) {
    const std::string_view bytes = soundFile.Some(size - at);
    if (bytes.empty()) return;
    buffer.Write(at, {reinterpret_cast<const unsigned char*>(bytes.data()), bytes.size()});
    at += static_cast<uint32_t>(bytes.size());
  }
}

// Finds the file that stands for `path` and corrects the extension. False when there is none.
bool FindSoundFile(Text& path) {
  if (FileExists(path)) return true;
  const Text stem = path.substr(0, path.rfind(u'.') + 1);
  if (FileExists(stem + u"mp3")) {
    path = stem + u"mp3";
    return true;
  }
  // Quirk: "wav" is tried behind the whole name and then taken behind the stem, so that an a.mp3 whose file
  // is really an a.wav is found only beside a file a.mp3wav.
  if (FileExists(path + u"wav")) {
    path = stem + u"wav";
    return true;
  }
  return false;
}

}  // namespace

SoundBufferPtr CreateSndBuf(Text& path, platform::SoundDescription& description,
                            platform::SoundFormat& format, platform::SoundError& error) {
  error = platform::kSoundOk;
  if (!FindSoundFile(path)) {
    DebugLog(Join(u"LoadWav:", GetFileName(path), u" - ERROR"));
    if (WideCharts) DebugLog(u"# there is none as .wav, .ogg, .flac, .opus or .mp3");
    return nullptr;
  }
  DebugLog(Join(u"CreateSndBuf:", GetFileName(path)));
  format = ReadWavHeader(path);
  format.tag = 1;
  description.bytes = WavDataSize;
  description.flags = kBufferFlags;

  SoundBufferPtr decoded;
  if (DecodeToBuffer(path, decoded, description, format) == kDecoded) {
    soundFile.Close();
    if (decoded == nullptr || OverLoadBudget(path)) {
      error = platform::kSoundOutOfMemory;
      return nullptr;
    }
    DebugLog(Join(format.samplesPerSec, u"Hz ", format.bitsPerSample, u"bits ", format.channels, u"ch ",
                  format.bitsPerSample, u"bps ", format.avgBytesPerSec, u"byte/sec ", format.extraSize,
                  u"bytes"));
    return decoded;
  }

  platform::SoundBufferResult created = platform::CreateSoundBuffer(description, format);
  if (created.buffer != nullptr && OverLoadBudget(path)) created = {nullptr, platform::kSoundOutOfMemory};
  error = created.error;
  if (created.buffer != nullptr) ReadSamples(*created.buffer, description.bytes);
  soundFile.Close();
  if (created.buffer != nullptr) created.buffer->SetCurrentPosition(0);
  return created.buffer;
}

void FindWideSound(Text& path) {
  constexpr TextView kKinds[] = {u".wav", u".ogg", u".flac", u".opus", u".mp3"};
  if (!WideCharts) return;
  if (std::optional<Text> found = FindFileOfKinds(path, kKinds)) path = std::move(*found);
}

void LoadAhead(Text path) {
  if (FindSoundFile(path)) DecodeAhead(path);
}

platform::SoundFormat ReadWavHeader(TextView path) {
  soundFile.Open(path);
  const std::optional<platform::SoundFormat> format = NextFormat();
  const std::optional<uint32_t> size = format ? NextDataSize() : std::nullopt;
  // Quirk: what has no header of ours leaves the size of the file before, which the decoder then starts from.
  if (!size) return {};
  WavDataSize = *size;
  return *format;
}

}  // namespace qlm
