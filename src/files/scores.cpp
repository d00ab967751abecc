// Score tables between memory and their files.
#include "files/scores.h"

#include <algorithm>
#include <optional>

#include "base/paths.h"
#include "files/data_folder.h"
#include "platform/files.h"
#include "state/chart.h"
#include "state/lists.h"
#include "state/settings.h"

namespace qlm {
namespace {

// Plays of the wide reading have other notes, and so tables of their own.
TextView ScoreExtension() { return WideCharts ? TextView(u".w.qsd") : TextView(u".qsd"); }

Text Beside(TextView chart) { return WithExtension(chart, ScoreExtension()); }

// Quirk: of the chart's folders only the last one is kept, so that charts of one name in two read-only
// folders of one name share their table.
Text BelowDataFolder(TextView file) {
  const TextView folder = GetFolder(file);
  const TextView lastFolder = GetFileName(folder.substr(0, folder.empty() ? 0 : folder.size() - 1));
  return Join(DataPath(u"ro_score\\"), lastFolder, u"\\", GetFileName(file));
}

// Bytes that someone else has put behind a table stay.
void WriteTable(TextView path) { SaveFile(path, WrittenOver(path, ScoreBytes())); }

}  // namespace

ScoreEntry TakeScoreEntry(Cursor& cursor) {
  ScoreEntry entry;
  entry.clear = cursor.I16();
  std::ranges::copy(cursor.Bytes(entry.name.size()), entry.name.begin());
  entry.score = cursor.F32();
  entry.jpts = cursor.F32();
  entry.hiSpeed = cursor.F32();
  entry.realHiSpeed = cursor.F32();
  entry.maxCombo = cursor.I16();
  entry.classIndex = cursor.U8();
  entry.options1 = cursor.U8();
  entry.options2 = cursor.U8();
  entry.options3 = cursor.U8();
  entry.reserved = cursor.I16();
  for (int16_t& count : entry.counts) count = cursor.I16();
  return entry;
}

void PutScoreEntry(ByteWriter& bytes, const ScoreEntry& entry) {
  bytes.I16(entry.clear);
  bytes.Bytes({entry.name.data(), entry.name.size()});
  bytes.F32(entry.score);
  bytes.F32(entry.jpts);
  bytes.F32(entry.hiSpeed);
  bytes.F32(entry.realHiSpeed);
  bytes.I16(entry.maxCombo);
  bytes.U8(entry.classIndex);
  bytes.U8(entry.options1);
  bytes.U8(entry.options2);
  bytes.U8(entry.options3);
  bytes.I16(entry.reserved);
  for (const int16_t count : entry.counts) bytes.I16(count);
}

void TakeScores(std::string_view bytes) {
  Cursor cursor(bytes);
  scores.playCount = cursor.I32();
  for (ScoreEntry& entry : scores.ScoreTable) entry = TakeScoreEntry(cursor);
  scores.cleared = cursor.I16();
}

std::string ScoreBytes() {
  ByteWriter bytes;
  bytes.I32(scores.playCount);
  for (const ScoreEntry& entry : scores.ScoreTable) PutScoreEntry(bytes, entry);
  bytes.I16(scores.cleared);
  return bytes.Take();
}

Text ScoredChart() {
  const auto row = static_cast<size_t>(listCursor);
  return listCursor >= 0 && listCursor <= lastSong && row < songList.size() ? songList[row].path : BMSPath;
}

// Quirk: a table below \_qlmfiles goes on being read when the chart's folder can be written again; the table
// that is then written beside the chart is not seen.
Text ScoreFileOf(TextView chart) { return ReadableBeside(chart, ScoreExtension()); }

Text ReadableBeside(TextView chart, TextView extension) {
  const Text beside = WithExtension(chart, extension);
  Text kept = BelowDataFolder(beside);
  return FileExists(kept) ? kept : beside;
}

void LoadScoreDat() {
  const Text file = ScoreFileOf(ScoredChart());
  TakeScores(platform::ReadFilePart(file, 0, kScoreFileBytes).value_or(std::string()));
}

void CountPlay() {
  if (scores.playCount < INT32_MAX) ++scores.playCount;
}

void SaveScoreDat() {
  CountPlay();
  const Text chart = ScoredChart();
  if (chart.empty()) return;
  if (!platform::FolderIsReadOnly(GetFolder(chart))) {
    WriteTable(Beside(chart));
    return;
  }
  const Text file = BelowDataFolder(Beside(chart));
  if (keepsDataFolder) MakeFolders(GetFolder(file));
  WriteTable(file);
}

}  // namespace qlm
