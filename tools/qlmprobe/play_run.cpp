// Running of a play turn by turn.
#include "tools/qlmprobe/play_run.h"

#include <cstdio>

#include "base/hooks.h"
#include "chart/loading.h"
#include "graphics/display.h"
#include "graphics/skin_list.h"
#include "input/input.h"
#include "platform/clock.h"
#include "platform/files.h"
#include "play/records.h"
#include "screens/road.h"
#include "shell/main_form.h"
#include "sound/play.h"
#include "state/gauge.h"
#include "state/records.h"
#include "state/session.h"
#include "state/settings.h"
#include "state/skin.h"
#include "tools/qlmprobe/engine.h"
#include "tools/qlmprobe/keys.h"

namespace probe {
namespace {

// The play that runs.
const PlayRequest* request = nullptr;
PlayWatcher* watcher = nullptr;
int64_t turn = 0;  // below 0 in the pre-roll, which lasts one second
size_t nextEvent = 0;

int64_t TurnTime(int64_t number) {
  const int64_t thousandths = number * 1000;
  const int64_t time = thousandths / request->turnsPerSecond;
  return time - (thousandths % request->turnsPerSecond < 0 ? 1 : 0);
}

void ServeEvents() {
  if (turn < 0) return;
  const int64_t now = TurnTime(turn);
  for (; nextEvent < request->events.size() && request->events[nextEvent].time <= now; ++nextEvent) {
    const KeyEvent& event = request->events[nextEvent];
    qlm::DispatchKey(event.key, event.down);
  }
  if (now >= request->limit) StopPlay();
}

void FinishFrame() { watcher->FrameFinished(TurnTime(turn)); }

uint32_t NextTurn(uint32_t now) {
  const int64_t time = TurnTime(turn);
  const int64_t next = TurnTime(++turn);
  watcher->TurnOver(time, next);
  return now + static_cast<uint32_t>(next - time);
}

bool ReadEvents(const std::string& file, std::vector<KeyEvent>& events) {
  const std::optional<std::string> text = platform::ReadFile(GamePath(file));
  std::string wrong = "the events file cannot be read";
  std::optional<std::vector<KeyEvent>> parsed;
  if (text) parsed = ParseEvents(*text, wrong);
  if (!parsed) {
    std::fprintf(stderr, "qlmprobe: %s: %s\n", file.c_str(), wrong.c_str());
    return false;
  }
  events = std::move(*parsed);
  return true;
}

// A course is joined and played as ReadyBMS has it; nothing is written.
bool Load(const std::string& file) {
  if (!IsCourseFile(file)) {
    qlm::BMSLoad(GamePath(file));
    return true;
  }
  if (!TakeCourseFile(file)) return false;
  qlm::GameState = qlm::kStatePlay;
  qlm::HazardGauge = true;
  qlm::JoinCourse();
  return true;
}

// The record of the loaded chart.
bool TakeRecordToReplay(const std::string& file) {
  if (file.empty()) return true;
  qlm::LoadUserRec(GamePath(file));
  if (qlm::RecCount > 0) return true;
  std::fprintf(stderr, "qlmprobe: %s: this is no record of a play of this chart\n", file.c_str());
  return false;
}

}  // namespace

PlayRequest TakePlayRequest(Arguments& arguments, int& status) {
  PlayRequest taken;
  TakeLoadOptions(arguments);
  const std::optional<std::string> skin = arguments.Value("--skin");
  taken.before = TakeChartsBefore(arguments);
  const std::optional<std::string> eventsFile = arguments.Value("--events");
  taken.replay = arguments.Value("--replay").value_or("");
  qlm::ShowRec = !taken.replay.empty();
  // Without hands at the keys the machine plays, unless it is told not to.
  qlm::DEMOMode = !eventsFile && !qlm::ShowRec;
  const std::optional<std::string> keyFile = TakeSettings(arguments);
  if (const auto rate = arguments.Number("--fps")) taken.turnsPerSecond = static_cast<int32_t>(*rate);
  if (const auto limit = arguments.Number("--limit")) taken.limit = *limit;
  const std::vector<std::string>& files = arguments.Files();
  if (!arguments.Good()) {
    status = kWrongUsage;
    return taken;
  }
  taken.file = files[0];
  if (eventsFile && !ReadEvents(*eventsFile, taken.events)) status = kRefused;
  OrderByTurns(taken.events, taken.turnsPerSecond);
  if (keyFile && !ReadKeyFile(*keyFile)) status = kRefused;
  if (skin && !CheckReadable(*skin)) status = kRefused;
  if (qlm::ShowRec && !CheckReadable(taken.replay)) status = kRefused;
  if (skin) qlm::SkinMapPath.fill(GamePath(*skin));
  return taken;
}

bool RunPlay(const PlayRequest& wanted, PlayWatcher& watching, qlm::Transcript& transcript) {
  if (!CheckReadableChart(wanted.file)) return false;
  request = &wanted;
  watcher = &watching;
  turn = -wanted.turnsPerSecond;
  nextEvent = 0;

  qlm::ConnectHooks();
  qlm::hooks.fatalError = [](qlm::TextView, qlm::TextView message) {
    if (!fatalMessage) fatalMessage = message;
  };
  qlm::hooks.loadPump = nullptr;
  qlm::hooks.closeRequested = StopPlay;
  qlm::PrepareForm();
  // Without surfaces the drawing composes no pixel, and every step of it that touches the play still runs.
  if (wanted.frames) {
    qlm::InitDD(qlm::DisplayOutput::kUnseen);
    qlm::CreateSurfaces();
  }
  qlm::UpdateSkinList();  // for F9
  qlm::InitDS(platform::SoundOutput::kOffline);
  // A load as for a preview does not make the play one: it would never show a frame.
  const bool preview = qlm::PreviewActive;
  if (!LoadChartsBefore(wanted.before)) return false;
  qlm::PreviewActive = preview;
  if (!Load(wanted.file)) return false;
  qlm::PreviewActive = false;
  if (fatalMessage) return true;
  if (!TakeRecordToReplay(wanted.replay)) return false;

  qlm::transcript = &transcript;
  qlm::hooks.pumped = ServeEvents;
  qlm::hooks.framePresented = FinishFrame;
  platform::SetFrameClock(NextTurn);
  qlm::PlayLoadedChart();
  platform::SetFrameClock(nullptr);
  qlm::hooks.framePresented = nullptr;
  qlm::hooks.pumped = nullptr;
  qlm::transcript = nullptr;
  return true;
}

void StopPlay() { qlm::PlayEnd = true; }

}  // namespace probe
