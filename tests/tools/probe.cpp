// Running of the probe.
#include "tests/tools/probe.h"

#include "platform/text.h"
#include "tools/media_files/bmp.h"
#include "tools/media_files/wav.h"

namespace qlm {

const std::vector<std::string> kSmallChart = {
    "#PLAYER 1",    "#TITLE t",     "#ARTIST a",   "#GENRE g",    "#BPM 120",    "#PLAYLEVEL 4", "#RANK 1",
    "#WAV01 x.wav", "#BMP0A y.bmp", "#BPM02 60.5", "#00002:0.75", "#00011:0102", "#00103:78",    "#00218:01"};

ProcessResult ProbeTest::Probe(std::vector<std::string> arguments) const {
  arguments.insert(arguments.begin(), QLM_BINARY_DIR "/qlmprobe");
  arguments.insert(arguments.end(), {"--data", SystemFolder()});
  return qlm::Run(arguments, {{"DISPLAY", ""}, {"WAYLAND_DISPLAY", ""}}, 100);
}

std::string ProbeTest::Chart(const std::string& name, const std::vector<std::string>& lines) const {
  std::string text = "\r\n";
  for (const std::string& line : lines) text += line + "\r\n";
  WriteData(Replace(platform::DecodeUtf8(name), u"/", u"\\"), text);
  return At(name);
}

void ProbeTest::WriteWav(const std::string& name, const std::vector<int16_t>& samples) const {
  WriteData(platform::DecodeUtf8(name), media::WavBytes(samples, 1, 44100));
}

void ProbeTest::WriteBmp(const std::string& name, int32_t width, int32_t height) const {
  WriteData(platform::DecodeUtf8(name), media::SolidBmp(width, height, 0));
}

testing::AssertionResult Holds(const std::string& output, const std::string& part) {
  if (output.find(part) != std::string::npos) return testing::AssertionSuccess();
  return testing::AssertionFailure() << "missing: " << part << "\nin: " << output;
}

void ExpectKeysInOrder(const std::string& output, const std::vector<std::string>& keys) {
  size_t from = 0;
  for (const std::string& key : keys) {
    const size_t at = output.find("\n  \"" + key + "\": ", from);
    ASSERT_NE(at, std::string::npos) << key << " is missing or out of order in " << output;
    from = at + 1;
  }
  size_t count = 0;
  for (size_t at = output.find("\n  \""); at != std::string::npos; at = output.find("\n  \"", at + 1))
    ++count;
  EXPECT_EQ(count, keys.size()) << output;
}

}  // namespace qlm
