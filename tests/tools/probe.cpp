// Running of the probe.
#include "tests/tools/probe.h"

#include "platform/text.h"
#include "tools/media_files/bmp.h"
#include "tools/media_files/wav.h"

namespace qlm {
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

}  // namespace qlm
