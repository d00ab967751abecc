// The command `play`: what happens in a whole play.
#include <algorithm>
#include <cstdio>
#include <optional>
#include <string>

#include "base/hooks.h"
#include "files/data_folder.h"
#include "files/scores.h"
#include "platform/files.h"
#include "play/gauge.h"
#include "play/records.h"
#include "screens/name_entry.h"
#include "state/chart.h"
#include "state/gauge.h"
#include "state/judgement.h"
#include "state/scores.h"
#include "state/session.h"
#include "state/settings.h"
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

// What --record, --scores and --name ask for.
struct Keeping {
  std::optional<std::string> record;
  std::optional<std::string> scores;
  std::optional<std::string> name;
};

bool CanBeTyped(const std::string& name) {
  return std::ranges::all_of(name, [](unsigned char letter) { return letter >= 32 && letter <= 127; });
}

Keeping TakeKeeping(Arguments& arguments) {
  Keeping keeping{arguments.Value("--record"), arguments.Value("--scores"), arguments.Value("--name")};
  if (keeping.record && arguments.Value("--replay")) {
    arguments.Fail("--record and --replay do not go together");
  }
  if (keeping.name && !keeping.scores) arguments.Fail("--name wants --scores");
  if (keeping.name && !CanBeTyped(*keeping.name))
    arguments.Fail("--name wants letters, digits and signs of ASCII");
  return keeping;
}

// Names the file on standard error.
bool unwritten = false;
void TellUnwritten(qlm::TextView path) {
  unwritten = true;
  std::fprintf(stderr, "qlmprobe: %s: the file cannot be written\n", platform::SystemPath(path).c_str());
}

// What the hands type once the game asks for a name.
std::optional<std::string> nameToType;
void TypeName() {
  if (qlm::GameState != qlm::kStateEnterName) return;
  if (nameToType) {
    while (!qlm::scores.PlayerName.empty()) qlm::ProcessKey_EnterName(8);
    for (const char letter : *nameToType) qlm::ProcessKey_EnterName(letter);
  }
  qlm::ProcessKey_EnterName(13);
}

// Ranks the play in the table of `file`, as the end of a play does: not one that the machine or a record
// played. Gives the rank, 0 for none.
int32_t RankIn(const std::string& file) {
  const qlm::Text path = GamePath(file);
  if (qlm::DEMOMode || qlm::ShowRec) return 0;
  qlm::TakeScores(platform::ReadFilePart(path, 0, qlm::kScoreFileBytes).value_or(std::string()));
  qlm::hooks.pumped = TypeName;
  const int32_t rank = qlm::PlayCleared ? qlm::AddScoreDat() : 0;
  qlm::hooks.pumped = nullptr;
  qlm::CountPlay();
  qlm::SaveFile(path, qlm::ScoreBytes());
  return rank;
}

}  // namespace

int PlayCommand(Arguments& arguments) {
  StartEngine(arguments);
  // What happens in a play must not hang on the skins that happen to be installed.
  qlm::SkinMapPath = {};
  int status = kDone;
  const Keeping keeping = TakeKeeping(arguments);
  const PlayRequest request = TakePlayRequest(arguments, status);
  if (status != kDone) return status;
  if (keeping.scores && platform::FileLength(GamePath(*keeping.scores)) && !CheckReadable(*keeping.scores)) {
    return kRefused;
  }
  if (keeping.record) qlm::UserRec = true;
  nameToType = keeping.name;

  Unwatched watcher;
  qlm::Transcript transcript;
  if (!RunPlay(request, watcher, transcript)) return kRefused;
  Json json;
  PutFigures(json, transcript);
  PutTranscript(json, transcript);
  qlm::hooks.unwritten = TellUnwritten;
  // In this order, as in the game, since the record holds the name that was typed.
  if (keeping.scores && !fatalMessage) json.Put("rank", RankIn(*keeping.scores));
  if (keeping.record && !fatalMessage) qlm::SaveUserRec(GamePath(*keeping.record));
  status = PutFatal(json);
  if (unwritten) status = kRefused;
  return Print(json, status);
}

}  // namespace probe
