// Tasks are worked off one after the other; each note takes its lane, or the nearest free one.
#include "lanes.h"

#include <algorithm>
#include <array>
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

class Layout {
 public:
  explicit Layout(const Score& score) : score_(score), channels_(score.events.size(), background) {}

  void Do(const Task& task) {
    const std::vector<std::size_t> notes = NotesOf(task);
    const std::map<int, std::vector<Pitch>> phrases = PitchesByPhrase(notes);
    for (const std::size_t note : notes) {
      const Event& event = score_.events[note];
      if (HeldAt(event.tick, task.hand) >= task.most) continue;
      if (task.fingering == Fingering::turntable) {
        Take(note, task.hand.turntable);
        continue;
      }
      const std::vector<std::size_t> free = FreeKeys(event.tick, task.hand);
      if (free.empty()) continue;
      const std::size_t keys = task.hand.keys.size();
      const std::size_t key =
          task.fingering == Fingering::contour
              ? Nearest(free, ByContour(event, phrases.at(PhraseAt(event.tick)), keys))
              : Nearest(Roomiest(free, event.tick, task.hand), ByRhythm(event.tick, keys));
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

  // The key for a place in the bar: neighbouring sixteenths lie apart, so that both hands have their share.
  std::size_t ByRhythm(int tick, std::size_t keys) const {
    constexpr std::array<double, 16> places = {0.0, 0.8,  0.35, 1.0, 0.65, 0.15, 0.5,  0.9,
                                               0.2, 0.75, 0.4,  1.0, 0.6,  0.1,  0.85, 0.3};
    const auto step = static_cast<std::size_t>((tick - MeasureAt(score_, tick).tick) / sixteenth);
    return static_cast<std::size_t>(
        std::lround(places[step % places.size()] * static_cast<double>(keys - 1)));
  }

  // Of the free keys those with at least one key between them and what the hand holds; all of them if there
  // are none.
  std::vector<std::size_t> Roomiest(const std::vector<std::size_t>& free, int tick, const Hand& hand) const {
    std::vector<std::size_t> roomy;
    for (const std::size_t key : free) {
      const auto heldAt = [&](std::size_t other) {
        return other < hand.keys.size() && taken_.count({tick, hand.keys[other]}) != 0;
      };
      if (!heldAt(key + 1) && (key == 0 || !heldAt(key - 1))) roomy.push_back(key);
    }
    return roomy.empty() ? free : roomy;
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
