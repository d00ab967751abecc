// The search within the list that is up.
#include "screens/song_find.h"

#include <algorithm>
#include <cstddef>
#include <optional>
#include <utility>
#include <vector>

#include "base/finding.h"
#include "base/text.h"
#include "graphics/bga.h"
#include "net/messages.h"
#include "platform/kana.h"
#include "screens/list_cursor.h"
#include "screens/song_select.h"
#include "state/chart.h"
#include "state/keys.h"
#include "state/lists.h"
#include "state/network.h"
#include "state/session.h"
#include "state/song_find.h"
#include "state/song_select.h"

namespace qlm {
namespace {

constexpr int32_t kBackSpace = 8;
constexpr int32_t kEnter = 13;
constexpr int32_t kEsc = 27;
constexpr size_t kLongestLine = 60;

// What rows are found by.

bool HasKanji(TextView text) {
  return std::ranges::any_of(text, [](char16_t c) {
    return (c >= 0x3400 && c <= 0x9FFF) || (c >= 0xF900 && c <= 0xFAFF) || c == u'々';
  });
}

// The fields stand in lines, which no word reaches across.
Text KeyOf(const SongEntry& row) {
  return FoldForFinding(Join(row.title, u"\n", row.artist, u"\n", row.genre));
}

// The reading of a text with kanji. `lookUps` counts down by those that were not known yet.
const Text& ReadingOf(const Text& text, int32_t& lookUps) {
  constexpr size_t kMost = 65'536;
  if (const auto known = foundReadings.find(text); known != foundReadings.end()) return known->second;
  --lookUps;
  if (foundReadings.size() >= kMost) foundReadings.clear();
  const std::optional<Text> reading = platform::ReadKanji(text);
  return foundReadings.emplace(text, reading ? FoldForFinding(*reading) : Text()).first->second;
}

void AddReadings(Text& key, const SongEntry& row, int32_t& lookUps) {
  for (const Text* const text : {&row.title, &row.artist, &row.genre}) {
    if (!HasKanji(*text)) continue;
    if (const Text& reading = ReadingOf(*text, lookUps); !reading.empty()) key.append(u"\n").append(reading);
  }
}

bool Holds(TextView key, const std::vector<FoundWord>& words) {
  return std::ranges::all_of(words, [&](const FoundWord& word) { return word.IsIn(key); });
}

// The first row of the courses makes a new one: it is no course that could be found, and always stays.
bool Stays(size_t row) { return row == 0 && GameState == kStateCourses; }

bool ReadingsAreKnown(const SongEntry& row) {
  const auto known = [](const Text& text) { return !HasKanji(text) || foundReadings.contains(text); };
  return known(row.title) && known(row.artist) && known(row.genre);
}

// The whole list and its part.

void TakeKnownReadings() {
  int32_t lookUps = 0;
  size_t& row = songFind.readRows;
  for (row = 0; row < songFind.rows.size() && ReadingsAreKnown(songFind.rows[row]); ++row) {
    AddReadings(songFind.keys[row], songFind.rows[row], lookUps);
  }
}

void TakeWholeList() {
  songFind.filtered = true;
  songFind.clearCheckRow = songSelect.clearCheckRow;
  songFind.rows = std::exchange(songList, {});
  songFind.cleared = std::exchange(songCleared, {});
  songFind.hasRecord = std::exchange(songHasRecord, {});
  songFind.keys.clear();
  songFind.keys.reserve(songFind.rows.size());
  for (const SongEntry& row : songFind.rows) songFind.keys.push_back(KeyOf(row));
  songFind.shown.clear();
  TakeKnownReadings();
}

// What plays and the clear check have changed of the part.
void KeepMarks() {
  for (size_t i = 0; i < songFind.shown.size(); ++i) {
    const auto row = static_cast<size_t>(songFind.shown[i]);
    songFind.cleared[row] = songCleared[i];
    songFind.hasRecord[row] = songHasRecord[i];
  }
}

void ShowWholeList() {
  KeepMarks();
  songFind.filtered = false;
  songList = std::exchange(songFind.rows, {});
  songCleared = std::exchange(songFind.cleared, {});
  songHasRecord = std::exchange(songFind.hasRecord, {});
  songFind.keys.clear();
  songFind.shown.clear();
  lastSong = static_cast<int32_t>(songList.size()) - 1;
  songSelect.clearCheckRow = songFind.clearCheckRow;
}

void ShowPart(const std::vector<FoundWord>& words) {
  KeepMarks();
  songList.clear();
  songCleared.clear();
  songHasRecord.clear();
  songFind.shown.clear();
  for (size_t row = 0; row < songFind.rows.size(); ++row) {
    if (!Stays(row) && !Holds(songFind.keys[row], words)) continue;
    songFind.shown.push_back(static_cast<int32_t>(row));
    songList.push_back(songFind.rows[row]);
    songCleared.push_back(songFind.cleared[row]);
    songHasRecord.push_back(songFind.hasRecord[row]);
  }
  lastSong = static_cast<int32_t>(songList.size()) - 1;
  songSelect.clearCheckRow = 0;
}

// The row in hand.

void NoteHeldRow() {
  if (lastSong >= 0) songFind.heldRow = RowOfWholeList(listCursor);
}

// The row that was in hand where it is still there, else the next one behind it, around the end.
int32_t NearestRow() {
  if (!songFind.filtered) return songFind.heldRow;
  const auto& shown = songFind.shown;
  const auto next = std::ranges::lower_bound(shown, songFind.heldRow);
  if (next != shown.end() && *next == songFind.heldRow && !Stays(static_cast<size_t>(*next))) {
    return static_cast<int32_t>(next - shown.begin());
  }
  const int32_t first = !shown.empty() && Stays(static_cast<size_t>(shown[0])) && shown.size() > 1 ? 1 : 0;
  return next == shown.end() ? first : std::max(static_cast<int32_t>(next - shown.begin()), first);
}

void HoldNothing() {
  if (std::exchange(songFind.holdsNone, true)) return;
  StopPreviewTimer();
  previewStop = true;
  if (previewLoading) LoadAbort = true;
  ReleaseStage();
  songSelect.titleMain.clear();
  songSelect.titleSub.clear();
}

void HoldNearestRow() {
  const int32_t before = songFind.heldRow;
  songSelect.rowBeforeSort.reset();
  listCursor = 0;
  if (lastSong < 0) return HoldNothing();
  listCursor = NearestRow();
  NoteHeldRow();
  const bool heldNone = std::exchange(songFind.holdsNone, false);
  if (songFind.heldRow == before && !heldNone) {
    // A preview that is being loaded gives up when its row goes to another place.
    if (previewLoading) RestartPreviewTimer();
    return;
  }
  songSelect.listScroll = kWheelStops;
  chexec();
  if (network.NetActive) SendCurSongData(false);
}

// The rows that hold the words; all of them where there are no words.
void ShowFoundRows() {
  NoteHeldRow();
  const std::vector<FoundWord> words = FoundWords(songFind.words);
  if (words.empty()) {
    if (songFind.filtered) ShowWholeList();
  } else {
    if (!songFind.filtered) TakeWholeList();
    ShowPart(words);
  }
  HoldNearestRow();
}

// Typing.

void TakeBack(Text& words) {
  if (words.empty()) return;
  // A character beyond the first 65,536 is two units.
  const bool second = words.back() >= 0xDC00 && words.back() <= 0xDFFF;
  words.pop_back();
  if (second && !words.empty()) words.pop_back();
}

// The key that ends the typing comes as a key too, which must do no more.
void EndTyping() {
  songFind.typing = false;
  songFind.composing.clear();
  enterEaten = true;
}

void LeaveLine() {
  if (lastSong < 0) return;
  EndTyping();
  if (!songFind.filtered) songFind = {};
}

void Type(int32_t character) {
  const bool opens = KeyHeld[kKeySlash] || KeyHeld[kKeyPadSlash];
  if (character == u'/' && songFind.slashHeld && opens) return;
  songFind.slashHeld = false;
  songFind.composing.clear();
  if (songFind.words.size() >= kLongestLine) return;
  songFind.words += static_cast<char16_t>(character);
  ShowFoundRows();
}

}  // namespace

void OpenFindLine() {
  if (lastSong < 0) return;
  songFind.typing = true;
  songFind.slashHeld = true;
  // No direction that is held steps on.
  songSelect.heldKey.key = 0;
  songSelect.repeatKey = 0;
}

void TypeInFindLine(int32_t character) {
  switch (character) {
    case kBackSpace: TakeBack(songFind.words); return ShowFoundRows();
    case kEnter: return LeaveLine();
    case kEsc: EndTyping(); return EndFind();
    default:
      if (character >= 32 && character != 127 && character <= 0xFFFF) Type(character);
  }
}

void EndFind() {
  songFind.words.clear();
  ShowFoundRows();
  songFind = {};
}

void ChangeWholeList(void (*change)()) {
  if (!songFind.filtered) return change();
  const int32_t cursor = listCursor;
  ShowWholeList();
  change();
  TakeWholeList();
  ShowPart(FoundWords(songFind.words));
  listCursor = std::clamp(cursor, 0, std::max(lastSong, 0));
  NoteHeldRow();
}

int32_t RowOfWholeList(int32_t row) {
  const bool mapped = songFind.filtered && row >= 0 && static_cast<size_t>(row) < songFind.shown.size();
  return mapped ? songFind.shown[static_cast<size_t>(row)] : row;
}

int32_t RowsOfWholeList() {
  return songFind.filtered ? static_cast<int32_t>(songFind.rows.size()) : lastSong + 1;
}

void ReadOnForFinding() {
  constexpr int32_t kRowsInAFrame = 512;
  constexpr int32_t kLookUpsInAFrame = 128;
  if (!songFind.filtered || songFind.readRows == songFind.rows.size()) return;
  const std::vector<FoundWord> words = FoundWords(songFind.words);
  const size_t end = std::min(songFind.rows.size(), songFind.readRows + kRowsInAFrame);
  int32_t lookUps = kLookUpsInAFrame;
  bool found = false;
  while (songFind.readRows < end && lookUps > 0) {
    const size_t row = songFind.readRows++;
    Text& key = songFind.keys[row];
    const bool heldWords = Holds(key, words);
    AddReadings(key, songFind.rows[row], lookUps);
    found = found || (!heldWords && Holds(key, words));
  }
  if (found) ShowFoundRows();
}

}  // namespace qlm
