// The command `audio`: the sound of a play as a WAV file.
#include <algorithm>
#include <array>
#include <cstdio>
#include <cstdlib>
#include <fstream>

#include "platform/sound_device.h"
#include "state/skin.h"
#include "tools/media_files/wav.h"
#include "tools/qlmprobe/commands.h"
#include "tools/qlmprobe/engine.h"
#include "tools/qlmprobe/play_run.h"

namespace probe {
namespace {

constexpr int64_t kRate = 44100;
constexpr int64_t kChannels = 2;

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

bool WriteWav(const std::string& file, const std::vector<int16_t>& samples) {
  std::ofstream out(file, std::ios::binary | std::ios::trunc);
  out << media::WavBytes(samples, kChannels, kRate) << std::flush;
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
