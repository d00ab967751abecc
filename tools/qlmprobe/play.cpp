// The command `play`: what happens in a whole play.
#include "play/gauge.h"
#include "state/chart.h"
#include "state/gauge.h"
#include "state/judgement.h"
#include "state/session.h"
#include "state/skin.h"
#include "state/timeline.h"
#include "tools/qlmprobe/commands.h"
#include "tools/qlmprobe/engine.h"
#include "tools/qlmprobe/play_run.h"

namespace probe {
namespace {

struct Unwatched : PlayWatcher {
  void TurnOver(int64_t, int64_t) override {}
};

void PutJudgement(Json& json, const qlm::Transcript::Judgement& judgement) {
  json.BeginObject();
  json.Put("turn", judgement.turn);
  json.Put("clock", judgement.clock);
  json.Put("playPos", judgement.playPos);
  json.Put("obj", judgement.obj);
  json.Put("channel", judgement.channel);
  json.Put("pos", judgement.pos);
  json.Put("delta_used", judgement.deltaUsed);
  json.Put("grade", judgement.grade);
  json.Put("tooEarly", judgement.tooEarly);
  json.Put("side", judgement.side);
  json.EndObject();
}

void PutFigures(Json& json, const qlm::Transcript& transcript) {
  json.Key("judgements").BeginArray();
  for (const auto& judgement : transcript.judgements) PutJudgement(json, judgement);
  json.EndArray();
  json.Key("counts").BeginArray();
  for (const auto& side : qlm::JudgeCount) json.Value(side);
  json.EndArray();
  json.Put("combo", qlm::Combo);
  json.Put("maxCombo", qlm::MaxCombo);
  json.Put("gauge", qlm::Gauge);
  json.Put("score", qlm::Score);
  json.Put("jpts", qlm::JPts);
  json.Put("jptsMax", qlm::JPtsMax);
  json.Put("class", qlm::ClassOf(qlm::JPts[0], qlm::JPtsMax[0]));
  json.Put("exPts", qlm::ExPts());
  json.Put("playFailed", qlm::PlayFailed);
  json.Put("playCleared", qlm::PlayCleared);
  json.Put("endClock", qlm::playClock);
}

void PutTranscript(Json& json, const qlm::Transcript& transcript) {
  json.Key("starts").BeginArray();
  for (const auto& start : transcript.starts) json.Row(start.clock, start.slot);
  json.EndArray();
  json.Key("bpmLog").BeginArray();
  for (const auto& tempo : transcript.tempi) json.Row(tempo.clock, tempo.curBPM, tempo.posOffset);
  json.EndArray();
  json.Key("gaugeHistory").BeginArray();
  for (const uint8_t sample : qlm::GaugeHistory[0]) json.Value(sample);
  json.EndArray();
  json.Key("posSamples").BeginArray();
  for (const auto& place : transcript.places) json.Row(place.clock, place.playPos);
  json.EndArray();
}

}  // namespace

int PlayCommand(Arguments& arguments) {
  StartEngine(arguments);
  // What happens in a play must not hang on the skins that happen to be installed.
  qlm::SkinMapPath = {};
  int status = kDone;
  const PlayRequest request = TakePlayRequest(arguments, status);
  if (status != kDone) return status;

  Unwatched watcher;
  qlm::Transcript transcript;
  if (!RunPlay(request, watcher, transcript)) return kRefused;
  Json json;
  PutFigures(json, transcript);
  PutTranscript(json, transcript);
  status = PutFatal(json);
  return Print(json, status);
}

}  // namespace probe
