// From the sections of a score file to one list of events in time.
#include "score.h"

#include <algorithm>
#include <cmath>
#include <numeric>
#include <utility>

#include "sections.h"
#include "strokes.h"

namespace assetmaker {
namespace {

double SecondsPerTick(double tempo) { return 60 / tempo / (wholeNote / 4.0); }

// The line of the file that a place in its music stands on.
int LineOf(const Music& music, std::size_t at) {
  const auto start = music.text.begin();
  return music.firstLine + static_cast<int>(std::count(start, start + static_cast<std::ptrdiff_t>(at), '\n'));
}

bool OnKeyboard(const Note& note) {
  return std::all_of(note.pitches.begin(), note.pitches.end(),
                     [](Pitch pitch) { return pitch >= lowestPitch && pitch <= highestPitch; });
}

std::optional<std::vector<Note>> NotesOf(const Tune& tune, const std::vector<int>& barLengths,
                                         ScoreError& error) {
  const Music& music = tune.music;
  NotationError wrong;
  std::optional<std::vector<Note>> notes = tune.reading == Reading::notes
                                               ? ReadNotes(music.text, barLengths, wrong)
                                               : ReadChords(music.text, barLengths, wrong);
  if (!notes) {
    const int line = music.text.empty() ? tune.line : LineOf(music, wrong.at);
    error = {line, wrong.message + " (in the part of line " + std::to_string(tune.line) + ')'};
    return std::nullopt;
  }
  if (tune.reading == Reading::struck) notes = Struck(*notes, tune.rhythm, barLengths);
  if (tune.reading == Reading::broken) notes = Broken(*notes);
  notes = Transposed(std::move(*notes), tune.transposed);
  if (std::all_of(notes->begin(), notes->end(), OnKeyboard)) return notes;
  error = {tune.line, "moved by so many semitones, the part leaves the keyboard"};
  return std::nullopt;
}

// A bar of strokes without its blanks, and where it ends in the music.
struct StrokeBar {
  std::string strokes;
  std::size_t end;
};

// The bars of a line of strokes. Nothing, and `error` set, when there is none or one that means nothing.
std::optional<std::vector<StrokeBar>> StrokeBarsOf(const Music& music, int orderLine, ScoreError& error) {
  std::vector<StrokeBar> bars;
  std::string bar;
  for (std::size_t at = 0; at < music.text.size(); ++at) {
    const char name = music.text[at];
    if (name == ' ' || name == '\t' || name == '\n') continue;
    if (name == '|') {
      bars.push_back({std::exchange(bar, {}), at});
    } else if (name == '.' || StrokeNamed(name)) {
      bar += name;
    } else {
      error = {LineOf(music, at), std::string("no stroke is called '") + name + "'"};
      return std::nullopt;
    }
  }
  if (!bars.empty() && bar.empty()) return bars;
  error = {music.text.empty() ? orderLine : LineOf(music, music.text.find_last_not_of(" \t\n")),
           bars.empty() ? "there is no bar of strokes" : "the last bar of strokes lacks its bar line"};
  return std::nullopt;
}

bool Sounds(const Score& score, Voice voice) {
  return std::any_of(score.events.begin(), score.events.end(),
                     [=](const Event& event) { return event.sample.voice == voice; });
}

class Builder {
 public:
  explicit Builder(SongHead head) { score_.head = std::move(head); }

  bool Add(const Section& section, ScoreError& error) {
    const int start = EndTick(score_);
    AddTempi(section, start);
    for (const Tune& tune : section.tunes) {
      if (!AddTune(tune, section, start, error)) return false;
    }
    for (const Music& strokes : section.strokes) {
      if (!AddStrokes(strokes, section, start, error)) return false;
    }
    for (const Show& show : section.shows) {
      if (!AddShow(show, section, start, error)) return false;
    }
    int tick = start;
    for (std::size_t i = 0; i < section.barLengths.size(); ++i) {
      score_.measures.push_back({tick, section.barLengths[i], section.name, static_cast<int>(i)});
      tick += section.barLengths[i];
    }
    return true;
  }

  Score Finished() && {
    std::stable_sort(score_.events.begin(), score_.events.end(),
                     [](const Event& a, const Event& b) { return a.tick < b.tick; });
    return std::move(score_);
  }

 private:
  void AddTempi(const Section& section, int start) {
    if (score_.tempi.empty() || score_.tempi.back().tempo != section.tempo) {
      score_.tempi.push_back({start, section.tempo});
    }
    for (const Nudge& nudge : section.nudges) {
      const auto firstBar = section.barLengths.begin();
      score_.tempi.push_back(
          {start + std::accumulate(firstBar, firstBar + nudge.bar, 0) + nudge.tick, nudge.tempo});
    }
  }

  void AddEvent(int tick, Role role, Voice voice, std::vector<Pitch> pitches, int length, double tempo) {
    const double centiseconds = RingsFreely(voice) ? 0 : 100 * length * SecondsPerTick(tempo);
    score_.events.push_back(
        {tick, role, {voice, std::move(pitches), static_cast<int>(std::lround(centiseconds))}});
  }

  bool AddTune(const Tune& tune, const Section& section, int start, ScoreError& error) {
    const std::optional<std::vector<Note>> notes = NotesOf(tune, section.barLengths, error);
    if (!notes) return false;
    for (const Note& note : *notes) {
      AddEvent(start + note.tick, tune.role, tune.voice, note.pitches, note.length, section.tempo);
    }
    return true;
  }

  bool AddStrokes(const Music& music, const Section& section, int start, ScoreError& error) {
    const auto bars = StrokeBarsOf(music, section.line, error);
    if (!bars) return false;
    const std::vector<int>& lengths = section.barLengths;
    const int longest = *std::max_element(lengths.begin(), lengths.end()) / sixteenth;
    int barStart = start;
    for (std::size_t bar = 0; bar < lengths.size(); ++bar) {
      const auto& [strokes, end] = (*bars)[bar % bars->size()];
      const int given = static_cast<int>(strokes.size()), wanted = lengths[bar] / sixteenth;
      if (given < wanted || given > longest) {
        error = {LineOf(music, end),
                 "a bar has " + std::to_string(given) + " strokes, not " + std::to_string(wanted)};
        return false;
      }
      for (int step = 0; step < wanted; ++step) {
        const std::optional<Stroke> stroke = StrokeNamed(strokes[static_cast<std::size_t>(step)], step);
        if (!stroke) continue;
        const int tick = step * sixteenth;
        // A long roll lasts to the end of its bar.
        AddEvent(barStart + tick, stroke->role, stroke->voice, {}, lengths[bar] - tick, section.tempo);
      }
      barStart += lengths[bar];
    }
    return true;
  }

  // A show may end before its section does.
  bool AddShow(const Show& show, const Section& section, int start, ScoreError& error) {
    std::vector<int> barLengths = section.barLengths;
    const std::string& text = show.music.text;
    const auto bars = static_cast<std::size_t>(std::count(text.begin(), text.end(), '|'));
    barLengths.resize(std::min(barLengths.size(), std::max<std::size_t>(bars, 1)));
    NotationError wrong;
    const auto pictures = ReadNamed(
        text, barLengths, [this](std::string_view name) { return SlotsNamed(name); }, wrong);
    if (!pictures) {
      error = {text.empty() ? show.line : LineOf(show.music, wrong.at),
               wrong.message + " (in the show of line " + std::to_string(show.line) + ')'};
      return false;
    }
    for (const Note& picture : *pictures) {
      score_.pictures.push_back({start + picture.tick, show.channel, picture.pitches.front()});
    }
    return true;
  }

  // The slot of a picture by its file's name without the ending.
  std::optional<std::vector<int>> SlotsNamed(std::string_view name) const {
    if (name == "R") return std::vector<int>{};
    for (const auto& [slot, file] : score_.head.pictures) {
      if (file.substr(0, file.rfind('.')) == name) return std::vector<int>{slot};
    }
    return std::nullopt;
  }

  Score score_;
};

}  // namespace

int EndTick(const Score& score) {
  return score.measures.empty() ? 0 : score.measures.back().tick + score.measures.back().length;
}

double SecondsAt(const Score& score, int tick) {
  double seconds = 0;
  for (std::size_t i = 0; i < score.tempi.size() && score.tempi[i].tick < tick; ++i) {
    const int until = i + 1 < score.tempi.size() ? std::min(tick, score.tempi[i + 1].tick) : tick;
    seconds += (until - score.tempi[i].tick) * SecondsPerTick(score.tempi[i].tempo);
  }
  return seconds;
}

std::optional<Score> ReadScore(std::string_view text, ScoreError& error) {
  std::optional<SongText> song = ReadSongText(text, error);
  if (!song) return std::nullopt;
  Builder builder(std::move(song->head));
  for (const Section& section : song->sections) {
    if (!builder.Add(section, error)) return std::nullopt;
  }
  Score score = std::move(builder).Finished();
  for (const ChartPlan& chart : score.head.charts) {
    for (const IdleSound& idle : chart.idle) {
      if (Sounds(score, idle.voice)) continue;
      error = {chart.line, "an idle key of this chart has a stroke that the music never plays"};
      return std::nullopt;
    }
  }
  return score;
}

}  // namespace assetmaker
