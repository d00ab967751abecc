// Loads that memory does not suffice for: a program of its own, whose operator new can be made to fail.
#include <cstdint>
#include <filesystem>

#include "base/hooks.h"
#include "base/paths.h"
#include "chart/loading.h"
#include "chart/reader.h"
#include "graphics/bga.h"
#include "platform/files.h"
#include "platform/picture.h"
#include "platform/sound_device.h"
#include "sound/slots.h"
#include "state/chart.h"
#include "state/message.h"
#include "state/settings.h"
#include "state/sounds.h"
#include "state/surfaces.h"
#include "tests/chart/chart_test.h"
#include "tests/support/allocations.h"

namespace qlm {
namespace {

using Strings = std::vector<std::string>;

constexpr size_t kPlenty = SIZE_MAX;

std::string Number(uint32_t value, int bytes) {
  std::string text;
  for (int i = 0; i < bytes; ++i) text += static_cast<char>(value >> (8 * i) & 255);
  return text;
}

// Silence of one channel with 8 bits.
std::string Wav(uint32_t bytes) {
  return "RIFF" + Number(36 + bytes, 4) + "WAVEfmt " + Number(16, 4) + Number(1, 2) + Number(1, 2) +
         Number(22050, 4) + Number(22050, 4) + Number(1, 2) + Number(8, 2) + "data" + Number(bytes, 4) +
         std::string(bytes, '\x80');
}

// Black, with 24 bits.
std::string Bmp(uint32_t width, uint32_t height) {
  return "BM" + Number(0, 4) + Number(0, 4) + Number(54, 4) + Number(40, 4) + Number(width, 4) +
         Number(height, 4) + Number(1, 2) + Number(24, 2) + std::string(24, '\0') +
         std::string(size_t{width} * height * 3, '\0');
}

class MemoryTest : public ChartTest {
 protected:
  MemoryTest() { platform::OpenSoundDevice(platform::SoundOutput::kOffline); }
  ~MemoryTest() override {
    FailAllocationsAbove(kPlenty);
    ReleaseAllSounds();
    platform::CloseSoundDevice();
  }
};

TEST_F(MemoryTest, AFileThatCannotBeHeldCannotBeRead) {
  const Text path = WriteData(u"big", std::string(100'000, 'x'));
  FailAllocationsAbove(50'000);
  EXPECT_FALSE(platform::ReadFile(path));
  FailAllocationsAbove(kPlenty);
  EXPECT_TRUE(platform::ReadFile(path));
}

TEST_F(MemoryTest, APictureThatCannotBeHeldIsNone) {
  const std::string bytes = Bmp(200, 200);
  const std::span picture(reinterpret_cast<const unsigned char*>(bytes.data()), bytes.size());
  FailAllocationsAbove(100'000);
  EXPECT_EQ(platform::DecodeBmp(picture), nullptr);
  EXPECT_EQ(platform::DecodePicture(picture), nullptr);
  FailAllocationsAbove(kPlenty);
  EXPECT_NE(platform::DecodePicture(picture), nullptr);
}

TEST_F(MemoryTest, ABufferThatCannotBeMadeSaysSo) {
  const platform::SoundFormat format = {.tag = 1, .channels = 1, .samplesPerSec = 22050, .bitsPerSample = 8};
  const platform::SoundBufferPtr sound = platform::CreateSoundBuffer({.bytes = 10}, format).buffer;
  ASSERT_NE(sound, nullptr);
  FailAllocationsAbove(0);
  const platform::SoundError made = platform::CreateSoundBuffer({.bytes = 10}, format).error;
  const platform::SoundError copied = platform::DuplicateSoundBuffer(sound).error;
  FailAllocationsAbove(kPlenty);
  EXPECT_EQ(made, platform::kSoundOutOfMemory);
  EXPECT_EQ(copied, platform::kSoundOutOfMemory);
}

TEST_F(MemoryTest, ATextThatCannotBeHeldIsAChartWithoutLines) {
  std::string bytes = "\r\n#TITLE kept\r\n#00111:01\r\n";
  bytes += std::string(100'000, ' ');
  BMSInit();
  FailAllocationsAbove(150'000);  // its wide form takes 200,000
  BMSReadBytes(u"\\song\\a.bms", bytes);
  FailAllocationsAbove(kPlenty);
  EXPECT_EQ(objCount, 0);
  EXPECT_TRUE(Logged(u"    # there is no memory for its text"));
}

TEST_F(MemoryTest, ALineThatMemoryDoesNotSufficeForIsSkipped) {
  // The pump is asked at the first #WAV line, so that memory ends behind it.
  hooks.loadPump = [] { FailAllocationsAbove(10'000); };
  Read(
      {u"#TITLE before", u"#WAV01 a.wav", Join(u"#TITLE ", Text(20'000, u'x')), u"#ARTIST us", u"#00111:01"});
  FailAllocationsAbove(kPlenty);
  EXPECT_EQ(HdrTitle, u"before");
  EXPECT_EQ(HdrArtist, u"us");
  EXPECT_EQ(objCount, 1);
}

TEST_F(MemoryTest, ATableThatCannotBeMadeEndsInTheFatalMessage) {
  numObjs = 65535;
  objs = std::vector<ChartObj>();  // what is held would do
  const Text path = WriteChart({u"#00111:01"});
  FailAllocationsAbove(100'000);
  const int32_t loaded = BMSLoad(path);
  FailAllocationsAbove(kPlenty);
  EXPECT_EQ(loaded, -1);
  ASSERT_EQ(fatals.size(), 1U);
  EXPECT_EQ(fatals[0].title, u"too many numObjs!");
  EXPECT_EQ(fatals[0].message,
            u"a table of 65535 objs does not fit into the memory.\r\n"
            u"please check \"numObjs\" value in \"qlm_conf.ini\" file.");
}

TEST_F(MemoryTest, ATableLargerThanAnyEndsInTheFatalMessage) {
  for (const int32_t size : {1 << 24, INT32_MAX}) {
    fatals.clear();
    numObjs = size;
    EXPECT_EQ(BMSLoad(WriteChart({u"#00111:01"})), -1);
    EXPECT_EQ(fatals.size(), 1U) << size;
    // Without an object the bar lines ask for the table.
    EXPECT_EQ(BMSLoad(WriteChart({u"#TITLE none"})), -1);
    EXPECT_EQ(fatals.size(), 2U) << size;
  }
}

// --- the budget ---

TEST_F(MemoryTest, WhatGoesPastTheBudgetIsNotLoadedAndToldOnce) {
  LoadBudget = 1;
  WAVLoadmode = 0;
  BMPLoadmode = 0;
  WriteData(u"song\\a.wav", Wav(600'000));
  WriteData(u"song\\b.wav", Wav(600'000));
  WriteData(u"song\\c.wav", Wav(300'000));
  WriteData(u"song\\d.bmp", Bmp(300, 300));  // 360,000 bytes of pixels
  EXPECT_EQ(
      BMSLoad(WriteChart({u"#WAV01 a.wav", u"#WAV02 b.wav", u"#WAV03 c.wav", u"#BMP01 d.bmp", u"#00111:01"})),
      1);
  EXPECT_NE(WavBuffer[1], nullptr);
  EXPECT_EQ(WavBuffer[2], nullptr);
  EXPECT_NE(WavBuffer[3], nullptr);
  EXPECT_EQ(BmpSurface[1], nullptr);
  EXPECT_EQ(BmpRect[1], (Rect{}));
  EXPECT_EQ(CountLogged(u"# over the load budget of 1 MiB: b.wav"), 1);
  EXPECT_EQ(CountLogged(u"> Err[7]: DSERR_OUTOFMEMORY"), 1);
  EXPECT_EQ(CountLogged(u"# over the load budget of 1 MiB: d.bmp"), 1);
  EXPECT_EQ(loadNotice, u"over the load budget of 1 MiB: b.wav");

  // What the chart before held is let go, and the next one begins anew.
  EXPECT_EQ(BMSLoad(WriteChart({u"#WAV02 b.wav", u"#00111:01"})), 1);
  EXPECT_TRUE(loadNotice.empty());
}

TEST_F(MemoryTest, WithoutABudgetHalfOfTheMemoryIsOne) {
  LoadBudget = 0;
  WAVLoadmode = 0;
  WriteData(u"song\\a.wav", Wav(600'000));
  EXPECT_EQ(BMSLoad(WriteChart({u"#WAV01 a.wav", u"#00111:01"})), 1);
  EXPECT_NE(WavBuffer[1], nullptr);
  EXPECT_TRUE(loadNotice.empty());
}

TEST_F(MemoryTest, TitlePicturesCountToo) {
  LoadBudget = 1;
  LoadStage(WriteData(u"song\\s.bmp", Bmp(600, 600)));  // 1,440,000 bytes of pixels
  EXPECT_EQ(DDStage, nullptr);
  EXPECT_EQ(message.text, u"over the load budget of 1 MiB: s.bmp");
  EXPECT_EQ(StageW, 640);
}

// --- long charts ---

TEST_F(MemoryTest, AChartOfMoreThan256MiBIsRefused) {
  const Text path = WriteChart({u"#00111:01"});
  std::filesystem::resize_file(platform::SystemPath(path), (256U << 20) + 1);  // a hole takes no disk
  FailAllocationsAbove(1 << 20);
  EXPECT_EQ(BMSLoad(path), -1);
  FailAllocationsAbove(kPlenty);
  EXPECT_EQ(CountLogged(u"chart of more than 256 MiB refused: chart.bms"), 1);
  EXPECT_EQ(message.text, u"chart of more than 256 MiB refused: chart.bms");
  EXPECT_FALSE(Logged(u"[BMSRead] chart.bms"));
}

}  // namespace
}  // namespace qlm
