// Sound files: which file is taken for a name, what its header has to be, and what the buffer then holds.
#include "sound/buffers.h"

#include <filesystem>

#include "base/paths.h"
#include "tests/sound/sound_test.h"

namespace qlm {
namespace {

class SoundFiles : public SoundTest {
 protected:
  struct Made {
    SoundBufferPtr buffer;
    Text path;
    platform::SoundDescription description;
    platform::SoundFormat format;
    platform::SoundError error = -1;
  };
  Made Create(TextView name) {
    Made made;
    made.path = Join(AppPath, u"\\", name);
    made.buffer = CreateSndBuf(made.path, made.description, made.format, made.error);
    return made;
  }
  Made CreateFrom(const std::string& bytes) {
    WriteData(u"a.wav", bytes);
    return Create(u"a.wav");
  }
  Samples Play(const Made& made, size_t frames) {
    if (made.buffer == nullptr) return {};
    made.buffer->Play(false);
    return Render(frames);
  }
  Text Inside(TextView name) const { return Join(AppPath, u"\\", name); }
};

TEST_F(SoundFiles, APlainFileFillsABuffer) {
  const Made made = CreateFrom(MonoWav({1, -2, 3}, 44100));
  EXPECT_EQ(made.error, platform::kSoundOk);
  EXPECT_EQ(Play(made, 4), Samples({1, -2, 3, 0}));
  EXPECT_EQ(made.description.bytes, 6U);
  EXPECT_EQ(made.description.flags, 0x181E0U);
  EXPECT_EQ(made.format.tag, 1);
  EXPECT_EQ(made.format.channels, 1);
  EXPECT_EQ(made.format.samplesPerSec, 44100U);
  EXPECT_EQ(made.format.avgBytesPerSec, 88200U);
  EXPECT_EQ(made.format.blockAlign, 2);
  EXPECT_EQ(made.format.bitsPerSample, 16);
  EXPECT_EQ(made.path, Inside(u"a.wav"));
  EXPECT_EQ(log, std::vector<Text>({u"CreateSndBuf:a.wav", u"ファイルサイズが小さすぎます"}));
}

TEST_F(SoundFiles, AMissingFileIsLoggedByItsNameAlone) {
  const Made made = Create(u"folder\\kick.wav");
  EXPECT_EQ(made.buffer, nullptr);
  EXPECT_EQ(made.error, platform::kSoundOk);
  EXPECT_EQ(log, std::vector<Text>({u"LoadWav:kick.wav - ERROR"}));
}

TEST_F(SoundFiles, AFolderIsNoSoundFile) {
  std::filesystem::create_directory(SystemFolder() + "/kick.wav");
  EXPECT_EQ(Create(u"kick.wav").buffer, nullptr);
  EXPECT_TRUE(Logged(u"LoadWav:kick.wav - ERROR"));
}

TEST_F(SoundFiles, TheMp3BesideAMissingWavIsTakenAndThePathCorrected) {
  WriteData(u"kick.mp3", MonoWav({5}));
  const Made made = Create(u"kick.wav");
  EXPECT_EQ(made.path, Inside(u"kick.mp3"));
  EXPECT_EQ(Play(made, 1), Samples({5}));
  EXPECT_EQ(log, std::vector<Text>({u"CreateSndBuf:kick.mp3", u"ファイルサイズが小さすぎます"}));
}

TEST_F(SoundFiles, AnyMissingExtensionFindsTheMp3) {
  WriteData(u"kick.mp3", MonoWav({5}));
  EXPECT_EQ(Create(u"kick.ogg").path, Inside(u"kick.mp3"));
}

TEST_F(SoundFiles, AnExistingFileIsNeverCorrected) {
  WriteData(u"kick.mp3", MonoWav({5}));
  WriteData(u"kick.wav", MonoWav({6}));
  EXPECT_EQ(Play(Create(u"kick.wav"), 1), Samples({6}));
}

TEST_F(SoundFiles, TheWavBesideAMissingMp3IsNotFound) {
  WriteData(u"kick.wav", MonoWav({5}));
  const Made made = Create(u"kick.mp3");
  EXPECT_EQ(made.buffer, nullptr);
  EXPECT_EQ(made.path, Inside(u"kick.mp3"));
  EXPECT_TRUE(Logged(u"LoadWav:kick.mp3 - ERROR"));
}

TEST_F(SoundFiles, TheWavBesideAMissingMp3IsFoundOnlyWithAnMp3wav) {
  WriteData(u"kick.wav", MonoWav({5}));
  WriteData(u"kick.mp3wav", "");
  const Made made = Create(u"kick.mp3");
  EXPECT_EQ(made.path, Inside(u"kick.wav"));
  EXPECT_EQ(Play(made, 1), Samples({5}));
}

TEST_F(SoundFiles, AnMp3wavWithoutAWavLeadsToAFileThatIsNotThere) {
  WriteData(u"kick.mp3wav", MonoWav({5}));
  const Made made = Create(u"kick.mp3");
  EXPECT_EQ(made.path, Inside(u"kick.wav"));
  EXPECT_EQ(made.buffer, nullptr);
  EXPECT_EQ(made.error, platform::kSoundBadFormat);
}

TEST_F(SoundFiles, TheMp3ComesBeforeTheMp3wav) {
  WriteData(u"kick.mp3", MonoWav({7}));
  WriteData(u"kick.wav", MonoWav({5}));
  WriteData(u"kick.oggwav", "");
  EXPECT_EQ(Create(u"kick.ogg").path, Inside(u"kick.mp3"));
}

TEST_F(SoundFiles, OnlyTheLastDotIsReplaced) {
  WriteData(u"kick.v2.mp3", MonoWav({7}));
  EXPECT_EQ(Create(u"kick.v2.wav").path, Inside(u"kick.v2.mp3"));
}

TEST_F(SoundFiles, OtherLetterCaseIsFound) {
  WriteData(u"KICK.WAV", MonoWav({7}));
  EXPECT_EQ(Play(Create(u"kick.wav"), 1), Samples({7}));
}

TEST_F(SoundFiles, EightBitsAndStereoAreRead) {
  WavFileBytes file;
  file.channels = 2;
  file.bits = 8;
  file.data = std::string("\x81\x81\x7F\x7F", 4);
  EXPECT_EQ(Play(CreateFrom(file.Bytes()), 3), Samples({256, -256, 0}));
}

TEST_F(SoundFiles, TheFormatChunkIsRecognisedByItsPlaceAlone) {
  WavFileBytes file;
  file.formatId = "junk";
  file.data = SampleBytes({4});
  EXPECT_EQ(Play(CreateFrom(file.Bytes()), 1), Samples({4}));
}

TEST_F(SoundFiles, TheLengthOfTheRiffFormIsNotLookedAt) {
  std::string bytes = MonoWav({4});
  bytes.replace(4, 4, Little(0, 4));
  EXPECT_EQ(Play(CreateFrom(bytes), 1), Samples({4}));
}

TEST_F(SoundFiles, ALongerFormatIsPassedOver) {
  WavFileBytes file;
  file.formatSize = 18;
  file.moreFormat = std::string(2, '\0');
  file.data = SampleBytes({4, 5});
  EXPECT_EQ(Play(CreateFrom(file.Bytes()), 2), Samples({4, 5}));
}

TEST_F(SoundFiles, OtherChunksArePassedOver) {
  WavFileBytes file;
  file.chunks = Chunk("fact", "abcd") + Chunk("LIST", "data and more data") + Chunk("none", "");
  file.data = SampleBytes({4, 5});
  EXPECT_EQ(Play(CreateFrom(file.Bytes()), 2), Samples({4, 5}));
}

TEST_F(SoundFiles, OddChunksAreNotPadded) {
  WavFileBytes file;
  file.chunks = Chunk("LIST", "odd");
  file.data = SampleBytes({4, 5});
  EXPECT_EQ(Play(CreateFrom(file.Bytes()), 2), Samples({4, 5}));
}

TEST_F(SoundFiles, APaddedOddChunkHidesTheData) {
  WavFileBytes file;
  file.chunks = Chunk("LIST", "odd", true);
  file.data = SampleBytes({4, 5});
  const Made made = CreateFrom(file.Bytes());
  EXPECT_EQ(made.buffer, nullptr);
  EXPECT_EQ(made.error, platform::kSoundBadFormat);
}

TEST_F(SoundFiles, AnyFormatTagIsTakenForPcm) {
  WavFileBytes file;
  file.tag = 0xFFFE;
  file.data = SampleBytes({4, 5});
  const Made made = CreateFrom(file.Bytes());
  EXPECT_EQ(made.format.tag, 1);
  EXPECT_EQ(Play(made, 2), Samples({4, 5}));
}

TEST_F(SoundFiles, FormatsThatTheDeviceCannotTakeFail) {
  WavFileBytes file;
  file.data = std::string(48, '\1');
  file.bits = 24;
  EXPECT_EQ(CreateFrom(file.Bytes()).error, platform::kSoundBadFormat);
  file.bits = 4;
  EXPECT_EQ(CreateFrom(file.Bytes()).error, platform::kSoundBadFormat);
  file.bits = 16;
  file.channels = 6;
  EXPECT_EQ(CreateFrom(file.Bytes()).error, platform::kSoundBadFormat);
  file.channels = 1;
  file.rate = 0;
  EXPECT_EQ(CreateFrom(file.Bytes()).error, platform::kSoundBadFormat);
}

TEST_F(SoundFiles, DataThatEndsEarlyIsFilledWithZeros) {
  WavFileBytes file;
  file.data = SampleBytes({4, 5});
  file.dataSize = 8;
  const Made made = CreateFrom(file.Bytes());
  EXPECT_EQ(made.description.bytes, 8U);
  made.buffer->Play(false);
  EXPECT_EQ(Render(3), Samples({4, 5, 0}));
  EXPECT_TRUE(made.buffer->Playing());
  Render(1);
  EXPECT_FALSE(made.buffer->Playing());
}

TEST_F(SoundFiles, DataInFrontOfMoreChunksIsCutAtItsLength) {
  WavFileBytes file;
  file.data = SampleBytes({4, 5, 6, 7});
  file.dataSize = 4;
  EXPECT_EQ(Play(CreateFrom(file.Bytes()), 3), Samples({4, 5, 0}));
}

TEST_F(SoundFiles, MoreThan256MebibytesIsOutOfMemory) {
  WavFileBytes file;
  file.data = SampleBytes({4});
  file.dataSize = (256 << 20) + 1;
  EXPECT_EQ(CreateFrom(file.Bytes()).error, platform::kSoundOutOfMemory);
  file.dataSize = 0xFFFFFFFF;
  EXPECT_EQ(CreateFrom(file.Bytes()).error, platform::kSoundOutOfMemory);
  file.dataSize = 256 << 20;
  EXPECT_EQ(CreateFrom(file.Bytes()).error, platform::kSoundOk);
}

TEST_F(SoundFiles, EmptyDataIsRefused) {
  const Made made = CreateFrom(MonoWav({}));
  EXPECT_EQ(made.buffer, nullptr);
  EXPECT_EQ(made.error, platform::kSoundInvalidParam);
}

TEST_F(SoundFiles, ALongFileIsReadToItsEnd) {
  Samples samples;
  for (int i = 0; i < 1'200'000; ++i) samples.push_back(static_cast<int16_t>(i * 7 + i / 65536));
  WavFileBytes file;
  file.chunks = Chunk("LIST", std::string(1'500'000, 'x'));
  file.data = SampleBytes(samples);
  EXPECT_EQ(Play(CreateFrom(file.Bytes()), samples.size()), samples);
}

TEST_F(SoundFiles, CountlessChunksArePassedOver) {
  WavFileBytes file;
  for (int i = 0; i < 300'000; ++i) file.chunks += Chunk("none", "");
  file.data = SampleBytes({4});
  EXPECT_EQ(Play(CreateFrom(file.Bytes()), 1), Samples({4}));
}

class WavHeaders : public SoundFiles {
 protected:
  void SetUp() override { WavDataSize = 1234; }
  // Neither a record nor a new data size.
  void ExpectUnrecognised(const std::string& bytes) {
    const platform::SoundFormat format = ReadWavHeader(WriteData(u"b.wav", bytes));
    EXPECT_EQ(format.tag, 0);
    EXPECT_EQ(format.channels, 0);
    EXPECT_EQ(format.samplesPerSec, 0U);
    EXPECT_EQ(format.avgBytesPerSec, 0U);
    EXPECT_EQ(format.blockAlign, 0);
    EXPECT_EQ(format.bitsPerSample, 0);
    EXPECT_EQ(WavDataSize, 1234U);
  }
};

TEST_F(WavHeaders, TheRecordIsReadAsTheFileHasIt) {
  WavFileBytes file;
  file.tag = 0x1122;
  file.channels = 0x3344;
  file.rate = 0x55667788;
  file.bytesPerSecond = 0x99AABBCC;
  file.align = 0xDDEE;
  file.bits = 0xFF01;
  file.data = "abcde";
  const platform::SoundFormat format = ReadWavHeader(WriteData(u"b.wav", file.Bytes()));
  EXPECT_EQ(format.tag, 0x1122);
  EXPECT_EQ(format.channels, 0x3344);
  EXPECT_EQ(format.samplesPerSec, 0x55667788U);
  EXPECT_EQ(format.avgBytesPerSec, 0x99AABBCCU);
  EXPECT_EQ(format.blockAlign, 0xDDEE);
  EXPECT_EQ(format.bitsPerSample, 0xFF01);
  EXPECT_EQ(WavDataSize, 5U);
}

TEST_F(WavHeaders, OtherFormsAreNotRecognised) {
  WavFileBytes file;
  file.data = SampleBytes({4});
  file.form = "RIFX";
  ExpectUnrecognised(file.Bytes());
  file.form = "RIFF";
  file.kind = "RMP3";
  ExpectUnrecognised(file.Bytes());
  file.kind = "wave";
  ExpectUnrecognised(file.Bytes());
}

TEST_F(WavHeaders, AFormatOfLessThan16BytesIsNotRecognised) {
  WavFileBytes file;
  file.data = SampleBytes({4});
  file.formatSize = 15;
  ExpectUnrecognised(file.Bytes());
}

TEST_F(WavHeaders, FilesCutShortAreNotRecognised) {
  const std::string whole = MonoWav({4});
  for (size_t length = 0; length < 44; ++length) {
    SCOPED_TRACE(length);
    ExpectUnrecognised(whole.substr(0, length));
  }
}

TEST_F(WavHeaders, AFileWithoutDataIsNotRecognised) {
  WavFileBytes file;
  file.dataId = "DATA";
  ExpectUnrecognised(file.Bytes());
}

TEST_F(WavHeaders, SizesFarPastTheEndAreHarmless) {
  WavFileBytes file;
  file.data = SampleBytes({4});
  file.formatSize = 0xFFFFFFFF;
  ExpectUnrecognised(file.Bytes());
  file.formatSize = 16;
  file.chunks = "LIST" + Little(0xFFFFFFFF, 4);
  ExpectUnrecognised(file.Bytes());
}

TEST_F(WavHeaders, AMissingFileIsNotRecognised) {
  EXPECT_EQ(ReadWavHeader(Inside(u"none.wav")).channels, 0);
  EXPECT_EQ(WavDataSize, 1234U);
}

TEST_F(WavHeaders, WhatIsNotRecognisedIsCreatedWithTheSizeOfTheFileBefore) {
  CreateFrom(MonoWav({1, 2, 3, 4}));
  const Made made = CreateFrom(std::string("RIFF\x0C\0\0\0WAVEfmt \x10\0\0\0", 20));
  EXPECT_EQ(made.description.bytes, 8U);
  EXPECT_EQ(made.error, platform::kSoundBadFormat);
  EXPECT_EQ(made.format.tag, 1);
}

}  // namespace
}  // namespace qlm
