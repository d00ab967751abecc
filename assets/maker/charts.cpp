// Each chart is a list of tasks for the hands; all else plays by itself.
#include "charts.h"

#include "lanes.h"
#include "pictures.h"

namespace assetmaker {
namespace {

using enum SectionName;

const Hand fiveKeys = {{11, 12, 13, 14, 15}, 16};
const Hand sevenKeys = {{11, 12, 13, 14, 15, 18, 19}, 16};
const Hand rightHand = {{21, 22, 23, 24, 25, 28, 29}, 26};

const std::vector<SectionName> everywhere = {prelude, theme, themeAgain, answer, bridge, turn, finale, coda};

// The title 羽ペンの行進 in code page 932.
const std::string title = "\x89\x48\x83\x79\x83\x93\x82\xCC\x8D\x73\x90\x69";

// For a first evening: the beats of the tune, the turntable once in a while.
std::vector<Task> FirstEvening() {
  return {
      {everywhere, Role::melody, Keep::quarters, Fingering::contour, fiveKeys},
      {{prelude}, Role::field, Keep::quarters, Fingering::rhythm, fiveKeys},
      {{theme, themeAgain, answer, bridge, finale},
       Role::pen,
       Keep::halves,
       Fingering::turntable,
       fiveKeys,
       1},
      {{coda}, Role::metal, Keep::all, Fingering::turntable, fiveKeys},
  };
}

// For a regular player: the whole tune with the drum's accents around it.
std::vector<Task> RegularPlayer() {
  return {
      {everywhere, Role::melody, Keep::all, Fingering::contour, sevenKeys},
      {everywhere, Role::tap, Keep::all, Fingering::rhythm, sevenKeys},
      {everywhere, Role::pen, Keep::all, Fingering::turntable, sevenKeys},
      {{finale, coda}, Role::harmony, Keep::halves, Fingering::contour, sevenKeys, 2},
      {everywhere, Role::field, Keep::accents, Fingering::rhythm, sevenKeys, 2},
      {{finale, coda}, Role::metal, Keep::all, Fingering::rhythm, sevenKeys, 4},
      {{answer}, Role::harmony, Keep::all, Fingering::rhythm, sevenKeys, 2},
      {{bridge}, Role::harmony, Keep::quarters, Fingering::rhythm, sevenKeys, 2},
  };
}

// For two hands: the tune on the right, the band on the left.
std::vector<Task> TwoHands() {
  return {
      {everywhere, Role::melody, Keep::all, Fingering::contour, rightHand},
      {everywhere, Role::tap, Keep::all, Fingering::rhythm, rightHand},
      {everywhere, Role::pen, Keep::all, Fingering::turntable, sevenKeys},
      {{themeAgain, finale, coda}, Role::harmony, Keep::quarters, Fingering::contour, rightHand, 2},
      {{answer, bridge}, Role::harmony, Keep::all, Fingering::contour, sevenKeys},
      {everywhere, Role::field, Keep::accents, Fingering::rhythm, sevenKeys},
      {{theme, themeAgain, turn, finale, coda}, Role::lowDrum, Keep::halves, Fingering::rhythm, sevenKeys, 2},
      {{themeAgain, finale, coda}, Role::metal, Keep::all, Fingering::turntable, rightHand, 4},
  };
}

// While a lane has nothing to play, a press taps the nib on the desk: invisible objects change the lane's
// sound.
void AddIdleTaps(const Score& score, const SampleBank& bank, const Hand& hand,
                 std::vector<ChartObject>& objects) {
  constexpr int fromVisible = 20;
  const int tap = bank.Slot({Voice::nibTap, {}, 0});
  for (const Measure& measure : score.measures) {
    const bool opens = (measure.section == prelude || measure.section == bridge) && measure.inSection == 0;
    if (!opens) continue;
    for (const int key : hand.keys) objects.push_back({measure.tick, key + fromVisible, tap});
  }
}

std::vector<ChartObject> SoundObjects(const Score& score, const SampleBank& bank,
                                      const std::vector<Task>& tasks) {
  const std::vector<int> channels = ChooseLanes(score, tasks);
  std::vector<ChartObject> objects;
  for (std::size_t i = 0; i < channels.size(); ++i) {
    objects.push_back({score.events[i].tick, channels[i], bank.Slot(score.events[i].sample)});
  }
  return objects;
}

Chart MakeChart(const Score& score, const SampleBank& bank, const ChartHeader& header,
                const std::vector<Task>& tasks) {
  Chart chart;
  chart.header = header;
  chart.pictures = PictureFiles();
  for (std::size_t i = 0; i < bank.Samples().size(); ++i) {
    chart.sounds[static_cast<int>(i) + 1] = FileName(bank.Samples()[i]);
  }
  chart.objects = SoundObjects(score, bank, tasks);
  const std::vector<ChartObject> seen = PictureObjects(score);
  chart.objects.insert(chart.objects.end(), seen.begin(), seen.end());
  return chart;
}

ChartHeader Header(const std::string& mode, int player, int playLevel, int rank, int total) {
  return {title + ' ' + mode, "quillmarch", "MARCH", "stage.png", player, playLevel, rank, total};
}

}  // namespace

std::vector<NamedChart> MakeCharts(const Score& score, const SampleBank& bank) {
  std::vector<NamedChart> charts = {
      {"march5.bms", MakeChart(score, bank, Header("[5KEYS]", 1, 2, 3, 320), FirstEvening())},
      {"march7.bme", MakeChart(score, bank, Header("[7KEYS]", 1, 5, 2, 280), RegularPlayer())},
      {"marchdp.bme", MakeChart(score, bank, Header("[DP]", 3, 6, 2, 300), TwoHands())},
  };
  // Invisible objects count among the notes of the second side, so a double-play chart does without them:
  // with them no play of it could reach the full score.
  AddIdleTaps(score, bank, fiveKeys, charts[0].chart.objects);
  AddIdleTaps(score, bank, sevenKeys, charts[1].chart.objects);
  return charts;
}

}  // namespace assetmaker
