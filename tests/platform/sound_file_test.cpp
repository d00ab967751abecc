// Sound files of today, as encoders make them and as nobody should.
#include "platform/sound_file.h"

#include <gtest/gtest.h>

#include <cmath>
#include <cstring>
#include <limits>
#include <numbers>
#include <string>
#include <vector>

#include "platform/sound_decoding.h"
#include "tools/media_files/encoded.h"
#include "tools/media_files/wav.h"

namespace platform {
namespace {

using media::Coding;
using Samples = std::vector<int16_t>;

constexpr size_t kMost = size_t{1} << 24;

Samples SamplesOf(const DecodedSound& sound) {
  Samples samples(sound.samples.size() / 2);
  std::memcpy(samples.data(), sound.samples.data(), samples.size() * 2);
  return samples;
}

Samples Decoded(const std::string& bytes) {
  const DecodedSound sound = DecodeSoundFile(bytes, kMost);
  EXPECT_EQ(sound.error, DecodeError::kNone);
  return SamplesOf(sound);
}

DecodeError ErrorOf(const std::string& bytes, size_t most = kMost) {
  return DecodeSoundFile(bytes, most).error;
}

// A mono WAV with these bytes for samples.
std::string Wav(uint16_t tag, uint16_t bits, std::string data) {
  media::WavFile file;
  file.tag = tag;
  file.bits = bits;
  file.align = static_cast<uint16_t>(bits / 8);
  file.bytesPerSecond = file.rate * file.align;
  file.data = std::move(data);
  return file.Bytes();
}

std::vector<float> Tone(int32_t rate, size_t frames, int32_t channels) {
  std::vector<float> samples;
  for (size_t i = 0; i < frames; ++i) {
    const double angle = 2 * std::numbers::pi * 440 * static_cast<double>(i) / rate;
    samples.insert(samples.end(), static_cast<size_t>(channels), static_cast<float>(0.5 * std::sin(angle)));
  }
  return samples;
}

TEST(SoundFile, IsKnownByItsFirstBytes) {
  EXPECT_TRUE(IsSoundFile("OggS"));
  EXPECT_TRUE(IsSoundFile("fLaC"));
  EXPECT_TRUE(IsSoundFile(Wav(1, 16, "ab")));
  EXPECT_TRUE(IsSoundFile(Wav(3, 32, "abcd")));
  EXPECT_FALSE(IsSoundFile(Wav(85, 0, "abcd"))) << "MPEG in a WAV";
  EXPECT_FALSE(IsSoundFile(Wav(1, 16, "ab").substr(0, 21)));
  EXPECT_FALSE(IsSoundFile("\xFF\xFB\x90\x64"));
  EXPECT_FALSE(IsSoundFile("ID3"));
  EXPECT_FALSE(IsSoundFile(""));
  EXPECT_EQ(ErrorOf("\xFF\xFB\x90\x64"), DecodeError::kNotKnown);
}

TEST(SoundFile, SixteenBitsStayAsTheyAre) {
  const Samples samples = {0, 1, -1, 32767, -32768, 12345};
  const DecodedSound mono = DecodeSoundFile(media::WavBytes(samples, 1, 22050), kMost);
  EXPECT_EQ(SamplesOf(mono), samples);
  EXPECT_EQ(mono.rate, 22050);
  EXPECT_EQ(mono.channels, 1);
  const DecodedSound stereo = DecodeSoundFile(media::WavBytes(samples, 2, 48000), kMost);
  EXPECT_EQ(SamplesOf(stereo), samples);
  EXPECT_EQ(stereo.channels, 2);
}

TEST(SoundFile, EightBitsAreWidened) {
  EXPECT_EQ(Decoded(Wav(1, 8, std::string("\x80\xFF\x00\x81", 4))), (Samples{0, 32512, -32768, 256}));
}

// 0x80 is half a step of 16 bits, 0x180 one and a half: both go to the even side.
TEST(SoundFile, TwentyFourBitsAreRounded) {
  std::string data;
  for (const uint32_t sample : {0U, 0x80U, 0x180U, 0xFFFF80U, 0x7FFFFFU, 0x800000U, 0x123456U}) {
    data += media::Little(sample, 3);
  }
  EXPECT_EQ(Decoded(Wav(1, 24, data)), (Samples{0, 0, 2, 0, 32767, -32768, 0x1234}));
}

TEST(SoundFile, FloatsAreCutWhereTheyAreTooLoud) {
  constexpr float kNoNumber = std::numeric_limits<float>::quiet_NaN();
  constexpr float kEndless = std::numeric_limits<float>::infinity();
  std::string data;
  for (const float sample : {0.0F, 0.5F, -0.5F, 1.0F, 2.0F, -1.0F, -2.0F, kNoNumber, kEndless, -kEndless}) {
    uint32_t bits = 0;
    std::memcpy(&bits, &sample, 4);
    data += media::Little(bits, 4);
  }
  EXPECT_EQ(Decoded(Wav(3, 32, data)),
            (Samples{0, 16384, -16384, 32767, 32767, -32768, -32768, 0, 32767, -32768}));
}

TEST(SoundFile, AnOddChunkIsFollowedByItsPadding) {
  media::WavFile file;
  file.chunks = "note" + media::Little(3, 4) + std::string("abc\0", 4);
  file.data = media::SampleBytes({7, 8});
  EXPECT_EQ(Decoded(file.Bytes()), (Samples{7, 8}));
}

TEST(SoundFile, EncodedSoundsHaveTheirLengthAndShape) {
  constexpr size_t kFrames = 24000;
  for (const Coding coding : {Coding::kVorbis, Coding::kOpus, Coding::kFlac, Coding::kWav24,
                              Coding::kWavFloat, Coding::kWavAdpcm}) {
    for (const int32_t channels : {1, 2}) {
      SCOPED_TRACE(testing::Message() << "coding " << static_cast<int>(coding) << ", channels " << channels);
      const std::vector<float> tone = Tone(48000, kFrames, channels);
      const DecodedSound sound = DecodeSoundFile(media::EncodedSound(coding, tone, channels, 48000), kMost);
      ASSERT_EQ(sound.error, DecodeError::kNone);
      EXPECT_EQ(sound.rate, 48000);
      EXPECT_EQ(sound.channels, channels);
      const Samples samples = SamplesOf(sound);
      // ADPCM fills its last block.
      ASSERT_GE(samples.size(), tone.size());
      EXPECT_LT(samples.size(), tone.size() + 2048);
      double worst = 0;
      for (size_t i = tone.size() / 4; i < tone.size() * 3 / 4; ++i) {
        worst = std::max(worst, std::abs(samples[i] / 32768.0 - static_cast<double>(tone[i])));
      }
      EXPECT_LT(worst, 0.05);
    }
  }
}

TEST(SoundFile, FlacGivesItsSamplesBack) {
  const std::vector<float> samples = {0, 0.5F, -0.5F, 0.25F, -1.0F};
  EXPECT_EQ(Decoded(media::EncodedSound(Coding::kFlac, samples, 1, 44100)),
            (Samples{0, 16384, -16384, 8192, -32768}));
}

// The length stands in the last 36 bits of the 18 bytes from byte 8 on: 2^36 - 1 samples are 18 days.
TEST(SoundFile, AHeaderThatClaimsDaysGivesWhatIsThere) {
  std::string flac = media::EncodedSound(Coding::kFlac, Tone(44100, 10000, 1), 1, 44100);
  flac[21] = static_cast<char>(flac[21] | 0x0F);
  flac.replace(22, 4, "\xFF\xFF\xFF\xFF");
  const DecodedSound sound = DecodeSoundFile(flac, kMost);
  EXPECT_EQ(sound.error, DecodeError::kNone);
  EXPECT_EQ(sound.samples.size(), 20000U);

  media::WavFile wav;
  wav.data = media::SampleBytes({1, 2, 3});
  wav.dataSize = 0xFFFFFFF0;
  EXPECT_EQ(Decoded(wav.Bytes()), (Samples{1, 2, 3}));
}

TEST(SoundFile, NoSoundIsLongerThanTheMost) {
  const std::string wav = media::WavBytes(Samples(50000, 1), 1, 44100);
  EXPECT_EQ(ErrorOf(wav, 100000), DecodeError::kNone);
  EXPECT_EQ(ErrorOf(wav, 99998), DecodeError::kTooLong);
  // 20 seconds of silence in a few bytes.
  const std::string flac = media::EncodedSound(Coding::kFlac, std::vector<float>(882000), 1, 44100);
  EXPECT_LT(flac.size(), 20000U);
  EXPECT_EQ(ErrorOf(flac, 1'000'000), DecodeError::kTooLong);
}

TEST(SoundFile, WhatIsNoneSaysSo) {
  EXPECT_EQ(ErrorOf("OggS and then nothing of the kind"), DecodeError::kBroken);
  EXPECT_EQ(ErrorOf("fLaC"), DecodeError::kBroken);
  EXPECT_EQ(ErrorOf(media::WavBytes({}, 1, 44100)), DecodeError::kNoSamples);
  EXPECT_EQ(ErrorOf(media::WavBytes(Samples(12), 6, 44100)), DecodeError::kManyChannels);
}

TEST(SoundFile, CutAnywhereItHarmsNothing) {
  for (const Coding coding : {Coding::kVorbis, Coding::kOpus, Coding::kFlac, Coding::kWavAdpcm}) {
    const std::string whole = media::EncodedSound(coding, Tone(48000, 4000, 2), 2, 48000);
    for (size_t size = 0; size < whole.size(); size += 1 + whole.size() / 97) {
      const DecodedSound sound = DecodeSoundFile(whole.substr(0, size), kMost);
      EXPECT_EQ(sound.samples.size() % 4, 0U);
      EXPECT_EQ(sound.samples.empty(), sound.error != DecodeError::kNone);
    }
  }
}

TEST(SoundFile, GivesUpWhenItIsTold) {
  DecodingOrders orders(kMost);
  orders.GiveUp();
  const DecodedSound sound = DecodeSoundFile(media::WavBytes({1, 2}, 1, 44100), kMost, &orders);
  EXPECT_EQ(sound.error, DecodeError::kBroken);
  EXPECT_TRUE(sound.samples.empty());
}

TEST(SoundFile, AFileThatCannotBeReadIsBroken) {
  EXPECT_EQ(DecodeSoundFileAt("/nowhere/at/all.ogg", kMost).error, DecodeError::kBroken);
  EXPECT_EQ(DecodeSoundFileAt("/", kMost).error, DecodeError::kBroken) << "a folder";
}

}  // namespace
}  // namespace platform
