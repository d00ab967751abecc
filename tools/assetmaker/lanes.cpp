// Tasks are worked off one after the other; each note takes its lane, or the nearest free one.
#include "lanes.h"

#include <algorithm>
#include <cmath>
#include <cstdlib>
#include <map>
#include <set>

namespace assetmaker {
namespace {

constexpr int background = 1;
constexpr int quarter = wholeNote / 4;

const Measure& MeasureAt(const Score& score, int tick) {
  const auto next = std::find_if(score.measures.begin(), score.measures.end(),
                                 [=](const Measure& measure) { return measure.tick > tick; });
  return *(next - 1);
}

bool Kept(Keep keep, const Event& event, int tickInMeasure) {
  switch (keep) {
    case Keep::all: return true;
    case Keep::quarters: return tickInMeasure % quarter == 0;
    case Keep::halves: return tickInMeasure % (2 * quarter) == 0;
    case Keep::accents:
      return event.sample.voice == Voice::fieldAccent || event.sample.voice == Voice::fieldFlam ||
             event.sample.voice == Voice::shortRoll || event.sample.voice == Voice::longRoll;
  }
  return false;
}

class Layout {
 public:
  explicit Layout(const Score& score) : score_(score), channels_(score.events.size(), background) {}

  void Do(const Task& task) {
    const std::vector<std::size_t> notes = NotesOf(task);
    const std::map<int, std::vector<Pitch>> phrases = PitchesByPhrase(notes);
    std::size_t lastKey = 0;
    for (const std::size_t note : notes) {
      const Event& event = score_.events[note];
      if (HeldAt(event.tick, task.hand) >= task.most) continue;
      if (task.fingering == Fingering::turntable) {
        Take(note, task.hand.turntable);
        continue;
      }
      const std::vector<std::size_t> free = FreeKeys(event.tick, task.hand);
      if (free.empty()) continue;
      lastKey = task.fingering == Fingering::contour
                    ? Nearest(free, ByContour(event, phrases.at(PhraseAt(event.tick)), task.hand.keys.size()))
                    : Furthest(free, event.tick, task.hand, lastKey);
      Take(note, task.hand.keys[lastKey]);
    }
  }

  std::vector<int> Channels() && { return std::move(channels_); }

 private:
  std::vector<std::size_t> NotesOf(const Task& task) const {
    std::vector<std::size_t> notes;
    for (std::size_t i = 0; i < score_.events.size(); ++i) {
      const Event& event = score_.events[i];
      const Measure& measure = MeasureAt(score_, event.tick);
      const bool here =
          std::find(task.sections.begin(), task.sections.end(), measure.section) != task.sections.end();
      if (here && event.role == task.role && channels_[i] == background &&
          Kept(task.keep, event, event.tick - measure.tick)) {
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

  std::map<int, std::vector<Pitch>> PitchesByPhrase(const std::vector<std::size_t>& notes) const {
    std::map<int, std::set<Pitch>> distinct;
    for (const std::size_t note : notes) {
      const Event& event = score_.events[note];
      std::set<Pitch>& phrase = distinct[PhraseAt(event.tick)];
      if (!event.sample.pitches.empty()) phrase.insert(event.sample.pitches.back());
    }
    std::map<int, std::vector<Pitch>> phrases;
    for (const auto& [tick, pitches] : distinct) phrases[tick] = {pitches.begin(), pitches.end()};
    return phrases;
  }

  // The key for a note among the pitches of its phrase, these being spread over all keys.
  static std::size_t ByContour(const Event& event, const std::vector<Pitch>& phrase, std::size_t keys) {
    if (event.sample.pitches.empty() || phrase.size() < 2) return keys / 2;
    const auto place = std::find(phrase.begin(), phrase.end(), event.sample.pitches.back()) - phrase.begin();
    const double share = static_cast<double>(place) / static_cast<double>(phrase.size() - 1);
    return static_cast<std::size_t>(std::lround(share * static_cast<double>(keys - 1)));
  }

  static std::size_t Nearest(const std::vector<std::size_t>& free, std::size_t wanted) {
    const auto distance = [=](std::size_t key) {
      return std::abs(static_cast<int>(key) - static_cast<int>(wanted));
    };
    return *std::min_element(free.begin(), free.end(),
                             [&](std::size_t a, std::size_t b) { return distance(a) < distance(b); });
  }

  // The free key with the most room to what the hand holds at this tick and to its last key.
  std::size_t Furthest(const std::vector<std::size_t>& free, int tick, const Hand& hand,
                       std::size_t lastKey) const {
    const auto room = [&](std::size_t key) {
      int least = std::abs(static_cast<int>(key) - static_cast<int>(lastKey));
      for (std::size_t held = 0; held < hand.keys.size(); ++held) {
        if (taken_.count({tick, hand.keys[held]}) == 0) continue;
        least = std::min(least, std::abs(static_cast<int>(key) - static_cast<int>(held)));
      }
      return least;
    };
    return *std::max_element(free.begin(), free.end(),
                             [&](std::size_t a, std::size_t b) { return room(a) < room(b); });
  }

  std::vector<std::size_t> FreeKeys(int tick, const Hand& hand) const {
    std::vector<std::size_t> free;
    for (std::size_t key = 0; key < hand.keys.size(); ++key) {
      if (taken_.count({tick, hand.keys[key]}) == 0) free.push_back(key);
    }
    return free;
  }

  int HeldAt(int tick, const Hand& hand) const {
    int held = static_cast<int>(taken_.count({tick, hand.turntable}));
    for (const int key : hand.keys) held += static_cast<int>(taken_.count({tick, key}));
    return held;
  }

  void Take(std::size_t note, int channel) {
    if (!taken_.insert({score_.events[note].tick, channel}).second) return;
    channels_[note] = channel;
  }

  const Score& score_;
  std::vector<int> channels_;
  std::set<std::pair<int, int>> taken_;  // tick and channel
};

}  // namespace

std::vector<int> ChooseLanes(const Score& score, const std::vector<Task>& tasks) {
  Layout layout(score);
  for (const Task& task : tasks) layout.Do(task);
  return std::move(layout).Channels();
}

}  // namespace assetmaker
