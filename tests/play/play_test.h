// The ground of a test of the play: a chart laid by hand, a screen and a sound device that only memory sees,
// and turns at chosen moments.
#pragma once

#include <cstdint>
#include <functional>
#include <string>

#include "state/chart.h"
#include "state/sounds.h"
#include "state/transcript.h"
#include "tests/support/game_test.h"

namespace qlm {

class PlayTest : public GameTest {
 protected:
  // The virtual clock's start, which is 0 ms of a chart that nothing has moved.
  static constexpr uint32_t kStart = 1'000'000;

  // An empty table of 1000 objects, 1250 BPM (one position unit a millisecond), a gauge sample every second,
  // a screen, and a device that renders into memory. Sounds of the chart are heard. A transcript is attached.
  PlayTest();
  ~PlayTest() override;

  // Lays the next object. The test keeps the order of positions.
  ChartObj& Lay(int32_t channel, int32_t pos, int32_t value = 0);
  // Lays bar lines of measures 0 to `last`, 192 units each, and sets lastMeasure to last - 1.
  void LayBars(int32_t last);
  // Fills a slot, so that it starts without a load.
  static void FillSlot(int32_t slot, uint32_t hertz = 22050);
  // The same for a system sound.
  static void FillSound(SE sound);
  static bool Sounding(SE sound);

  // Makes the chart's clock begin at kStart, with all objects ahead.
  void Begin();
  static void SetClock(uint32_t ms) { SetNow(kStart + ms); }
  static void SetNow(uint32_t now);
  // One turn without a frame, `ms` after kStart.
  static void Turn(uint32_t ms);

  // Lets each frame of a loop last `ms`. The pump of each frame calls `hand`, if given, with the clock's
  // distance from kStart.
  static void RunFrames(uint32_t ms, std::function<void(int32_t)> hand = {});
  // How many frames were shown since RunFrames.
  static int32_t FramesShown();

  // Slots started so far, as in "1@20 2@30": slot and play clock.
  std::string Starts() const;
  // How many log lines begin so, indents apart.
  int32_t LinesBeginning(TextView words) const;

  Transcript played;
};

// A sound file of some milliseconds of silence: 16 bits, one channel, 22050 Hz.
std::string WavBytes(int32_t ms);

}  // namespace qlm
