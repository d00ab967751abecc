// The command `frame`: pictures of a play, as presented.
#include <algorithm>
#include <cstdio>

#include "platform/picture.h"
#include "state/surfaces.h"
#include "tools/qlmprobe/commands.h"
#include "tools/qlmprobe/engine.h"
#include "tools/qlmprobe/play_run.h"

namespace probe {
namespace {

struct Shot {
  int64_t at = 0;    // as asked for, ms
  int64_t turn = 0;  // time of the turn whose frame it is
  std::string file;
};

// Saves the frame of the last turn at or before each moment.
class Photographer : public PlayWatcher {
 public:
  Photographer(std::vector<int64_t> moments, std::string prefix)
      : moments_(std::move(moments)), prefix_(std::move(prefix)) {
    std::sort(moments_.begin(), moments_.end());
  }

  void FrameFinished(int64_t time) override {
    if (qlm::DDBack == nullptr) return;
    last_.Copy(0, 0, *qlm::DDBack, qlm::kScreen);
    lastTime_ = time;
    any_ = true;
  }
  void TurnOver(int64_t, int64_t next) override {
    while (next_ < moments_.size() && moments_[next_] < next) Save();
    if (next_ == moments_.size()) StopPlay();
  }
  // Behind the end of the play its last frame stands.
  void SaveRest() {
    while (next_ < moments_.size()) Save();
  }

  const std::vector<Shot>& Shots() const { return shots_; }
  bool Failed() const { return failed_; }

 private:
  void Save() {
    const int64_t at = moments_[next_++];
    const Shot shot = {at, lastTime_, prefix_ + "-" + std::to_string(at) + ".png"};
    if (!any_ || at < lastTime_) {
      std::fprintf(stderr, "qlmprobe: there is no frame at %lld ms\n", static_cast<long long>(at));
      failed_ = true;
    } else if (!platform::SavePng(last_, shot.file)) {
      std::fprintf(stderr, "qlmprobe: %s cannot be written\n", shot.file.c_str());
      failed_ = true;
    } else {
      shots_.push_back(shot);
    }
  }

  std::vector<int64_t> moments_;
  std::string prefix_;
  std::vector<Shot> shots_;
  platform::Surface last_{640, 480};
  int64_t lastTime_ = 0;
  size_t next_ = 0;
  bool any_ = false;
  bool failed_ = false;
};

std::vector<int64_t> TakeMoments(Arguments& arguments) {
  std::vector<int64_t> moments;
  const std::string list = arguments.Value("--at").value_or("");
  for (const qlm::Text& piece : qlm::Split(platform::DecodeUtf8(list), u",")) {
    const std::optional<int64_t> moment = platform::ToNumber(platform::EncodeUtf8(piece));
    if (!moment || *moment < INT32_MIN || *moment > INT32_MAX) {
      arguments.Fail("--at wants whole numbers of milliseconds with commas between");
      return moments;
    }
    moments.push_back(*moment);
  }
  return moments;
}

}  // namespace

int FrameCommand(Arguments& arguments) {
  StartEngine(arguments);
  std::vector<int64_t> moments = TakeMoments(arguments);
  const std::string prefix = arguments.Value("--out").value_or("");
  int status = kDone;
  PlayRequest request = TakePlayRequest(arguments, status);
  if (status != kDone) return status;
  request.frames = true;

  Photographer photographer(std::move(moments), prefix);
  qlm::Transcript transcript;
  if (!RunPlay(request, photographer, transcript)) return kRefused;
  if (!fatalMessage) photographer.SaveRest();
  Json json;
  json.Key("frames").BeginArray();
  for (const Shot& shot : photographer.Shots()) {
    json.BeginObject();
    json.Put("at", shot.at);
    json.Put("turn", shot.turn);
    json.Put("file", std::string_view(PrintedPath(shot.file)));
    json.EndObject();
  }
  json.EndArray();
  status = PutFatal(json);
  return Print(json, photographer.Failed() ? kRefused : status);
}

}  // namespace probe
