// The theme is written down as it is heard; every other section has a scene of its own.
#include "pictures.h"

namespace assetmaker {
namespace {

constexpr int baseChannel = 4, missChannel = 6, layerChannel = 7;
constexpr int beat = wholeNote / 4, halfBar = wholeNote / 2;

// Slots. The page has a state for every half bar of the theme written down, the quill one for every beat.
constexpr int desk = 0x01, blot = 0x02, window = 0x03, sealed = 0x04;
constexpr int parade = 0x05, finaleScene = 0x07;  // two each
constexpr int drops = 0x09, sparks = 0x0B;        // two each
constexpr int clear = 0x0D;                       // a layer stays until another takes its place
constexpr int page = 0x10, quill = 0x30;
constexpr int themeBars = 8, pages = 2 * themeBars + 1, quills = 4 * themeBars;

class Scene {
 public:
  explicit Scene(const Measure& measure) : measure_(measure) {}

  void Base(int tick, int picture) { Show(baseChannel, tick, picture); }
  void Layer(int tick, int picture) { Show(layerChannel, tick, picture); }

  // Two pictures in turn, one for each beat.
  void LayersByBeat(int first) {
    for (int tick = 0; tick < measure_.length; tick += beat) Layer(tick, first + tick / beat % 2);
  }

  std::vector<ChartObject> Objects() && { return std::move(objects_); }

 private:
  void Show(int channel, int tick, int picture) {
    objects_.push_back({measure_.tick + tick, channel, picture});
  }

  const Measure& measure_;
  std::vector<ChartObject> objects_;
};

// The quill stands over the note that sounds, and half a bar is on the page once it has been heard.
void Write(Scene& scene, int bar) {
  scene.Base(0, page + 2 * bar);
  scene.Base(halfBar, page + 2 * bar + 1);
  for (int n = 0; n < 4; ++n) scene.Layer(n * beat, quill + 4 * bar + n);
}

std::vector<ChartObject> ObjectsOf(const Measure& measure) {
  Scene scene(measure);
  const bool first = measure.inSection == 0;
  switch (measure.section) {
    case SectionName::prelude:
      if (first) scene.Base(0, desk);
      break;
    case SectionName::theme:
    case SectionName::themeAgain: Write(scene, measure.inSection); break;
    case SectionName::answer:
      scene.Base(0, parade);
      scene.Base(halfBar, parade + 1);
      if (first) scene.Layer(0, clear);
      break;
    case SectionName::bridge:
      if (first) scene.Base(0, window);
      scene.LayersByBeat(drops);
      break;
    case SectionName::turn: scene.Base(0, page + pages - 1); break;
    case SectionName::finale:
      scene.Base(0, finaleScene);
      scene.Base(halfBar, finaleScene + 1);
      scene.LayersByBeat(sparks);
      break;
    case SectionName::coda:
      if (measure.inSection < 3)
        scene.Base(0, finaleScene + measure.inSection % 2), scene.LayersByBeat(sparks);
      if (measure.inSection == 3) scene.Base(0, sealed), scene.Layer(0, clear);
      break;
  }
  return std::move(scene).Objects();
}

}  // namespace

std::map<int, std::string> PictureFiles() {
  std::map<int, std::string> files = {
      {desk, "desk.bmp"},           {blot, "blot.bmp"},
      {window, "window.png"},       {sealed, "sealed.bmp"},
      {parade, "parade1.bmp"},      {parade + 1, "parade2.bmp"},
      {finaleScene, "finale1.png"}, {finaleScene + 1, "finale2.png"},
      {drops, "drops1.bmp"},        {drops + 1, "drops2.bmp"},
      {sparks, "sparks1.bmp"},      {sparks + 1, "sparks2.bmp"},
      {clear, "clear.bmp"},
  };
  for (int n = 0; n < pages; ++n) files[page + n] = "page" + std::to_string(n) + ".bmp";
  for (int n = 0; n < quills; ++n) files[quill + n] = "quill" + std::to_string(n) + ".bmp";
  return files;
}

std::vector<ChartObject> PictureObjects(const Score& score) {
  std::vector<ChartObject> objects = {{0, missChannel, blot}};
  for (const Measure& measure : score.measures) {
    const std::vector<ChartObject> seen = ObjectsOf(measure);
    objects.insert(objects.end(), seen.begin(), seen.end());
  }
  return objects;
}

}  // namespace assetmaker
