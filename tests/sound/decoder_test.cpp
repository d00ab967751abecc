// MPEG files of all kinds as sounds. Encoders make those with something to hear; silent frames are put
// together here.
#include "sound/decoder.h"

#include <cmath>
#include <filesystem>
#include <numbers>

#include "base/paths.h"
#include "platform/clock.h"
#include "sound/buffers.h"
#include "tests/sound/silent_frames.h"
#include "tests/sound/sound_test.h"
#include "tests/support/process.h"

namespace qlm {
namespace {

using Lines = std::vector<Text>;

std::string Id3Tag(size_t size) {
  std::string tag = std::string("ID3\x03\0\0", 6);
  for (const int shift : {21, 14, 7, 0}) tag += static_cast<char>((size >> shift) & 127);
  tag.resize(10 + size);
  return tag;
}

class DecoderTest : public SoundTest {
 protected:
  struct Decoded {
    int32_t answer = 1;
    SoundBufferPtr buffer;
    platform::SoundDescription description;
    platform::SoundFormat format;
  };
  Decoded Decode(const std::string& bytes) {
    log.clear();
    Decoded decoded;
    const Text path = WriteData(u"a.mp3", bytes);
    decoded.answer = DecodeToBuffer(path, decoded.buffer, decoded.description, decoded.format);
    return decoded;
  }
  // A second of a tone through an encoder: the bytes of the file that it makes.
  std::string Encoded(uint32_t rate, const std::vector<std::string>& encoder, uint16_t channels = 1) {
    Samples samples;
    for (uint32_t i = 0; i < rate; ++i) {
      const double angle = 2 * std::numbers::pi * 440 * i / rate;
      for (int c = 0; c < channels; ++c) samples.push_back(static_cast<int16_t>(16000 * std::sin(angle)));
    }
    WriteData(u"tone.wav", media::WavBytes(samples, channels, rate));
    std::vector<std::string> command = encoder;
    command.insert(command.end(), {SystemFolder() + "/tone.wav", SystemFolder() + "/tone.mp3"});
    EXPECT_EQ(qlm::Run(command).exitStatus, 0);
    return ReadBytes(Join(AppPath, u"\\tone.mp3"));
  }
};

TEST_F(DecoderTest, FilesUnder129BytesAreRefused) {
  EXPECT_EQ(Decode(kLayer1.Times(3).substr(0, 128)).answer, kDecodeFailed);
  EXPECT_EQ(log, (Lines{u"ファイルサイズが小さすぎます"}));
  EXPECT_EQ(Decode(kLayer1.Times(3).substr(0, 129)).answer, kDecoded);
}

TEST_F(DecoderTest, AMissingFileIsToldOf) {
  Decoded decoded;
  EXPECT_EQ(DecodeToBuffer(Join(AppPath, u"\\none.mp3"), decoded.buffer, decoded.description, decoded.format),
            kDecodeFailed);
  EXPECT_EQ(log, (Lines{u"CreateFileに失敗"}));
}

TEST_F(DecoderTest, EachStepIsLogged) {
  EXPECT_EQ(Decode(kLayer3.Times(5)).answer, kDecoded);
  EXPECT_EQ(log,
            (Lines{u"> MP3 loading mode.", u"> Format: 128kbps 48000Hz Stereo", u"> Decode complete in 0ms",
                   u"acmStreamUnprepareHeaderに失敗\n続ける？", u"acmStreamCloseに失敗\n続ける？"}));
}

TEST_F(DecoderTest, TheFirstFrameIsLostAndNothingElse) {
  for (const SilentFrames& frames : {kLayer1, kLayer2, kLayer3, kMpeg2, kMpeg25}) {
    const Decoded decoded = Decode(frames.Times(10));
    ASSERT_EQ(decoded.answer, kDecoded);
    EXPECT_EQ(decoded.description.bytes, 9 * frames.samples * frames.channels * 2);
    EXPECT_EQ(decoded.format.tag, 1);
    EXPECT_EQ(decoded.format.samplesPerSec, frames.rate);
    EXPECT_EQ(decoded.format.channels, frames.channels);
    EXPECT_EQ(decoded.format.bitsPerSample, 16);
    EXPECT_EQ(decoded.format.blockAlign, 2 * frames.channels);
    EXPECT_EQ(decoded.format.avgBytesPerSec, frames.rate * 2 * frames.channels);
    EXPECT_NE(decoded.buffer, nullptr);
  }
}

// The header tells 16000 Hz, as of MPEG-2; the buffer has the rate that the frames really have.
TEST_F(DecoderTest, TheRateIsTheDecodersOwn) {
  const Decoded decoded = Decode(kMpeg25.Times(10));
  EXPECT_EQ(log[1], u"> Format: 32kbps 16000Hz Stereo");
  EXPECT_EQ(decoded.format.samplesPerSec, 8000U);
}

TEST_F(DecoderTest, WithoutASampleTheSizeIsWrong) {
  EXPECT_EQ(Decode(kLayer3.header + std::string(500, '\0')).answer, kDecodeFailed);
  EXPECT_EQ(log, (Lines{u"> MP3 loading mode.", u"> Format: 128kbps 48000Hz Stereo",
                        u"変換後サイズが異常です", u"acmStreamCloseに失敗\n続ける？"}));
}

TEST_F(DecoderTest, AFileThatBeginsOtherwiseIsTakenForPcm) {
  EXPECT_EQ(Decode(std::string("\xFF\0", 2) + kLayer3.Times(3)).answer, kNotCompressed);
  EXPECT_EQ(Decode(std::string(10, '\0') + kLayer3.Times(3)).answer, kNotCompressed);
}

TEST_F(DecoderTest, BehindAnId3Tag) {
  for (const size_t size : {size_t{0}, size_t{1}, size_t{127}, size_t{128}, size_t{4086}, size_t{20000}}) {
    EXPECT_EQ(Decode(Id3Tag(size) + kLayer3.Times(4)).description.bytes, 3U * 1152 * 4) << size;
  }
}

TEST_F(DecoderTest, WrappedInRiff) {
  const std::string data = kLayer3.Times(4);
  const std::string chunk = Chunk("data", data);
  EXPECT_EQ(Decode("RIFF" + Little(4 + chunk.size(), 4) + "RMP3" + chunk).description.bytes, 3U * 1152 * 4);
  const std::string format = Little(85, 2) + Little(2, 2) + Little(48000, 4) + Little(16000, 4) +
                             Little(1, 2) + Little(0, 2) + Little(12, 2) + std::string(12, '\0');
  const std::string wave = "WAVE" + Chunk("fmt ", format) + chunk;
  EXPECT_EQ(Decode("RIFF" + Little(wave.size(), 4) + wave).description.bytes, 3U * 1152 * 4);
  EXPECT_EQ(log[1], u"> Format ID = 85 : MPEG file");
  // 12 + 38 to the first chunk's end, so the filler's 70 bytes bring "data" to place 128.
  const std::string late = "WAVE" + Chunk("fmt ", format) + Chunk("fill", std::string(70, ' ')) + chunk;
  EXPECT_EQ(Decode("RIFF" + Little(late.size(), 4) + late).answer, kDecodeFailed);
  EXPECT_EQ(log.back(), u"RIFFデータなのに先頭128バイト内にdataチャンクが見つかりませんでした");
}

TEST_F(DecoderTest, ATagAtTheEndIsNotDecoded) {
  std::string tag = "TAG";
  tag.resize(128, 'x');
  EXPECT_EQ(Decode(kLayer3.Times(4) + tag).description.bytes, 3U * 1152 * 4);
}

TEST_F(DecoderTest, JunkBetweenFramesIsPassedOver) {
  const Decoded decoded = Decode(kLayer3.Times(4) + std::string(5000, 'j') + kLayer3.Times(4));
  EXPECT_EQ(decoded.answer, kDecoded);
  EXPECT_GE(decoded.description.bytes, 6U * 1152 * 4);
}

TEST_F(DecoderTest, AFrameOfAnotherFormatEndsTheSound) {
  const Decoded decoded = Decode(kLayer3.Times(4) + kMpeg2.Times(4));
  EXPECT_EQ(decoded.answer, kDecoded);
  EXPECT_EQ(decoded.format.samplesPerSec, 48000U);
  EXPECT_EQ(decoded.description.bytes, 3U * 1152 * 4);
}

TEST_F(DecoderTest, CutShortAtEveryByteOfTheFirstKilobyte) {
  const std::string file = kLayer3.Times(8);
  for (size_t length = 0; length <= 1024; ++length) {
    const Decoded decoded = Decode(file.substr(0, length));
    // Whole frames but the first.
    const size_t whole = length / 384;
    if (decoded.answer == kDecoded) {
      EXPECT_LE(decoded.description.bytes, whole * 1152 * 4) << length;
    }
    EXPECT_EQ(decoded.answer == kDecoded, decoded.buffer != nullptr) << length;
    if (whole >= 2) {
      EXPECT_EQ(decoded.answer, kDecoded) << length;
    }
    if (length < 384) {
      EXPECT_NE(decoded.answer, kDecoded) << length;
    }
  }
}

TEST_F(DecoderTest, EveryRateAndModeOfAnEncoder) {
  for (const uint32_t rate : {8000U, 11025U, 12000U, 16000U, 22050U, 24000U, 32000U, 44100U, 48000U}) {
    for (const std::string mode : {"m", "s", "j"}) {
      for (const bool variable : {false, true}) {
        std::vector<std::string> command = {"lame", "--quiet", "-m", mode};
        if (variable) command.insert(command.end(), {"-V", "5", "--resample", std::to_string(rate / 1000.0)});
        const uint16_t channels = mode == "m" ? 1 : 2;
        const Decoded decoded = Decode(Encoded(rate, command, channels));
        ASSERT_EQ(decoded.answer, kDecoded) << rate << mode;
        EXPECT_EQ(decoded.format.samplesPerSec, rate);
        EXPECT_EQ(decoded.format.channels, channels);
        // A second, and the encoder's delay and filling at both ends.
        const uint32_t frames = decoded.description.bytes / decoded.format.blockAlign;
        EXPECT_GE(frames, rate) << mode;
        EXPECT_LE(frames, rate + 4 * 1152) << mode;
      }
    }
  }
}

TEST_F(DecoderTest, Layer2OfAnEncoder) {
  for (const uint32_t rate : {16000U, 22050U, 24000U, 32000U, 44100U, 48000U}) {
    const Decoded decoded = Decode(Encoded(rate, {"twolame", "-b", "64", "--quiet"}, 2));
    ASSERT_EQ(decoded.answer, kDecoded) << rate;
    EXPECT_EQ(decoded.format.samplesPerSec, rate);
    const uint32_t frames = decoded.description.bytes / decoded.format.blockAlign;
    EXPECT_GE(frames + 2 * 1152, rate);
    EXPECT_LE(frames, rate + 2 * 1152);
  }
}

// What surrounds the frames changes none of their samples.
TEST_F(DecoderTest, AnEncodersFileSoundsTheSameInEveryWrapping) {
  const std::string bare = Encoded(44100, {"lame", "--quiet", "-b", "128", "-t"});
  const Decoded wanted = Decode(bare);
  ASSERT_EQ(wanted.answer, kDecoded);
  const uint32_t frames = wanted.description.bytes / wanted.format.blockAlign;
  wanted.buffer->Play(false);
  const Samples samples = Render(frames);

  const std::string chunk = Chunk("data", bare);
  const std::string wave =
      "WAVE" +
      Chunk("fmt ", Little(85, 2) + Little(1, 2) + Little(44100, 4) + Little(16000, 4) + Little(1, 2) +
                        Little(0, 2) + Little(12, 2) + std::string(12, '\0')) +
      chunk;
  std::string tagAtTheEnd = "TAG";
  tagAtTheEnd.resize(128, 'x');
  std::vector<std::string> files = {"RIFF" + Little(wave.size(), 4) + wave,
                                    "RIFF" + Little(4 + chunk.size(), 4) + "RMP3" + chunk,
                                    bare + tagAtTheEnd};
  for (const size_t size : {size_t{0}, size_t{1}, size_t{127}, size_t{128}, size_t{4086}, size_t{20000}}) {
    files.push_back(Id3Tag(size) + bare);
  }
  for (size_t i = 0; i < files.size(); ++i) {
    const Decoded decoded = Decode(files[i]);
    ASSERT_EQ(decoded.answer, kDecoded) << i;
    ASSERT_EQ(decoded.description.bytes, wanted.description.bytes) << i;
    decoded.buffer->Play(false);
    EXPECT_EQ(Render(frames), samples) << i;
  }
}

// 128 kbit/s at 44100 Hz: 144 * 128000 / 44100 is 417.96, so a frame has 417 or 418 bytes.
TEST_F(DecoderTest, AnEncodersFileCutShortAtEveryByteOfTheFirstKilobyte) {
  const std::string file = Encoded(44100, {"lame", "--quiet", "-b", "128", "-t"});
  ASSERT_GT(file.size(), 1024U);
  for (size_t length = 0; length <= 1024; ++length) {
    const Decoded decoded = Decode(file.substr(0, length));
    EXPECT_EQ(decoded.answer == kDecoded, decoded.buffer != nullptr) << length;
    if (decoded.answer == kDecoded) {
      // The bytes of a frame that was cut may look like one more.
      EXPECT_LE(decoded.description.bytes, (length / 417 + 1) * 1152 * 2) << length;
    }
    if (length < 417) {
      EXPECT_NE(decoded.answer, kDecoded) << length;
    }
  }
}

// 440 Hz have 440 upward zero crossings in a second.
TEST_F(DecoderTest, ItSoundsAsItDid) {
  const Decoded decoded = Decode(Encoded(44100, {"lame", "--quiet", "-b", "128"}));
  ASSERT_EQ(decoded.answer, kDecoded);
  decoded.buffer->Play(false);
  const Samples samples = Render(decoded.description.bytes / decoded.format.blockAlign);
  int crossings = 0;
  int16_t peak = 0;
  for (size_t i = 1; i < samples.size(); ++i) {
    if (samples[i - 1] < -1000 && samples[i] >= -1000) ++crossings;
    peak = std::max(peak, samples[i]);
  }
  EXPECT_NEAR(crossings, 440, 2);
  EXPECT_NEAR(peak, 16000, 1000);
}

TEST_F(DecoderTest, AChartsSoundIsFoundAndDecoded) {
  WriteData(u"kick.mp3", kLayer3.Times(4));
  Text path = Join(AppPath, u"\\kick.wav");
  platform::SoundDescription description;
  platform::SoundFormat format;
  platform::SoundError error = -1;
  EXPECT_NE(CreateSndBuf(path, description, format, error), nullptr);
  EXPECT_EQ(error, platform::kSoundOk);
  EXPECT_EQ(log.front(), u"CreateSndBuf:kick.mp3");
  EXPECT_EQ(log.back(), u"48000Hz 16bits 2ch 16bps 192000byte/sec 0bytes");
}

}  // namespace
}  // namespace qlm
