// The ground of a test of the play.
#include "tests/play/play_test.h"

#include <algorithm>
#include <memory>

#include "base/hooks.h"
#include "platform/clock.h"
#include "platform/sound_device.h"
#include "play/position.h"
#include "play/turn.h"
#include "state/options.h"
#include "state/session.h"
#include "state/settings.h"
#include "state/surfaces.h"
#include "state/timeline.h"
#include "tools/media_files/wav.h"

namespace qlm {
namespace {

constexpr uint32_t kRate = 22050;
std::function<void(int32_t)> handOfFrame;
uint32_t frameMs = 0;
int32_t framesShown = 0;

SoundBufferPtr SecondOfSilence(uint32_t hertz) {
  const platform::SoundFormat format{.tag = 1,
                                     .channels = 1,
                                     .samplesPerSec = hertz,
                                     .avgBytesPerSec = hertz * 2,
                                     .blockAlign = 2,
                                     .bitsPerSample = 16};
  return platform::CreateSoundBuffer({.flags = 0, .bytes = hertz * 2}, format).buffer;
}

}  // namespace

PlayTest::PlayTest() {
  numObjs = 999;
  objs.resize(1000);
  HdrBPM = 1250;
  RealHiSpeed = 1;
  HiSpeed = 1;
  HistoryStep = 1000;
  PlaySound = true;
  WAVLoadmode = 1;
  transcript = &played;
  DDBack = std::make_shared<Surface>(640, 480);
  DDSnapshot = std::make_shared<Surface>(640, 480);
  DDBga = std::make_shared<Surface>(256, 256);
  DDGraph = std::make_shared<Surface>(300, 203);
  platform::OpenSoundDevice(platform::SoundOutput::kOffline);
}

PlayTest::~PlayTest() {
  handOfFrame = {};
  transcript = nullptr;
  WavBuffer.Clear();
  SystemSound.Clear();
  platform::CloseSoundDevice();
}

ChartObj& PlayTest::Lay(int32_t channel, int32_t pos, int32_t value) {
  ChartObj* obj = AddObj();
  *obj = {.measure = pos / kMeasureUnits,
          .pos = pos,
          .tick = pos % kMeasureUnits,
          .channel = channel,
          .value = value,
          .speedMul = 1};
  return *obj;
}

void PlayTest::LayBars(int32_t last) {
  for (int32_t measure = 0; measure <= last; ++measure) Lay(ObjSeparator, measure * kMeasureUnits);
  lastMeasure = last - 1;
}

void PlayTest::FillSlot(int32_t slot, uint32_t hertz) {
  WavBuffer[slot] = SecondOfSilence(hertz);
  WavFrequency[slot] = static_cast<int32_t>(hertz);
  WavLoaded[slot] = 255;
  WavLengthMs[slot] = 1000;
}

void PlayTest::FillSound(SE sound) { SystemSound[static_cast<int32_t>(sound)] = SecondOfSilence(kRate); }

bool PlayTest::Sounding(SE sound) { return SystemSound[static_cast<int32_t>(sound)]->Playing(); }

void PlayTest::SetNow(uint32_t now) { platform::UseVirtualClock(now); }

void PlayTest::Begin() {
  SetClock(0);
  PlayAlive = true;
  PreviewActive = true;
  curBPM = HdrBPM;
  SeekChart(0, true);
  playStart = kStart;
}

void PlayTest::Turn(uint32_t ms) {
  SetClock(ms);
  PlayStep();
}

void PlayTest::RunFrames(uint32_t ms, std::function<void(int32_t)> hand) {
  handOfFrame = std::move(hand);
  frameMs = ms;
  framesShown = 0;
  hooks.pumped = [] {
    if (handOfFrame) handOfFrame(platform::Elapsed(platform::Now(), kStart));
  };
  platform::SetFrameClock([](uint32_t now) {
    ++framesShown;
    return now + frameMs;
  });
}

int32_t PlayTest::FramesShown() { return framesShown; }

std::string PlayTest::Starts() const {
  std::string text;
  for (const Transcript::Start& start : played.starts) {
    if (!text.empty()) text += ' ';
    text += std::to_string(start.slot) + "@" + std::to_string(start.clock);
  }
  return text;
}

int32_t PlayTest::LinesBeginning(TextView words) const {
  return static_cast<int32_t>(std::count_if(
      log.begin(), log.end(), [&](const Text& line) { return Left(Trim(line), Len(words)) == words; }));
}

std::string WavBytes(int32_t ms) {
  return media::WavBytes(std::vector<int16_t>(static_cast<size_t>(ms) * kRate / 1000), 1, kRate);
}

}  // namespace qlm
