// Tasks are worked off one after the other; each note takes its lane, or the nearest free one. Where the
// music leaves a choice, it falls on the keys that have been played least, so that a chart uses all of them.
#include "lanes.h"

#include <algorithm>
#include <cmath>
#include <cstdlib>
#include <limits>
#include <map>
#include <set>

namespace assetmaker {
namespace {

constexpr int background = 1;
constexpr int quarter = wholeNote / 4;
constexpr double spread = 2;  // how many notes more on a key are worth a step away from an even spread

const Measure& MeasureAt(const Score& score, int tick) {
  const auto next = std::find_if(score.measures.begin(), score.measures.end(),
                                 [=](const Measure& measure) { return measure.tick > tick; });
  return *(next - 1);
}

bool Kept(Keep keep, const Event& event, int tickInMeasure) {
  switch (keep) {
    case Keep::all: return true;
    case Keep::eighths: return tickInMeasure % (quarter / 2) == 0;
    case Keep::quarters: return tickInMeasure % quarter == 0;
    case Keep::halves: return tickInMeasure % (2 * quarter) == 0;
    case Keep::accents:
      return event.sample.voice == Voice::drySnare || event.sample.voice == Voice::fieldAccent ||
             event.sample.voice == Voice::fieldFlam || event.sample.voice == Voice::shortRoll ||
             event.sample.voice == Voice::longRoll;
  }
  return false;
}

// For each row of costs a column, rising from row to row, so that the sum of the costs is least. Where there
// are more rows than columns, neighbouring rows share one and no column is left out.
std::vector<std::size_t> CheapestRise(const std::vector<std::vector<double>>& costs) {
  constexpr double never = std::numeric_limits<double>::infinity();
  const std::size_t rows = costs.size(), columns = costs.front().size();
  const bool crowded = rows > columns;
  std::vector<std::vector<double>> sums(rows,
                                        std::vector<double>(columns, never));  // of the best way up to here
  std::vector<std::vector<std::size_t>> before(
      rows, std::vector<std::size_t>(columns));  // its column one row below
  for (std::size_t column = 0; column < (crowded ? 1 : columns); ++column) sums[0][column] = costs[0][column];
  for (std::size_t row = 1; row < rows; ++row) {
    for (std::size_t column = 0; column < columns; ++column) {
      const std::size_t first = crowded && column > 0 ? column - 1 : 0;
      const std::size_t end = crowded ? column + 1 : column;
      for (std::size_t from = first; from < end; ++from) {
        const double sum = sums[row - 1][from] + costs[row][column];
        if (sum >= sums[row][column]) continue;
        sums[row][column] = sum;
        before[row][column] = from;
      }
    }
  }
  const auto least = std::min_element(sums.back().begin(), sums.back().end());
  std::size_t column = crowded ? columns - 1 : static_cast<std::size_t>(least - sums.back().begin());
  std::vector<std::size_t> chosen(rows);
  for (std::size_t row = rows; row-- > 0; column = before[row][column]) chosen[row] = column;
  return chosen;
}

// What decides on a key within a phrase, the pitch or the place in the bar, and the key it got.
using Keys = std::map<int, std::size_t>;

class Layout {
 public:
  explicit Layout(const Score& score) : score_(score), channels_(score.events.size(), background) {}

  void Do(const Task& task) {
    const std::vector<std::size_t> notes = NotesOf(task);
    int phrase = -1;
    Keys keys;
    for (const std::size_t note : notes) {
      const Event& event = score_.events[note];
      if (PhraseAt(event.tick) != phrase) {
        phrase = PhraseAt(event.tick);
        keys = task.fingering == Fingering::contour ? ByContour(notes, phrase, task.hand) : Keys();
      }
      if (HeldAt(event.tick, task.hand) >= task.most) continue;
      if (task.fingering == Fingering::turntable) {
        Take(note, task.hand.turntable);
        continue;
      }
      const std::vector<std::size_t> free = FreeKeys(event.tick, task.hand);
      if (free.empty()) continue;
      const std::size_t key =
          task.fingering == Fingering::contour
              ? Nearest(free, keys.at(PitchOf(event)))
              : ByRhythm(Roomiest(free, event.tick, task.hand), event.tick, task.hand, keys);
      Take(note, task.hand.keys[key]);
    }
  }

  std::vector<int> Channels() && { return std::move(channels_); }

 private:
  std::vector<std::size_t> NotesOf(const Task& task) const {
    std::vector<std::size_t> notes;
    for (std::size_t i = 0; i < score_.events.size(); ++i) {
      const Event& event = score_.events[i];
      const Measure& measure = MeasureAt(score_, event.tick);
      const std::vector<std::string>& places = task.sections;
      const bool here =
          places.empty() || std::find(places.begin(), places.end(), measure.section) != places.end();
      // The first bar leads in.
      if (here && event.tick >= score_.measures.front().length && event.role == task.role &&
          channels_[i] == background && Kept(task.keep, event, event.tick - measure.tick)) {
        notes.push_back(i);
      }
    }
    return notes;
  }

  // A phrase is two measures; it is known by the tick at which it begins.
  int PhraseAt(int tick) const {
    const Measure& measure = MeasureAt(score_, tick);
    return measure.inSection % 2 == 0 ? measure.tick : MeasureAt(score_, measure.tick - 1).tick;
  }

  static Pitch PitchOf(const Event& event) {
    return event.sample.pitches.empty() ? 0 : event.sample.pitches.back();
  }

  // The keys for the pitches of a phrase, rising from left to right: those that have been played least so
  // far, and of those alike the most evenly spread.
  Keys ByContour(const std::vector<std::size_t>& notes, int phrase, const Hand& hand) const {
    std::map<Pitch, int> counts;
    for (const std::size_t note : notes) {
      const Event& event = score_.events[note];
      if (PhraseAt(event.tick) == phrase) ++counts[PitchOf(event)];
    }
    const std::size_t keys = hand.keys.size();
    const double step = static_cast<double>(keys) / static_cast<double>(counts.size());
    double even = (step - 1) / 2;  // the key of the pitch in an even spread
    std::vector<std::vector<double>> costs;
    for (const auto& [pitch, count] : counts) {
      std::vector<double>& row = costs.emplace_back();
      for (std::size_t key = 0; key < keys; ++key) {
        row.push_back(count * (Played(hand.keys[key]) + spread * std::fabs(static_cast<double>(key) - even)));
      }
      even += step;
    }
    const std::vector<std::size_t> chosen = CheapestRise(costs);
    Keys result;
    for (const auto& [pitch, count] : counts) result.emplace(pitch, chosen[result.size()]);
    return result;
  }

  static std::size_t Nearest(const std::vector<std::size_t>& free, std::size_t wanted) {
    const auto distance = [=](std::size_t key) {
      return std::abs(static_cast<int>(key) - static_cast<int>(wanted));
    };
    return *std::min_element(free.begin(), free.end(),
                             [&](std::size_t a, std::size_t b) { return distance(a) < distance(b); });
  }

  // The key that the place in the bar has in this phrase, if it is free and rested; else the free one that
  // rested an eighth or more and has been played least.
  std::size_t ByRhythm(const std::vector<std::size_t>& free, int tick, const Hand& hand, Keys& keys) const {
    const auto tired = [&](std::size_t key) { return RestedSince(hand.keys[key], tick) < quarter / 2; };
    const int place = tick - MeasureAt(score_, tick).tick;
    const auto known = keys.find(place);
    if (known != keys.end() && !tired(known->second) &&
        std::find(free.begin(), free.end(), known->second) != free.end()) {
      return known->second;
    }
    const auto effort = [&](std::size_t key) { return std::pair(tired(key), Played(hand.keys[key])); };
    return keys[place] = *std::min_element(
               free.begin(), free.end(), [&](std::size_t a, std::size_t b) { return effort(a) < effort(b); });
  }

  // Of the free keys those with at least one key between them and what the hand holds; all of them if there
  // are none.
  std::vector<std::size_t> Roomiest(const std::vector<std::size_t>& free, int tick, const Hand& hand) const {
    std::vector<std::size_t> roomy;
    for (const std::size_t key : free) {
      const auto heldAt = [&](std::size_t other) {
        return other < hand.keys.size() && Taken(tick, hand.keys[other]);
      };
      if (!heldAt(key + 1) && (key == 0 || !heldAt(key - 1))) roomy.push_back(key);
    }
    return roomy.empty() ? free : roomy;
  }

  std::vector<std::size_t> FreeKeys(int tick, const Hand& hand) const {
    std::vector<std::size_t> free;
    for (std::size_t key = 0; key < hand.keys.size(); ++key) {
      if (!Taken(tick, hand.keys[key])) free.push_back(key);
    }
    return free;
  }

  int HeldAt(int tick, const Hand& hand) const {
    const auto taken = [=, this](int channel) { return Taken(tick, channel); };
    return static_cast<int>(std::count_if(hand.keys.begin(), hand.keys.end(), taken)) + taken(hand.turntable);
  }

  int Played(int channel) const {
    const auto played = played_.find(channel);
    return played == played_.end() ? 0 : static_cast<int>(played->second.size());
  }

  // How long before `tick` the channel was played last, in ticks.
  int RestedSince(int channel, int tick) const {
    const auto played = played_.find(channel);
    if (played == played_.end()) return wholeNote;
    const auto next = played->second.lower_bound(tick);
    return next == played->second.begin() ? wholeNote : tick - *std::prev(next);
  }

  bool Taken(int tick, int channel) const {
    const auto played = played_.find(channel);
    return played != played_.end() && played->second.contains(tick);
  }

  void Take(std::size_t note, int channel) {
    if (played_[channel].insert(score_.events[note].tick).second) channels_[note] = channel;
  }

  const Score& score_;
  std::vector<int> channels_;
  std::map<int, std::set<int>> played_;  // by channel, the ticks at which it is played
};

}  // namespace

std::vector<int> ChooseLanes(const Score& score, const std::vector<Task>& tasks) {
  Layout layout(score);
  for (const Task& task : tasks) layout.Do(task);
  return std::move(layout).Channels();
}

}  // namespace assetmaker
