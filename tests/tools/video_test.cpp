// Videos of plays, made by the packaged encoder and taken apart again by it.
#include <signal.h>
#include <unistd.h>

#include <algorithm>
#include <chrono>
#include <cstring>
#include <filesystem>
#include <fstream>
#include <thread>

#include "tests/support/whole_file.h"
#include "tests/tools/probe.h"
#include "tools/media_files/bmp.h"

namespace qlm {
namespace {

namespace fs = std::filesystem;

constexpr int32_t kRate = 44100;

const std::string kProbe = QLM_BINARY_DIR "/qlmprobe";

// At 125 beats a minute a position unit lasts 10 ms. The one note stands at the first of measure 1, 1920 ms
// into the chart. At 50 turns a second it falls in turn 96; behind the 50 turns of the pre-roll that is
// picture 146, and 2920 ms into the video.
class VideoTest : public ProbeTest {
 protected:
  VideoTest() {
    WriteData(u"_qlmfiles\\sheet.bmp", media::SolidBmp(256, 256, 0xFFFFFF));
    WriteData(u"_qlmfiles\\bomb.brd",
              "#FILE01 sheet.bmp,000000\r\n#YPOSITION 400\r\n#JUDGEPOS_1P_L 1,0,400\r\n#CLIP01 "
              "1,0,0,8,2\r\n#CLIP02 1,0,0,64,64,0,0,2,100\r\n"
              "#NOTE11 1,0,0,80,80\r\n#BOMB_PERFECT 2\r\n");
    std::vector<int16_t> beep(kRate / 4);
    for (size_t i = 0; i < beep.size(); ++i) beep[i] = i / 22 % 2 == 0 ? 20'000 : -20'000;
    WriteWav("beep.wav", beep);
    chart_ = Chart("one.bms", {"#PLAYER 1", "#TITLE one", "#BPM 125", "#TOTAL 160", "#WAV01 beep.wav",
                               "#00111:01", "#00401:02"});
    // The encoder of this machine is sought along PATH; these stand in for it where it is to fail.
    fs::create_directories(At("bin"));
  }

  static bool HasEncoder() { return qlm::Run({"sh", "-c", "command -v ffmpeg"}).exitStatus == 0; }
  // A program of that name for the probe alone.
  void FakeEncoder(const std::string& script) const {
    const std::string file = At("bin/ffmpeg");
    std::ofstream(file) << "#!/bin/sh\n" << script;
    fs::permissions(file, fs::perms::owner_all);
  }

  std::vector<std::string> Command(std::vector<std::string> options = {}) const {
    std::vector<std::string> words = {
        kProbe, "video",  chart_,         "--out",  At("out.mp4"),           "--fps",
        "50",   "--data", SystemFolder(), "--skin", At("_qlmfiles/bomb.brd")};
    words.insert(words.end(), options.begin(), options.end());
    return words;
  }
  ProcessResult WithFake() const { return qlm::Run(Command(), {{"PATH", At("bin")}}); }

  // Brightness beside the note, where the burst alone shows, picture by picture.
  std::vector<int32_t> Brightness() const {
    const ProcessResult result =
        qlm::Run({"ffmpeg", "-loglevel", "error", "-y", "-i", At("out.mp4"), "-vf", "crop=16:16:56:392", "-f",
                  "rawvideo", "-pix_fmt", "gray", At("gray.raw")});
    EXPECT_EQ(result.exitStatus, 0) << result.errors;
    const std::string bytes = WholeFile(At("gray.raw"));
    std::vector<int32_t> pictures;
    for (size_t place = 0; place + 256 <= bytes.size(); place += 256) {
      int32_t sum = 0;
      for (size_t i = 0; i < 256; ++i) sum += static_cast<uint8_t>(bytes[place + i]);
      pictures.push_back(sum / 256);
    }
    return pictures;
  }
  // The samples of the left channel.
  std::vector<int16_t> Sound() const {
    const ProcessResult result = qlm::Run({"ffmpeg", "-loglevel", "error", "-y", "-i", At("out.mp4"), "-f",
                                           "s16le", "-ac", "1", "-ar", "44100", At("sound.raw")});
    EXPECT_EQ(result.exitStatus, 0) << result.errors;
    const std::string bytes = WholeFile(At("sound.raw"));
    std::vector<int16_t> samples(bytes.size() / 2);
    std::memcpy(samples.data(), bytes.data(), samples.size() * 2);
    return samples;
  }
  void ExpectNothingLeft() const {
    EXPECT_FALSE(fs::exists(At("out.mp4")));
    EXPECT_FALSE(fs::exists(At("out.mp4.part")));
  }

  std::string chart_;
};

// The first one that is above a height; the number of all where there is none.
template <typename T>
int64_t FirstAbove(const std::vector<T>& values, int32_t height) {
  return std::ranges::find_if(values, [&](T value) { return std::abs(int32_t{value}) > height; }) -
         values.begin();
}

TEST_F(VideoTest, BurstAndSoundOfANoteBeginTogether) {
  if (!HasEncoder()) GTEST_SKIP() << "ffmpeg is not installed";
  const ProcessResult result = qlm::Run(Command({"--limit", "3000"}));
  ASSERT_EQ(result.exitStatus, 0) << result.errors;
  EXPECT_EQ(result.errors, "") << "no progress where nobody watches";
  const std::vector<int32_t> brightness = Brightness();
  const std::vector<int16_t> sound = Sound();
  EXPECT_EQ(FirstAbove(brightness, 100), 146);
  // The encoder smears edges of the sound by a few samples.
  EXPECT_NEAR(static_cast<double>(FirstAbove(sound, 5000)), 2.92 * kRate, 0.002 * kRate);
  EXPECT_TRUE(Holds(result.output, "\"pictures\": " + std::to_string(brightness.size()) + ","));
  EXPECT_NEAR(static_cast<double>(sound.size()) / kRate, static_cast<double>(brightness.size()) / 50, 0.05);
  EXPECT_FALSE(fs::exists(At("out.mp4.part")));
}

TEST_F(VideoTest, HandsOfAnEventsFileAndOfARecordAreSeen) {
  if (!HasEncoder()) GTEST_SKIP() << "ffmpeg is not installed";
  WriteData(u"hands.txt", "1920 down 44\n2000 up 44\n");
  WriteData(u"none.txt", "");
  ASSERT_EQ(qlm::Run(Command({"--limit", "3000", "--events", At("none.txt")})).exitStatus, 0);
  EXPECT_EQ(FirstAbove(Brightness(), 100), 200 + 1) << "not struck";
  ASSERT_EQ(qlm::Run(Command({"--limit", "3000", "--events", At("hands.txt")})).exitStatus, 0);
  const int64_t struck = FirstAbove(Brightness(), 100);
  EXPECT_EQ(struck, 147) << "keys are served behind the frame of their turn";
  const ProcessResult record = Probe({"play", chart_, "--fps", "50", "--limit", "3000", "--events",
                                      At("hands.txt"), "--record", At("a.qpd")});
  ASSERT_EQ(record.exitStatus, 0) << record.errors;
  ASSERT_EQ(qlm::Run(Command({"--limit", "3000", "--replay", At("a.qpd")})).exitStatus, 0);
  EXPECT_NEAR(static_cast<double>(FirstAbove(Brightness(), 100)), static_cast<double>(struck), 1);
}

TEST_F(VideoTest, WithoutTheEncoderItSaysWhatToInstall) {
  const ProcessResult result = WithFake();
  EXPECT_EQ(result.exitStatus, 1);
  EXPECT_EQ(result.output, "");
  EXPECT_TRUE(Holds(result.errors, "install the package ffmpeg (apt-get install ffmpeg)"));
  ExpectNothingLeft();
}

// It stands for a full disk or a folder that cannot be written: its own words are on standard error.
TEST_F(VideoTest, AnEncoderThatFailsLeavesNothing) {
  FakeEncoder("for file; do :; done; : > \"${file#file:}\"; echo no room >&2; exit 1\n");
  const ProcessResult result = WithFake();
  EXPECT_EQ(result.exitStatus, 1);
  EXPECT_TRUE(Holds(result.errors, "no room"));
  EXPECT_TRUE(Holds(result.errors, "out.mp4 cannot be written"));
  ExpectNothingLeft();
}

TEST_F(VideoTest, AFailureLeavesTheFileBefore) {
  WriteData(u"out.mp4", "old");
  FakeEncoder("exit 1\n");
  EXPECT_EQ(WithFake().exitStatus, 1);
  EXPECT_EQ(WholeFile(At("out.mp4")), "old");
}

// Even while the encoder takes nothing any more.
TEST_F(VideoTest, AnEndFromOutsideLeavesNothing) {
  FakeEncoder("for file; do :; done; : > \"${file#file:}\"; exec /bin/sleep 60\n");
  Process process(Command(), {{"PATH", At("bin")}});
  for (int wait = 0; wait < 2000 && !fs::exists(At("out.mp4.part")); ++wait) {
    std::this_thread::sleep_for(std::chrono::milliseconds(5));
  }
  ASSERT_TRUE(fs::exists(At("out.mp4.part")));
  process.Signal(SIGTERM);
  EXPECT_EQ(process.Wait(30).exitStatus, 128 + SIGTERM);
  ExpectNothingLeft();
}

// The chart lasts for 9.6 s and the release behind it; the program in the encoder's place keeps what it is
// sent.
TEST_F(VideoTest, ATerminalIsToldOfEachSecond) {
  FakeEncoder("for file; do :; done; exec /bin/cat > \"${file#file:}\"\n");
  const std::string command = QLM_BINARY_DIR "/qlmprobe video " + chart_ + " --out " + At("out.mp4") +
                              " --fps 10 --limit 1000 --data " + SystemFolder();
  const ProcessResult result = qlm::Run({"script", "-qec", command, "/dev/null"},
                                        {{"PATH", At("bin") + ":/usr/bin:/bin"}, {"SHELL", "/bin/sh"}});
  EXPECT_EQ(result.exitStatus, 0) << result.output;
  EXPECT_TRUE(Holds(result.output, "\r\033[K0 of 10 s (0%)\r\033[K1 of 10 s (10%)"));
  EXPECT_TRUE(Holds(result.output, "\r\033[K{"));
  // The head, and 21 turns of a picture and its sound: ten in front of the chart and those from 0 to 1000 ms.
  constexpr size_t kPicture = 8 + 640 * 480 * 4;
  constexpr size_t kSound = 8 + kRate / 10 * 4;
  constexpr size_t kHead = 12 + 12 + (8 + 56) + (12 + 8 + 56 + 8 + 40) + (12 + 8 + 56 + 8 + 16) + 12;
  EXPECT_EQ(fs::file_size(At("out.mp4")), kHead + 21 * (kPicture + kSound));
  EXPECT_EQ(WholeFile(At("out.mp4")).substr(0, 12), std::string("RIFF\0\0\0\0AVI ", 12));
}

// A chart that is lost cannot be played again.
TEST_F(VideoTest, NeitherTheChartNorAFolderIsWrittenOver) {
  FakeEncoder(": > " + At("begun") + "\n");
  const std::string chart = WholeFile(chart_);
  for (const std::string command : {"video", "audio"}) {
    for (const std::string& out : {chart_, SystemFolder()}) {
      const ProcessResult result =
          qlm::Run({kProbe, command, chart_, "--out", out, "--limit", "100"}, {{"PATH", At("bin")}});
      EXPECT_EQ(result.exitStatus, 1);
      EXPECT_TRUE(Holds(result.errors, out + ": this is ")) << result.errors;
    }
  }
  EXPECT_EQ(WholeFile(chart_), chart);
  EXPECT_FALSE(fs::exists(At("begun")));
}

TEST_F(VideoTest, AMissingChartIsToldBeforeAnythingIsBegun) {
  FakeEncoder(": > " + At("begun") + "\n");
  const ProcessResult result =
      qlm::Run({kProbe, "video", At("none.bms"), "--out", At("out.mp4")}, {{"PATH", At("bin")}});
  EXPECT_EQ(result.exitStatus, 1);
  EXPECT_FALSE(fs::exists(At("begun")));
  ExpectNothingLeft();
}

}  // namespace
}  // namespace qlm
