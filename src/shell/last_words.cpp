// The words, and which chart is next.
#include "shell/last_words.h"

#include <array>
#include <cstddef>
#include <cstdint>
#include <cstdio>
#include <span>

#include "base/log.h"
#include "base/paths.h"
#include "chart/trouble.h"
#include "files/data_folder.h"
#include "platform/files.h"
#include "platform/text.h"
#include "state/judgement.h"
#include "state/lists.h"
#include "state/session.h"

namespace qlm {
namespace {

TextView OutcomeWord(Outcome outcome) {
  switch (outcome) {
    case Outcome::kLeft: return u"left";
    case Outcome::kStopped: return u"stopped";
    case Outcome::kFailed: return u"failed";
    case Outcome::kCleared: return u"cleared";
  }
  return u"";
}

// The next level up in the list that was open; null without one.
const SongEntry* HarderChart(int32_t level) {
  if (GameState != kStateSongSelect) return nullptr;
  const SongEntry* next = nullptr;
  for (const SongEntry& row : std::span(songList).first(static_cast<size_t>(int64_t{lastSong} + 1))) {
    if (row.playLevel > level && (next == nullptr || row.playLevel < next->playLevel)) next = &row;
  }
  return next;
}

Text WhatToTryNext(const LastPlay& play) {
  if (play.troubled) return platform::DecodeUtf8(CheckCommand(play.path));
  if (play.machine) return u"play it yourself, with Z S X D C F V and left Shift";
  if (play.outcome == Outcome::kLeft || play.outcome == Outcome::kStopped)
    return u"play it to its end; F12 makes a pause";
  if (play.outcome == Outcome::kFailed) return u"again with 4 held and 2 pressed, which spreads the notes";
  if (const SongEntry* const harder = HarderChart(play.playLevel)) {
    return Join(u"\"", harder->title, u"\" of level ", harder->playLevel);
  }
  return u"the same with notes that vanish: F1 in the song list";
}

Text Counts(const LastPlay& play) {
  constexpr std::array<TextView, 5> kWords = {u"PERFECT", u"GREAT", u"GOOD", u"BAD", u"POOR"};
  Text words;
  for (size_t grade = 0; grade < kWords.size(); ++grade) {
    words += Join(words.empty() ? u"" : u", ", kWords[grade], u" ", play.counts[grade]);
  }
  return words;
}

}  // namespace

Text LastWords(const LastPlay& play) {
  const Text title = play.title.empty() ? Text(GetFileName(play.path)) : play.title;
  const Text by = play.artist.empty() ? Text() : Join(u" by ", play.artist);
  const Text song = Join(u"\"", title, u"\"", by);
  const Text next = Join(u" Next: ", WhatToTryNext(play), u".");
  if (play.outcome == Outcome::kLeft)
    return Join(u"Left ", song, u" before its end, so that nothing of it is kept.", next);
  return Join(u"Played ", song, u": ", OutcomeWord(play.outcome), u", score ",
              static_cast<int64_t>(play.score), u", class ",
              RankLetters[static_cast<size_t>(play.classIndex)], u"; ", Counts(play), u".", next);
}

void SayLastWords() {
  if (!lastPlay) return;
  if (keepsDataFolder) std::printf("The log is %s\n", platform::SystemPath(LogPath()).c_str());
  std::printf("%s\n", platform::EncodeUtf8(LastWords(*lastPlay)).c_str());
}

}  // namespace qlm
