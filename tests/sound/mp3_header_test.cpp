// Detection of MPEG data and its first header, byte by byte.
#include "sound/mp3_header.h"

#include "tests/sound/sound_test.h"

namespace qlm {
namespace {

using Lines = std::vector<Text>;

class Mp3Header : public GameTest {
 protected:
  struct Found {
    int32_t answer;
    int64_t start;
    int64_t size;
    friend bool operator==(const Found&, const Found&) = default;
  };
  static Found Find(std::string head, int64_t fileSize) {
    head.resize(128);
    MpegData data;
    const int32_t answer = FindMpegData(head, fileSize, data);
    return {answer, data.start, data.size};
  }
  // The header of these four bytes, with others behind.
  MpegFormat Read(std::string header, int32_t wanted = kDecoded) {
    header.resize(300);
    MpegData data = {0, 300};
    MpegFormat format;
    EXPECT_EQ(ReadMpegHeader(header, data, format), wanted);
    return format;
  }
  static std::string Id3(const std::string& head) { return "ID3" + head; }
};

// A head of "RIFF", the form, and a chunk "data" at this place.
std::string Riff(const std::string& form, size_t place, const std::string& size) {
  std::string head = "RIFF????" + form + "????????";
  head.resize(128);
  return head.replace(place, 8, "data" + size);
}
std::string Wave(const std::string& tag) { return "RIFF????WAVEfmt ????" + tag; }

TEST_F(Mp3Header, ABareFileIsTakenWhole) {
  EXPECT_EQ(Find("\xFF\xFB\x90", 1000), (Found{kDecoded, 0, 1000}));
  EXPECT_TRUE(log.empty());
}

TEST_F(Mp3Header, RiffOfMp3) {
  EXPECT_EQ(Find(Riff("RMP3", 12, std::string("\x01\x02\x03\x04", 4)), 1000),
            (Found{kDecoded, 20, 0x04030201}));
  EXPECT_EQ(log, (Lines{u"> RIFF RMP3 Header detected.", u"> data chunk found at 12 datasize: 67305985"}));
}

TEST_F(Mp3Header, RiffOfAnotherKindIsSearchedToo) {
  EXPECT_EQ(Find(Riff("AVI ", 40, std::string("\xFF\xFF\xFF\xFF", 4)), 1000),
            (Found{kDecoded, 48, 4294967295}));
  EXPECT_EQ(log, (Lines{u"> data chunk found at 40 datasize: 4294967295"}));
}

TEST_F(Mp3Header, DataIsLookedForFrom4To120) {
  EXPECT_EQ(Find(Riff("RMP3", 120, std::string("\x05\0\0\0", 4)), 1000), (Found{kDecoded, 128, 5}));
  log.clear();
  EXPECT_EQ(Find(Riff("RMP3", 120, "").replace(120, 4, "????").replace(121, 4, "data"), 1000).answer,
            kDecodeFailed);
  EXPECT_EQ(log, (Lines{u"> RIFF RMP3 Header detected.",
                        u"RIFFデータなのに先頭128バイト内にdataチャンクが見つかりませんでした"}));
  std::string early = Riff("RMP3", 60, std::string(4, '\0'));
  EXPECT_EQ(Find(early.replace(4, 8, std::string("data\x07\0\0\0", 8)), 1000), (Found{kDecoded, 12, 7}));
}

TEST_F(Mp3Header, WaveOfPlainSamples) {
  EXPECT_EQ(Find(Wave(std::string("\x01\0", 2)), 1000).answer, kNotCompressed);
  EXPECT_EQ(log, (Lines{u"> RIFF WAVE Header detected.", u"> Format ID = 1 : LinerPCM file"}));
}

TEST_F(Mp3Header, WaveOfAnUnknownFormat) {
  EXPECT_EQ(Find(Wave("\x55\x01"), 1000).answer, kNotCompressed);
  EXPECT_EQ(log, (Lines{u"> RIFF WAVE Header detected.", u"> Format ID : unknown ID"}));
}

TEST_F(Mp3Header, WaveOfMpeg) {
  std::string head = Wave(std::string("\x55\0", 2));
  head.resize(128);
  EXPECT_EQ(Find(head.replace(70, 8, std::string("data\x10\0\0\0", 8)), 1000), (Found{kDecoded, 78, 16}));
  EXPECT_EQ(log, (Lines{u"> RIFF WAVE Header detected.", u"> Format ID = 85 : MPEG file",
                        u"> data chunk found at 70 datasize: 16"}));
}

TEST_F(Mp3Header, WaveOfMpegWhoseDataBeginsTooLate) {
  log.clear();
  EXPECT_EQ(Find(Wave(std::string("\x55\0", 2)), 1000).answer, kDecodeFailed);
  EXPECT_EQ(log.back(), u"RIFFデータなのに先頭128バイト内にdataチャンクが見つかりませんでした");
}

// 1 * 2^21 + 2 * 2^14 + 3 * 2^7 + 4 = 2130308; the tag's own header is 10.
TEST_F(Mp3Header, Id3TagIsPassedOver) {
  EXPECT_EQ(Find(Id3(std::string("\x03\0\0\x01\x02\x03\x04", 7)), 3000000),
            (Found{kDecoded, 2130318, 869682}));
  EXPECT_EQ(Find(Id3(std::string("\x03\0\0\0\0\0\xFF", 7)), 1000), (Found{kDecoded, 265, 735}));
  EXPECT_TRUE(log.empty());
}

TEST_F(Mp3Header, Id3FooterCountsFromVersion5OnWithBit1) {
  EXPECT_EQ(Find(Id3(std::string("\x05\0\x02\0\0\0\0", 7)), 1000).start, 20);
  EXPECT_EQ(Find(Id3(std::string("\x05\0\xFF\0\0\0\0", 7)), 1000).start, 20);
  EXPECT_EQ(Find(Id3(std::string("\x05\0\x10\0\0\0\0", 7)), 1000).start, 10);
  EXPECT_EQ(Find(Id3(std::string("\x04\0\x02\0\0\0\0", 7)), 1000).start, 10);
}

TEST_F(Mp3Header, Id3TagMustEndMoreThan128BytesBeforeTheEnd) {
  EXPECT_EQ(Find(Id3(std::string("\x03\0\0\0\0\0\x05", 7)), 15 + 129), (Found{kDecoded, 15, 129}));
  EXPECT_EQ(Find(Id3(std::string("\x03\0\0\0\0\0\x05", 7)), 15 + 128).answer, kDecodeFailed);
  EXPECT_EQ(log, (Lines{u"ID3タグを考えるとファイルサイズが小さすぎます"}));
}

TEST_F(Mp3Header, SyncIsAByteOf255AndABitOfFive) {
  Read(std::string("\xFE\xFB\x90\0", 4), kNotCompressed);
  Read(std::string("\xFF\0\x90\0", 4), kNotCompressed);
  Read(std::string("\xFF\x07\x90\0", 4), kNotCompressed);
  EXPECT_EQ(log, (Lines(3, u"> MP3 loading mode.")));
  for (const char bit : {'\x0A', '\x12', '\x22', '\x42', '\x82'}) {
    Read(std::string("\xFF") + bit + std::string("\x90\0", 2));
  }
}

TEST_F(Mp3Header, Layers) {
  EXPECT_EQ(Read(std::string("\xFF\xFE\x10\0", 4)).layer, 1);
  EXPECT_EQ(Read(std::string("\xFF\xFC\x10\0", 4)).layer, 2);
  EXPECT_EQ(Read(std::string("\xFF\xFA\x10\0", 4)).layer, 3);
  log.clear();
  Read(std::string("\xFF\xF8\x10\0", 4), kDecodeFailed);
  EXPECT_EQ(log, (Lines{u"> MP3 loading mode.", u"無効なレイヤです"}));
}

// 128 kbit/s at 44100 Hz: 417.96 bytes a frame.
TEST_F(Mp3Header, FormatOfAnOrdinaryFile) {
  const MpegFormat format = Read(std::string("\xFF\xFB\x90\x64", 4));
  EXPECT_EQ(format.bitrate, 128);
  EXPECT_EQ(format.sampleRate, 44100);
  EXPECT_EQ(format.channels, 2);
  EXPECT_EQ(format.blockSize, 418);
  EXPECT_EQ(log, (Lines{u"> MP3 loading mode.", u"> Format: 128kbps 44100Hz Stereo"}));
}

TEST_F(Mp3Header, OneChannelIsCalledStereoToo) {
  EXPECT_EQ(Read(std::string("\xFF\xF3\x40\xC0", 4)).channels, 1);
  EXPECT_EQ(log.back(), u"> Format: 32kbps 22050Hz Stereo");
  for (const char mode : {'\x00', '\x40', '\x80'}) {
    EXPECT_EQ(Read(std::string("\xFF\xFB\x90") + mode).channels, 2);
  }
}

TEST_F(Mp3Header, BitratesOfEachLayerAndVersion) {
  const std::vector<int32_t> first1 = {0,   32,  64,  96,  128, 160, 192, 224,
                                       256, 288, 320, 352, 384, 416, 448, 0};
  const std::vector<int32_t> first2 = {0, 32, 48, 56, 64, 80, 96, 112, 128, 160, 192, 224, 256, 320, 384, 0};
  const std::vector<int32_t> first3 = {0, 32, 40, 48, 56, 64, 80, 96, 112, 128, 160, 192, 224, 256, 320, 0};
  const std::vector<int32_t> second1 = {0, 32, 48, 56, 64, 80, 96, 112, 128, 144, 160, 176, 192, 224, 256, 0};
  const std::vector<int32_t> second = {0, 8, 16, 24, 32, 40, 48, 56, 64, 80, 96, 112, 128, 144, 160, 0};
  const auto rates = [&](char versionAndLayer) {
    std::vector<int32_t> bitrates;
    for (int index = 0; index < 16; ++index) {
      bitrates.push_back(Read({'\xFF', versionAndLayer, static_cast<char>(index << 4), '\0'}).bitrate);
    }
    return bitrates;
  };
  EXPECT_EQ(rates('\xFE'), first1);
  EXPECT_EQ(rates('\xFC'), first2);
  EXPECT_EQ(rates('\xFA'), first3);
  EXPECT_EQ(rates('\xF6'), second1);
  EXPECT_EQ(rates('\xF4'), second);
  EXPECT_EQ(rates('\xF2'), second);
  EXPECT_EQ(rates('\xE2'), second);  // MPEG-2.5
}

TEST_F(Mp3Header, SampleRates) {
  const auto rate = [&](char second, char third) { return Read({'\xFF', second, third, '\0'}).sampleRate; };
  EXPECT_EQ(rate('\xFB', '\x90'), 44100);
  EXPECT_EQ(rate('\xFB', '\x94'), 48000);
  EXPECT_EQ(rate('\xFB', '\x98'), 32000);
  EXPECT_EQ(rate('\xF3', '\x90'), 22050);
  EXPECT_EQ(rate('\xF3', '\x94'), 24000);
  EXPECT_EQ(rate('\xE3', '\x98'), 16000);
}

TEST_F(Mp3Header, WithoutARateThereIsNoBlockSize) {
  const MpegFormat format = Read(std::string("\xFF\xFB\x9C\0", 4));
  EXPECT_EQ(format.sampleRate, 0);
  EXPECT_EQ(format.blockSize, 0);
  EXPECT_EQ(log.back(), u"> Format: 128kbps 0Hz Stereo");
}

// 8 kbit/s at 16000 Hz: 72 bytes a frame. 56 at 22050: 365.71.
TEST_F(Mp3Header, BlockSizeIsThatOfLayer3OfMpeg1) {
  EXPECT_EQ(Read(std::string("\xFF\xF3\x18\0", 4)).blockSize, 72);
  EXPECT_EQ(Read(std::string("\xFF\xF3\x70\0", 4)).blockSize, 366);
}

TEST_F(Mp3Header, TheFirstHeaderIsLeftOut) {
  const std::string file = std::string(20, 'x') + std::string("\xFF\xFB\x90\0", 4) + std::string(300, 'y');
  MpegData data = {20, 200};
  MpegFormat format;
  EXPECT_EQ(ReadMpegHeader(file, data, format), kDecoded);
  EXPECT_EQ(data.start, 24);
  EXPECT_EQ(data.size, 196);
}

TEST_F(Mp3Header, ATagAtTheEndIsLeftOut) {
  std::string file = std::string("\xFF\xFB\x90\0", 4) + std::string(496, 'y');
  file.replace(500 - 128, 3, "TAG");
  for (const int64_t size : {int64_t{500}, int64_t{5000}}) {  // the second runs past the end
    MpegData data = {0, size};
    MpegFormat format;
    EXPECT_EQ(ReadMpegHeader(file, data, format), kDecoded);
    EXPECT_EQ(data.size, 500 - 128 - 4);
  }
  MpegData data = {0, 499};
  MpegFormat format;
  ReadMpegHeader(file, data, format);
  EXPECT_EQ(data.size, 495);
}

TEST_F(Mp3Header, BytesBehindTheEndAreZero) {
  MpegFormat format;
  for (const std::string file : {"", "\xFF", "\xFF\xFB"}) {
    MpegData data = {0, 2};
    const int32_t answer = ReadMpegHeader(file, data, format);
    EXPECT_EQ(answer, file.size() < 2 ? kNotCompressed : kDecoded);
    EXPECT_EQ(data.size, file.size() < 2 ? 2 : 0);
  }
  MpegData far = {int64_t{1} << 32, 100};
  EXPECT_EQ(ReadMpegHeader("\xFF\xFB\x90", far, format), kNotCompressed);
}

}  // namespace
}  // namespace qlm
