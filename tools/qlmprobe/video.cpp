// The command `video`: pictures and sound of a play in one file.
#include <unistd.h>

#include <algorithm>
#include <cstdio>

#include "platform/clock.h"
#include "state/chart.h"
#include "state/surfaces.h"
#include "tools/qlmprobe/commands.h"
#include "tools/qlmprobe/encoder.h"
#include "tools/qlmprobe/engine.h"
#include "tools/qlmprobe/play_run.h"
#include "tools/qlmprobe/turn_sound.h"

namespace probe {
namespace {

// Sends each turn's frame with the sound up to the next turn's.
class Film : public PlayWatcher {
 public:
  Film(Encoder& encoder, int32_t turnsPerSecond) : encoder_(encoder), turnsPerSecond_(turnsPerSecond) {}

  void FrameFinished(int64_t) override {
    if (qlm::DDBack != nullptr) picture_.Copy(0, 0, *qlm::DDBack, qlm::kScreen);
  }
  void TurnOver(int64_t time, int64_t next) override {
    if (!encoder_.Send(picture_, sound_.Render(time, next))) StopPlay();
    ++pictures_;
    if (watched_ && pictures_ % turnsPerSecond_ == 0) ShowProgress(next);
  }

  int64_t Pictures() const { return pictures_; }
  void EndProgress() const {
    if (watched_) std::fputs("\r\033[K", stderr);
  }

 private:
  // One line that is written over and over, once for each second of the play.
  void ShowProgress(int64_t time) const {
    const double seconds = static_cast<double>(std::max<int64_t>(time, 0)) / 1000;
    const double all = std::max(qlm::BMSLengthMs / 1000.0, seconds);
    std::fprintf(stderr, "\r\033[K%.0f of %.0f s (%.0f%%)", seconds, all, all > 0 ? 100 * seconds / all : 0);
  }

  Encoder& encoder_;
  int32_t turnsPerSecond_;
  platform::Surface picture_{640, 480};
  TurnSound sound_;
  int64_t pictures_ = 0;
  bool watched_ = isatty(STDERR_FILENO) != 0;
};

}  // namespace

int VideoCommand(Arguments& arguments) {
  StartEngine(arguments);
  const std::string out = arguments.Value("--out").value_or("");
  int status = kDone;
  PlayRequest request = TakePlayRequest(arguments, status);
  if (status != kDone) return status;
  if (!CheckReadableChart(request.file) || !CheckOutput(out, request.file)) return kRefused;
  request.frames = true;

  Encoder encoder;
  if (!encoder.Start(out, request.turnsPerSecond)) return kRefused;
  Film film(encoder, request.turnsPerSecond);
  qlm::Transcript transcript;
  if (!RunPlay(request, film, transcript)) return kRefused;
  film.EndProgress();
  if (!fatalMessage && !encoder.Finish()) return kRefused;
  Json json;
  json.Put("file", std::string_view(PrintedPath(out)));
  json.Put("pictures", film.Pictures());
  json.Put("seconds", static_cast<double>(film.Pictures()) / request.turnsPerSecond);
  status = PutFatal(json);
  return Print(json, status);
}

}  // namespace probe
