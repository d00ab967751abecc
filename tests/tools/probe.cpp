// Running of the probe.
#include "tests/tools/probe.h"

#include "platform/text.h"

namespace qlm {
namespace {

std::string Number(uint32_t value, int bytes) {
  std::string text;
  for (int i = 0; i < bytes; ++i) text += static_cast<char>(value >> (8 * i) & 255);
  return text;
}

}  // namespace

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
  const auto bytes = static_cast<uint32_t>(samples.size() * 2);
  std::string wav = "RIFF" + Number(36 + bytes, 4) + "WAVEfmt " + Number(16, 4) + Number(1, 2) +
                    Number(1, 2) + Number(44100, 4) + Number(88200, 4) + Number(2, 2) + Number(16, 2) +
                    "data" + Number(bytes, 4);
  for (const int16_t sample : samples) wav += Number(static_cast<uint16_t>(sample), 2);
  WriteData(platform::DecodeUtf8(name), wav);
}

void ProbeTest::WriteBmp(const std::string& name, int32_t width, int32_t height) const {
  const auto row = static_cast<uint32_t>((width * 3 + 3) / 4 * 4);
  const uint32_t size = row * static_cast<uint32_t>(height);
  WriteData(platform::DecodeUtf8(name), "BM" + Number(54 + size, 4) + Number(0, 4) + Number(54, 4) +
                                            Number(40, 4) + Number(static_cast<uint32_t>(width), 4) +
                                            Number(static_cast<uint32_t>(height), 4) + Number(1, 2) +
                                            Number(24, 2) + std::string(24 + size, '\0'));
}

testing::AssertionResult Holds(const std::string& output, const std::string& part) {
  if (output.find(part) != std::string::npos) return testing::AssertionSuccess();
  return testing::AssertionFailure() << "missing: " << part << "\nin: " << output;
}

}  // namespace qlm
