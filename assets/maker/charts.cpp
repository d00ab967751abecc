// Each chart follows its plan; all that no hand plays sounds by itself.
#include "charts.h"

#include <algorithm>

#include "lanes.h"

namespace assetmaker {
namespace {

// While a lane has nothing to play, a press sounds this: invisible objects change the lane's sound. Charts
// for two hands have no idle sounds.
void AddIdleSounds(const Score& score, const SampleBank& bank, const ChartPlan& plan,
                   std::vector<ChartObject>& objects) {
  constexpr int fromVisible = 20;
  if (plan.tasks.empty()) return;
  for (const IdleSound& idle : plan.idle) {
    const int slot = bank.Slot({idle.voice, {}, 0});
    for (const Measure& measure : score.measures) {
      const bool named =
          std::find(idle.sections.begin(), idle.sections.end(), measure.section) != idle.sections.end();
      if (!named || measure.inSection != 0) continue;
      for (const int key : plan.tasks.front().hand.keys)
        objects.push_back({measure.tick, key + fromVisible, slot});
    }
  }
}

std::vector<ChartObject> ObjectsOf(const Score& score, const SampleBank& bank, const ChartPlan& plan) {
  const std::vector<int> channels = ChooseLanes(score, plan.tasks);
  std::vector<ChartObject> objects;
  for (std::size_t i = 0; i < channels.size(); ++i) {
    objects.push_back({score.events[i].tick, channels[i], bank.Slot(score.events[i].sample)});
  }
  for (const PictureChange& change : score.pictures) {
    objects.push_back({change.tick, change.channel, change.slot});
  }
  AddIdleSounds(score, bank, plan, objects);
  return objects;
}

ChartHeader HeaderOf(const SongHead& head, const ChartPlan& plan) {
  constexpr int oneSide = 1, bothSides = 3;
  return {head.title + ' ' + plan.suffix,        "quillmarch",   head.genre, head.stageFile,
          plan.keys == 14 ? bothSides : oneSide, plan.playLevel, plan.rank,  plan.total};
}

}  // namespace

std::vector<NamedChart> MakeCharts(const Score& score, const SampleBank& bank) {
  std::map<int, std::string> sounds;
  for (std::size_t i = 0; i < bank.Samples().size(); ++i) {
    sounds[static_cast<int>(i) + 1] = FileName(bank.Samples()[i]) + (score.head.asMp3 ? ".mp3" : ".wav");
  }
  std::vector<NamedChart> charts;
  for (const ChartPlan& plan : score.head.charts) {
    charts.push_back(
        {plan.fileName,
         {HeaderOf(score.head, plan), sounds, score.head.pictures, ObjectsOf(score, bank, plan)}});
  }
  return charts;
}

}  // namespace assetmaker
