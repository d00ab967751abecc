// A whole play on the virtual clock, as `play`, `frame` and `audio` run it.
#pragma once

#include <cstdint>
#include <string>
#include <vector>

#include "state/transcript.h"
#include "tools/qlmprobe/arguments.h"
#include "tools/qlmprobe/events.h"

namespace probe {

struct PlayRequest {
  std::string file;
  std::vector<std::string> before;
  std::vector<KeyEvent> events;  // in the order of the turns that serve them
  int32_t turnsPerSecond = 60;
  int64_t limit = INT64_MAX;  // ms of the chart's clock at which the play is stopped
  std::string replay;         // a play record in place of hands; none when empty
  bool frames = false;        // composes each frame on the back surface; nothing else depends on it
};

// What watches a play. The times are those of the turn, in ms on the chart's clock, negative in the pre-roll.
class PlayWatcher {
 public:
  virtual ~PlayWatcher() = default;
  // The turn's frame is finished.
  virtual void FrameFinished(int64_t) {}
  // The turn is over; the next one happens at `next`.
  virtual void TurnOver(int64_t time, int64_t next) = 0;
};

// Takes what `play`, `frame` and `audio` have in common: the options of a chart's load, --set, --events,
// --skin, --fps, --limit, --replay and the file. Standard error tells of an events file or a skin that cannot
// be read: `status` then is not kDone.
PlayRequest TakePlayRequest(Arguments& arguments, int& status);

// Loads and plays. The transcript is filled meanwhile. False when a chart cannot be read.
bool RunPlay(const PlayRequest& request, PlayWatcher& watcher, qlm::Transcript& transcript);
// Ends the play that runs behind this turn.
void StopPlay();

}  // namespace probe
