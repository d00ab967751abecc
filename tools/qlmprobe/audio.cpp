// The command `audio`: the sound of a play as a WAV file.
#include <algorithm>
#include <array>
#include <cstdio>
#include <cstdlib>
#include <fstream>

#include "platform/sound_device.h"
#include "state/skin.h"
#include "tools/qlmprobe/commands.h"
#include "tools/qlmprobe/engine.h"
#include "tools/qlmprobe/play_run.h"

namespace probe {
namespace {

constexpr int64_t kRate = 44100;
constexpr int64_t kChannels = 2;
constexpr uint32_t kHeaderBytes = 44;

// Frames of sound before a moment; below 0 in the pre-roll.
int64_t FramesAt(int64_t ms) {
  const int64_t thousandths = ms * kRate;
  return thousandths / 1000 - (thousandths % 1000 < 0 ? 1 : 0);
}

// Renders what is heard from one turn to the next, so that each start falls on the sample of its turn.
class Recorder : public PlayWatcher {
 public:
  explicit Recorder(int64_t wanted) : wanted_(wanted) {}

  void TurnOver(int64_t time, int64_t next) override {
    const int64_t begin = FramesAt(time);
    block_.resize(static_cast<size_t>((FramesAt(next) - begin) * kChannels));
    platform::RenderSound(block_);
    // What sounds in the pre-roll is rendered too, so that its rest stands at the beginning.
    if (time < 0) return;
    const auto left = static_cast<size_t>((wanted_ - begin) * kChannels);
    samples_.insert(samples_.end(), block_.begin(),
                    block_.begin() + static_cast<std::ptrdiff_t>(std::min(left, block_.size())));
    if (FramesAt(next) >= wanted_) StopPlay();
  }

  const std::vector<int16_t>& Samples() const { return samples_; }

 private:
  int64_t wanted_;  // frames at most
  std::vector<int16_t> block_;
  std::vector<int16_t> samples_;
};

std::string Number(uint64_t value, int bytes) {
  std::string text;
  for (int i = 0; i < bytes; ++i) text += static_cast<char>(value >> (8 * i) & 255);
  return text;
}

bool WriteWav(const std::string& file, const std::vector<int16_t>& samples) {
  const uint64_t bytes = samples.size() * 2;
  std::ofstream out(file, std::ios::binary | std::ios::trunc);
  out << "RIFF" << Number(kHeaderBytes - 8 + bytes, 4) << "WAVEfmt " << Number(16, 4) << Number(1, 2)
      << Number(kChannels, 2) << Number(kRate, 4) << Number(kRate * kChannels * 2, 4)
      << Number(kChannels * 2, 2) << Number(16, 2) << "data" << Number(bytes, 4);
  std::string data;
  data.reserve(bytes);
  for (const int16_t sample : samples) {
    data += static_cast<char>(sample & 255);
    data += static_cast<char>(sample >> 8 & 255);
  }
  out << data << std::flush;
  return out.good();
}

int32_t Peak(const std::vector<int16_t>& samples) {
  int32_t peak = 0;
  for (const int16_t sample : samples) peak = std::max(peak, std::abs(int32_t{sample}));
  return peak;
}

}  // namespace

int AudioCommand(Arguments& arguments) {
  StartEngine(arguments);
  // Nothing of a skin is heard.
  qlm::SkinMapPath = {};
  const std::string out = arguments.Value("--out").value_or("");
  const int64_t seconds = arguments.Number("--seconds").value_or(kLongestSeconds);
  int status = kDone;
  const PlayRequest request = TakePlayRequest(arguments, status);
  if (status != kDone) return status;

  Recorder recorder(seconds * kRate);
  qlm::Transcript transcript;
  if (!RunPlay(request, recorder, transcript)) return kRefused;
  const std::vector<int16_t>& samples = recorder.Samples();
  if (!fatalMessage && !WriteWav(out, samples)) {
    std::fprintf(stderr, "qlmprobe: %s cannot be written\n", out.c_str());
    return kRefused;
  }
  Json json;
  json.Put("length", static_cast<double>(samples.size()) / (kRate * kChannels));
  json.Put("peak", Peak(samples));
  json.Key("starts").BeginArray();
  for (const auto& start : transcript.starts) json.Row(start.clock, start.slot);
  json.EndArray();
  status = PutFatal(json);
  return Print(json, status);
}

}  // namespace probe
