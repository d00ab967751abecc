// From sections of text to one list of events in time.
#include "score.h"

#include <algorithm>
#include <cmath>
#include <numeric>

#include "march.h"

namespace assetmaker {
namespace {

double SecondsPerTick(double tempo) { return 60 / tempo / (wholeNote / 4.0); }

std::optional<std::vector<Note>> NotesOf(const Tune& tune, const std::vector<int>& barLengths,
                                         NotationError& error) {
  std::optional<std::vector<Note>> notes = tune.reading == Reading::notes
                                               ? ReadNotes(tune.text, barLengths, error)
                                               : ReadChords(tune.text, barLengths, error);
  if (!notes) {
    error.message += ", in the line \"" + std::string(tune.text) + '"';
    return std::nullopt;
  }
  if (tune.reading == Reading::struck) notes = Struck(*notes, tune.rhythm, barLengths);
  if (tune.reading == Reading::broken) notes = Broken(*notes);
  return Transposed(std::move(*notes), tune.transposed);
}

struct Stroke {
  Role role;
  Voice voice;
};

// What a character of a stroke line means; `step` is its sixteenth in the bar.
std::optional<Stroke> StrokeNamed(char name, int step) {
  switch (name) {
    case 'X': return Stroke{Role::field, Voice::fieldAccent};
    case 'x': return Stroke{Role::field, step % 2 == 0 ? Voice::fieldRight : Voice::fieldLeft};
    case 'f': return Stroke{Role::field, Voice::fieldFlam};
    case 'r': return Stroke{Role::field, Voice::shortRoll};
    case 'R': return Stroke{Role::field, Voice::longRoll};
    case 'B': return Stroke{Role::lowDrum, Voice::bassDrum};
    case 'C': return Stroke{Role::metal, Voice::cymbals};
    case 't': return Stroke{Role::metal, Voice::triangle};
    case 'b': return Stroke{Role::brush, Voice::brushTap};
    case 's': return Stroke{Role::brush, Voice::brushSweep};
    case 'u': return Stroke{Role::pen, Voice::penUp};
    case 'd': return Stroke{Role::pen, Voice::penDown};
    case 'l': return Stroke{Role::pen, Voice::penLong};
    case 'n': return Stroke{Role::tap, Voice::nibTap};
    default: return std::nullopt;
  }
}

class Builder {
 public:
  bool Add(const Section& section, NotationError& error) {
    const int start = EndTick(score_);
    AddTempi(section, start);
    for (const Tune& tune : section.tunes) {
      if (!AddTune(tune, section, start, error)) return false;
    }
    for (const Strokes& strokes : section.strokes) {
      if (!AddStrokes(strokes, section, start, error)) return false;
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

  bool AddTune(const Tune& tune, const Section& section, int start, NotationError& error) {
    const std::optional<std::vector<Note>> notes = NotesOf(tune, section.barLengths, error);
    if (!notes) return false;
    for (const Note& note : *notes) {
      AddEvent(start + note.tick, tune.role, tune.voice, note.pitches, note.length, section.tempo);
    }
    return true;
  }

  bool AddStrokes(const Strokes& strokes, const Section& section, int start, NotationError& error) {
    int barStart = start;
    for (std::size_t bar = 0; bar < section.barLengths.size(); ++bar) {
      int step = 0;
      const int steps = section.barLengths[bar] / sixteenth;
      for (const char name : strokes[bar % strokes.size()]) {
        if (name == ' ' || step == steps) continue;
        const std::optional<Stroke> stroke = StrokeNamed(name, step);
        if (!stroke && name != '.') {
          error.message = std::string("no stroke is called '") + name + "'";
          return false;
        }
        const int tick = step * sixteenth;
        // A long roll lasts to the end of its bar.
        if (stroke)
          AddEvent(barStart + tick, stroke->role, stroke->voice, {}, section.barLengths[bar] - tick,
                   section.tempo);
        ++step;
      }
      if (step != steps) {
        error.message = "a line of strokes does not fill its bar";
        return false;
      }
      barStart += section.barLengths[bar];
    }
    return true;
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

std::optional<Score> TheMarch(NotationError& error) {
  Builder builder;
  for (const Section& section : MarchSections()) {
    if (!builder.Add(section, error)) return std::nullopt;
  }
  return std::move(builder).Finished();
}

}  // namespace assetmaker
