// MPEG audio by mpg123.
#include "platform/mp3.h"

#include <mpg123.h>

#include <algorithm>
#include <cstddef>
#include <memory>
#include <optional>

#include "platform/heap.h"
#include "platform/sound_decoding.h"

namespace platform {
namespace {

constexpr size_t kFedBytes = size_t{64} << 10;
constexpr size_t kHeaderBytes = 4;

// What a frame's header tells of its length. Frames of one stream are of one kind.
struct FrameHeader {
  uint32_t kind = 0;  // sync, version, layer, rate
  size_t length = 0;  // bytes, the header's four among them
  friend bool SameKind(const FrameHeader& a, const FrameHeader& b) { return a.kind == b.kind; }
};

// Nothing where no header stands, and for one that does not tell a length.
std::optional<FrameHeader> HeaderAt(std::string_view data, size_t place) {
  constexpr size_t kBitrates[2][3][15] = {
      {{0, 32, 64, 96, 128, 160, 192, 224, 256, 288, 320, 352, 384, 416, 448},
       {0, 32, 48, 56, 64, 80, 96, 112, 128, 160, 192, 224, 256, 320, 384},
       {0, 32, 40, 48, 56, 64, 80, 96, 112, 128, 160, 192, 224, 256, 320}},
      {{0, 32, 48, 56, 64, 80, 96, 112, 128, 144, 160, 176, 192, 224, 256},
       {0, 8, 16, 24, 32, 40, 48, 56, 64, 80, 96, 112, 128, 144, 160},
       {0, 8, 16, 24, 32, 40, 48, 56, 64, 80, 96, 112, 128, 144, 160}}};
  constexpr size_t kRates[3] = {44100, 48000, 32000};
  if (data.size() - place < kHeaderBytes) return std::nullopt;
  const auto byte = [&](size_t i) { return static_cast<unsigned char>(data[place + i]); };
  const unsigned version = byte(1) >> 3 & 3;  // 3 is MPEG-1, 2 MPEG-2, 0 MPEG-2.5
  const unsigned layer = 4 - (byte(1) >> 1 & 3);
  const unsigned bitrate = byte(2) >> 4;
  const unsigned rate = byte(2) >> 2 & 3;
  if (byte(0) != 0xFF || byte(1) < 0xE0 || version == 1 || layer == 4 || rate == 3) return std::nullopt;
  if (bitrate == 0 || bitrate == 15) return std::nullopt;
  const size_t hertz = kRates[rate] / (version == 3 ? 1 : version == 2 ? 2 : 4);
  const size_t bits = kBitrates[version == 3 ? 0 : 1][layer - 1][bitrate] * 1000;
  const size_t padding = byte(2) >> 1 & 1;
  FrameHeader header;
  header.kind = uint32_t{byte(1)} >> 1 << 8 | rate;
  if (layer == 1) {
    header.length = (12 * bits / hertz + padding) * 4;
  } else {
    header.length = (layer == 3 && version != 3 ? 72 : 144) * bits / hertz + padding;
  }
  return header;
}

// The first frame that another of its kind follows, or the end of the data. In the middle of a frame, bytes
// may look like a header, which keeps the decoder from the true ones. The data's length when there is none.
size_t FirstFrame(std::string_view data) {
  for (size_t place = data.find('\xFF'); place < data.size(); place = data.find('\xFF', place + 1)) {
    const std::optional<FrameHeader> header = HeaderAt(data, place);
    if (!header || header->length > data.size() - place) continue;
    const size_t next = place + header->length;
    if (data.size() - next < kHeaderBytes) return place;
    const std::optional<FrameHeader> following = HeaderAt(data, next);
    if (following && SameKind(*header, *following)) return place;
  }
  return data.size();
}

struct Close {
  void operator()(mpg123_handle* decoder) const { mpg123_delete(decoder); }
};
using Decoder = std::unique_ptr<mpg123_handle, Close>;

// Gives samples of 16 bits as the frames have them: not resampled, and the silence that encoders add stays.
// `synced` tells that the data begins with a frame, which then need not be confirmed by the one behind it.
bool SetUp(mpg123_handle* decoder, bool synced) {
  mpg123_param(decoder, MPG123_REMOVE_FLAGS, MPG123_GAPLESS | MPG123_AUTO_RESAMPLE, 0);
  mpg123_param(decoder, MPG123_ADD_FLAGS, MPG123_QUIET | MPG123_IGNORE_INFOFRAME | MPG123_SKIP_ID3V2, 0);
  if (synced) mpg123_param(decoder, MPG123_ADD_FLAGS, MPG123_NO_READAHEAD, 0);
  mpg123_param(decoder, MPG123_RESYNC_LIMIT, -1, 0);
  mpg123_format_none(decoder);
  const long* rates = nullptr;
  size_t count = 0;
  mpg123_rates(&rates, &count);
  for (size_t i = 0; i < count; ++i) {
    mpg123_format(decoder, rates[i], MPG123_MONO | MPG123_STEREO, MPG123_ENC_SIGNED_16);
  }
  return mpg123_open_feed(decoder) == MPG123_OK;
}

// Decodes all frames that the decoder has been fed, onto the end of the samples. MPG123_NEED_MORE when it has
// none left; MPG123_DONE when the sound ends here.
int TakeFrames(mpg123_handle* decoder, size_t most, DecodedSound& sound) {
  while (true) {
    unsigned char* frame = nullptr;
    size_t bytes = 0;
    const int answer = mpg123_decode_frame(decoder, nullptr, &frame, &bytes);
    if (answer == MPG123_NEW_FORMAT) {
      if (!sound.samples.empty()) return MPG123_DONE;
      long rate = 0;
      int encoding = 0;
      mpg123_getformat(decoder, &rate, &sound.channels, &encoding);
      sound.rate = static_cast<int32_t>(rate);
    } else if (answer != MPG123_OK) {
      return answer;
    }
    if (sound.samples.size() + bytes > most) return MPG123_OUT_OF_MEM;
    if (frame != nullptr) sound.samples.append(reinterpret_cast<const char*>(frame), bytes);
  }
}

int DecodeAll(mpg123_handle* decoder, std::string_view data, size_t most, DecodingOrders* orders,
              DecodedSound& sound) {
  int answer = MPG123_NEED_MORE;
  while (answer == MPG123_NEED_MORE && !data.empty()) {
    if (orders != nullptr && !orders->GoOn(sound.samples.size())) return MPG123_ERR;
    const std::string_view piece = data.substr(0, kFedBytes);
    data.remove_prefix(piece.size());
    answer = mpg123_feed(decoder, reinterpret_cast<const unsigned char*>(piece.data()), piece.size());
    if (answer == MPG123_OK) answer = TakeFrames(decoder, most, sound);
  }
  return answer;
}

DecodeError ErrorOf(int answer, const DecodedSound& sound) {
  if (answer == MPG123_OUT_OF_MEM) return DecodeError::kTooLong;
  if (answer != MPG123_NEED_MORE && answer != MPG123_DONE) return DecodeError::kBroken;
  return sound.samples.empty() ? DecodeError::kNoSamples : DecodeError::kNone;
}

}  // namespace

DecodedSound DecodeMp3(std::string_view data, size_t most, DecodingOrders* orders) {
  DecodedSound sound;
  const size_t first = FirstFrame(data);
  const bool synced = first < data.size();
  if (synced) data.remove_prefix(first);
  const Decoder decoder(mpg123_new(nullptr, nullptr));
  if (decoder == nullptr || !SetUp(decoder.get(), synced)) {
    sound.error = DecodeError::kNoDecoder;
    return sound;
  }
  int answer = MPG123_OUT_OF_MEM;
  WithinMemory([&] { answer = DecodeAll(decoder.get(), data, most, orders, sound); });
  sound.error = ErrorOf(answer, sound);
  return sound;
}

}  // namespace platform
