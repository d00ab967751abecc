// The command `audio`: the sound of a play as a WAV file.
#include <algorithm>
#include <cstdio>
#include <cstdlib>
#include <fstream>
#include <span>

#include "state/skin.h"
#include "tools/media_files/wav.h"
#include "tools/qlmprobe/commands.h"
#include "tools/qlmprobe/engine.h"
#include "tools/qlmprobe/play_run.h"
#include "tools/qlmprobe/turn_sound.h"

namespace probe {
namespace {

// Keeps what is heard from the chart's beginning on.
class Recorder : public PlayWatcher {
 public:
  explicit Recorder(int64_t wanted) : wanted_(wanted) {}

  void TurnOver(int64_t time, int64_t next) override {
    const int64_t begin = SoundFramesAt(time);
    const std::span<const int16_t> block = sound_.Render(time, next);
    // What sounds in the pre-roll is rendered too, so that its rest stands at the beginning.
    if (time < 0) return;
    const auto left = static_cast<size_t>((wanted_ - begin) * kSoundChannels);
    samples_.insert(samples_.end(), block.begin(),
                    block.begin() + static_cast<std::ptrdiff_t>(std::min(left, block.size())));
    if (SoundFramesAt(next) >= wanted_) StopPlay();
  }

  const std::vector<int16_t>& Samples() const { return samples_; }

 private:
  int64_t wanted_;  // frames at most
  TurnSound sound_;
  std::vector<int16_t> samples_;
};

bool WriteWav(const std::string& file, const std::vector<int16_t>& samples) {
  std::ofstream out(file, std::ios::binary | std::ios::trunc);
  out << media::WavBytes(samples, kSoundChannels, kSoundRate) << std::flush;
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
  if (!CheckOutput(out, request.file)) return kRefused;

  Recorder recorder(seconds * kSoundRate);
  qlm::Transcript transcript;
  if (!RunPlay(request, recorder, transcript)) return kRefused;
  const std::vector<int16_t>& samples = recorder.Samples();
  if (!fatalMessage && !WriteWav(out, samples)) {
    std::fprintf(stderr, "qlmprobe: %s cannot be written\n", out.c_str());
    return kRefused;
  }
  Json json;
  json.Put("length", static_cast<double>(samples.size()) / (kSoundRate * kSoundChannels));
  json.Put("peak", Peak(samples));
  json.Key("starts").BeginArray();
  for (const auto& start : transcript.starts) json.Row(start.clock, start.slot);
  json.EndArray();
  status = PutFatal(json);
  return Print(json, status);
}

}  // namespace probe
