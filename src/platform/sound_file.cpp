// Sound files by libsndfile, read from memory.
#include "platform/sound_file.h"

#include <sndfile.h>
#include <sys/stat.h>

#include <algorithm>
#include <bit>
#include <cstdint>
#include <cstdio>
#include <cstring>
#include <memory>
#include <span>
#include <string>
#include <vector>

#include "platform/heap.h"
#include "platform/sound_decoding.h"

namespace platform {
namespace {

constexpr size_t kPieceFrames = 8192;
constexpr size_t kSampleBytes = sizeof(int16_t);
// No file is longer: the longest sound in the widest samples.
constexpr int64_t kLongestFile = int64_t{1} << 30;

// The bytes of a file as the library reads them.
struct Stream {
  std::string_view bytes;
  sf_count_t place = 0;

  sf_count_t Length() const { return static_cast<sf_count_t>(bytes.size()); }
};

sf_count_t Length(void* stream) { return static_cast<Stream*>(stream)->Length(); }
sf_count_t Tell(void* stream) { return static_cast<Stream*>(stream)->place; }

sf_count_t Seek(sf_count_t offset, int from, void* data) {
  Stream& stream = *static_cast<Stream*>(data);
  const sf_count_t base = from == SEEK_SET ? 0 : from == SEEK_CUR ? stream.place : stream.Length();
  sf_count_t place = 0;
  if (__builtin_add_overflow(base, offset, &place) || place < 0) return -1;
  return stream.place = place;
}

sf_count_t Read(void* to, sf_count_t count, void* data) {
  Stream& stream = *static_cast<Stream*>(data);
  const sf_count_t read =
      std::clamp<sf_count_t>(stream.Length() - stream.place, 0, std::max<sf_count_t>(count, 0));
  if (read > 0) std::memcpy(to, stream.bytes.data() + stream.place, static_cast<size_t>(read));
  stream.place += read;
  return read;
}

sf_count_t Write(const void* /*from*/, sf_count_t /*count*/, void* /*stream*/) { return 0; }

struct Close {
  void operator()(SNDFILE* file) const { sf_close(file); }
};
using File = std::unique_ptr<SNDFILE, Close>;

// A sample of -1 to 1 in 16 bits: cut by its bits, since comparisons of floats keep the compiler from working
// on many at a time, and rounded by the sum with a number so large that no bits stay behind the point. What
// is no number is silence.
int16_t Sample16(float sample) {
  constexpr uint32_t kSign = 0x80000000;
  constexpr uint32_t kEndless = 0x7F800000;
  constexpr float kRounder = 12582912.0F;  // 1.5 * 2^23
  const auto bits = std::bit_cast<uint32_t>(sample);
  uint32_t size = bits & ~kSign;
  size = size > kEndless ? 0 : size;
  size = std::min(size, std::bit_cast<uint32_t>(1.0F));
  const float held = std::bit_cast<float>(size | (bits & kSign));
  const int32_t whole = std::bit_cast<int32_t>(held * 32768.0F + kRounder) - std::bit_cast<int32_t>(kRounder);
  return static_cast<int16_t>(std::min(whole, 32767));
}

// Through a piece of whole samples, which the compiler works on many at a time.
void Append(std::string& samples, std::span<const float> piece, std::vector<int16_t>& rounded) {
  std::ranges::transform(piece, rounded.begin(), Sample16);
  samples.append(reinterpret_cast<const char*>(rounded.data()), piece.size() * kSampleBytes);
}

// Room for what the header claims, as far as so many bytes can be thought to hold it.
size_t Room(const SF_INFO& info, size_t fileBytes, size_t most) {
  constexpr size_t kDensest = 64;  // bytes of samples in one of the file
  const auto frames =
      static_cast<size_t>(std::clamp<sf_count_t>(info.frames, 0, static_cast<sf_count_t>(most)));
  const auto channels = static_cast<size_t>(info.channels);
  return std::min({frames * channels * kSampleBytes, most, fileBytes * kDensest});
}

DecodeError DecodeAll(SNDFILE* file, size_t most, DecodingOrders* orders, DecodedSound& sound) {
  const auto channels = static_cast<size_t>(sound.channels);
  std::vector<float> piece(kPieceFrames * channels);
  std::vector<int16_t> rounded(piece.size());
  while (true) {
    if (orders != nullptr && !orders->GoOn(sound.samples.size())) return DecodeError::kBroken;
    const sf_count_t frames = sf_readf_float(file, piece.data(), kPieceFrames);
    if (frames <= 0) return sound.samples.empty() ? DecodeError::kNoSamples : DecodeError::kNone;
    const std::span<const float> read(piece.data(), static_cast<size_t>(frames) * channels);
    if (sound.samples.size() + read.size() * kSampleBytes > most) return DecodeError::kTooLong;
    Append(sound.samples, read, rounded);
  }
}

DecodedSound Failed(DecodeError error) {
  DecodedSound sound;
  sound.error = error;
  return sound;
}

struct FileCloser {
  void operator()(std::FILE* file) const { std::fclose(file); }
};

}  // namespace

bool IsSoundFile(std::string_view head) {
  constexpr char kMpeg = 85;
  if (head.starts_with("OggS") || head.starts_with("fLaC")) return true;
  if (head.size() < kSoundFileHead || !head.starts_with("RIFF") || head.substr(8, 4) != "WAVE") return false;
  return head.substr(12, 4) != "fmt " || head[20] != kMpeg || head[21] != 0;
}

DecodedSound DecodeSoundFile(std::string_view bytes, size_t most, DecodingOrders* orders) {
  if (!IsSoundFile(bytes)) return Failed(DecodeError::kNotKnown);
  Stream stream{bytes};
  SF_VIRTUAL_IO io{Length, Seek, Read, Write, Tell};
  SF_INFO info{};
  const File file(sf_open_virtual(&io, SFM_READ, &info, &stream));
  if (file == nullptr) return Failed(DecodeError::kBroken);
  if (info.channels < 1 || info.channels > 2) return Failed(DecodeError::kManyChannels);
  DecodedSound sound;
  sound.rate = info.samplerate;
  sound.channels = info.channels;
  sound.error = DecodeError::kTooLong;
  WithinMemory([&] {
    sound.samples.reserve(Room(info, bytes.size(), most));
    sound.error = DecodeAll(file.get(), most, orders, sound);
  });
  return sound.error == DecodeError::kNone ? std::move(sound) : Failed(sound.error);
}

DecodedSound DecodeSoundFileAt(const std::string& systemPath, size_t most, DecodingOrders* orders) {
  const std::unique_ptr<std::FILE, FileCloser> file(std::fopen(systemPath.c_str(), "rbe"));
  struct stat info {};
  if (file == nullptr || fstat(fileno(file.get()), &info) != 0 || !S_ISREG(info.st_mode)) {
    return Failed(DecodeError::kBroken);
  }
  if (info.st_size > kLongestFile) return Failed(DecodeError::kTooLong);
  std::string bytes;
  if (!WithinMemory([&] { bytes.resize(static_cast<size_t>(info.st_size)); })) {
    return Failed(DecodeError::kTooLong);
  }
  bytes.resize(std::fread(bytes.data(), 1, bytes.size(), file.get()));
  return DecodeSoundFile(bytes, most, orders);
}

}  // namespace platform
