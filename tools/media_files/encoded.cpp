// By libsndfile, into memory.
#include "tools/media_files/encoded.h"

#include <sndfile.h>

#include <algorithm>
#include <cstdio>
#include <cstring>

namespace media {
namespace {

struct Memory {
  std::string bytes;
  size_t place = 0;
};

sf_count_t Length(void* memory) {
  return static_cast<sf_count_t>(static_cast<Memory*>(memory)->bytes.size());
}
sf_count_t Tell(void* memory) { return static_cast<sf_count_t>(static_cast<Memory*>(memory)->place); }
sf_count_t Seek(sf_count_t offset, int from, void* data) {
  const sf_count_t base = from == SEEK_SET ? 0 : from == SEEK_CUR ? Tell(data) : Length(data);
  static_cast<Memory*>(data)->place = static_cast<size_t>(base + offset);
  return base + offset;
}
sf_count_t Read(void* to, sf_count_t count, void* data) {
  Memory& memory = *static_cast<Memory*>(data);
  const size_t left = memory.bytes.size() - std::min(memory.place, memory.bytes.size());
  const size_t read = std::min(left, static_cast<size_t>(count));
  std::memcpy(to, memory.bytes.data() + memory.place, read);
  memory.place += read;
  return static_cast<sf_count_t>(read);
}
sf_count_t Write(const void* from, sf_count_t count, void* data) {
  Memory& memory = *static_cast<Memory*>(data);
  const auto size = static_cast<size_t>(count);
  memory.bytes.resize(std::max(memory.bytes.size(), memory.place + size));
  std::memcpy(memory.bytes.data() + memory.place, from, size);
  memory.place += size;
  return count;
}

int FormatOf(Coding coding) {
  switch (coding) {
    case Coding::kVorbis: return SF_FORMAT_OGG | SF_FORMAT_VORBIS;
    case Coding::kOpus: return SF_FORMAT_OGG | SF_FORMAT_OPUS;
    case Coding::kFlac: return SF_FORMAT_FLAC | SF_FORMAT_PCM_16;
    case Coding::kWav24: return SF_FORMAT_WAV | SF_FORMAT_PCM_24;
    case Coding::kWavFloat: return SF_FORMAT_WAV | SF_FORMAT_FLOAT;
    case Coding::kWavAdpcm: return SF_FORMAT_WAV | SF_FORMAT_MS_ADPCM;
    case Coding::kWavPlain: return SF_FORMAT_WAV | SF_FORMAT_PCM_16;
    case Coding::kMp3: return SF_FORMAT_MPEG | SF_FORMAT_MPEG_LAYER_III;
  }
  return 0;
}

}  // namespace

std::string EncodedSound(Coding coding, const std::vector<float>& samples, int32_t channels, int32_t rate,
                         double quality) {
  constexpr sf_count_t kPieceFrames = 4096;  // the encoders keep a whole call's samples on the stack
  Memory memory;
  SF_VIRTUAL_IO io{Length, Seek, Read, Write, Tell};
  SF_INFO info{};
  info.samplerate = rate;
  info.channels = channels;
  info.format = FormatOf(coding);
  SNDFILE* const file = sf_open_virtual(&io, SFM_WRITE, &info, &memory);
  if (file == nullptr) return {};
  if (coding == Coding::kVorbis) sf_command(file, SFC_SET_VBR_ENCODING_QUALITY, &quality, sizeof quality);
  if (coding != Coding::kWavFloat) sf_command(file, SFC_SET_CLIPPING, nullptr, SF_TRUE);
  const auto frames = static_cast<sf_count_t>(samples.size()) / channels;
  for (sf_count_t at = 0; at < frames; at += kPieceFrames) {
    sf_writef_float(file, samples.data() + at * channels, std::min(kPieceFrames, frames - at));
  }
  sf_close(file);
  return memory.bytes;
}

}  // namespace media
