// The report of a play.
#include "shell/play_report.h"

#include <cstdio>
#include <cstdlib>
#include <string>

#include "base/text.h"
#include "platform/files.h"
#include "platform/text.h"
#include "state/gauge.h"
#include "state/session.h"
#include "state/transcript.h"

namespace qlm {
namespace {

std::string fileName;
Transcript kept;

TextView TrueFalse(bool value) { return value ? u"true" : u"false"; }

Text JudgementLine(const Transcript::Judgement& judgement) {
  return Join(u"{\"clock\": ", judgement.clock, u", \"channel\": ", judgement.channel, u", \"pos\": ",
              judgement.pos, u", \"delta\": ", judgement.deltaUsed, u", \"grade\": ", judgement.grade,
              u", \"tooEarly\": ", TrueFalse(judgement.tooEarly), u", \"side\": ", judgement.side, u"}\n");
}

Text CountsOfSide(size_t side) {
  Text counts;
  for (const int32_t count : JudgeCount[side]) counts += Join(counts.empty() ? u"" : u", ", count);
  return Join(u"[", counts, u"]");
}

Text FiguresLine() {
  return Join(u"{\"counts\": [", CountsOfSide(0), u", ", CountsOfSide(1), u"], \"maxCombo\": [", MaxCombo[0],
              u", ", MaxCombo[1], u"], \"gauge\": [", Gauge[0], u", ", Gauge[1], u"], \"playFailed\": ",
              TrueFalse(PlayFailed), u", \"playCleared\": ", TrueFalse(PlayCleared), u"}\n");
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
  Text report;
  for (const Transcript::Judgement& judgement : kept.judgements) report += JudgementLine(judgement);
  report += FiguresLine();
  if (!platform::WriteFile(platform::InnerPath(fileName), platform::EncodeUtf8(report))) {
    std::fprintf(stderr, "quillmarch: %s: the transcript cannot be written\n", fileName.c_str());
  }
  fileName.clear();
}

}  // namespace qlm
