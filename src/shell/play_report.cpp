// The report of a play.
#include "shell/play_report.h"

#include <cstdio>
#include <cstdlib>
#include <string>

#include "base/json.h"
#include "platform/files.h"
#include "state/gauge.h"
#include "state/session.h"
#include "state/transcript.h"

namespace qlm {
namespace {

std::string fileName;
Transcript kept;

std::string JudgementLine(const Transcript::Judgement& judgement) {
  Json json(JsonLayout::kOneLine);
  json.Put("clock", judgement.clock);
  json.Put("channel", judgement.channel);
  json.Put("pos", judgement.pos);
  json.Put("delta", judgement.deltaUsed);
  json.Put("grade", judgement.grade);
  json.Put("tooEarly", judgement.tooEarly);
  json.Put("side", judgement.side);
  return json.Take();
}

std::string FiguresLine() {
  Json json(JsonLayout::kOneLine);
  json.Put("counts", JudgeCount);
  json.Put("maxCombo", MaxCombo);
  json.Put("gauge", Gauge);
  json.Put("playFailed", PlayFailed);
  json.Put("playCleared", PlayCleared);
  return json.Take();
}

}  // namespace

void BeginPlayReport() {
  const char* const name = std::getenv("QUILLMARCH_TRANSCRIPT");
  if (name == nullptr || *name == '\0') return;
  fileName = name;
  kept = {};
  transcript = &kept;
}

void WritePlayReport() {
  if (fileName.empty()) return;
  transcript = nullptr;
  std::string report;
  for (const Transcript::Judgement& judgement : kept.judgements) report += JudgementLine(judgement);
  report += FiguresLine();
  if (!platform::WriteFile(platform::InnerPath(fileName), report)) {
    std::fprintf(stderr, "quillmarch: %s: the transcript cannot be written\n", fileName.c_str());
  }
  fileName.clear();
}

}  // namespace qlm
