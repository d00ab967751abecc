// Checks of the sounds and pictures that a chart names.
#include <optional>
#include <string>
#include <utility>

#include "base/paths.h"
#include "graphics/bitmaps.h"
#include "platform/files.h"
#include "platform/sound_file.h"
#include "sound/buffers.h"
#include "state/settings.h"
#include "tools/qlmprobe/check_facts.h"

namespace probe {
namespace {

using qlm::Join;
using qlm::Text;
using qlm::TextView;

// Base and layer are laid on a picture of this size, and a copy that runs off it is refused.
constexpr int32_t kCoverSide = 256;

// "kick." of "kick.wav"; the whole name when it has no dot.
TextView Stem(TextView name) { return name.substr(0, name.rfind(u'.') + 1); }

// Another file of the same name that lies there, for a hint. Empty when there is none.
Text Neighbour(TextView folder, TextView name, std::initializer_list<TextView> extensions) {
  for (const TextView extension : extensions) {
    Text other = Join(Stem(name), extension);
    if (!qlm::EqualsAnyCase(other, name) && qlm::FileExists(Join(folder, other))) return other;
  }
  return {};
}

// The wide reading, for as long as it lives.
class Wide {
 public:
  Wide() = default;
  ~Wide() { qlm::WideCharts = before_; }
  Wide(const Wide&) = delete;
  Wide& operator=(const Wide&) = delete;

 private:
  bool before_ = std::exchange(qlm::WideCharts, true);
};

// Whether the game can load a sound of this very path. Of those that the wide reading alone takes, the first
// samples are enough, since a library holds hundreds of thousands of them.
bool IsSound(Text path) {
  constexpr size_t kEnough = 1 << 16;
  const std::optional<std::string> head = platform::ReadFilePart(path, 0, platform::kSoundFileHead);
  if (qlm::WideCharts && platform::IsSoundFile(head.value_or(std::string()))) {
    const platform::DecodeError error =
        platform::DecodeSoundFileAt(platform::SystemPath(path), kEnough).error;
    if (error == platform::DecodeError::kNone || error == platform::DecodeError::kTooLong) return true;
  }
  platform::SoundDescription description;
  platform::SoundFormat format;
  platform::SoundError error = platform::kSoundOk;
  return qlm::CreateSndBuf(path, description, format, error) != nullptr;
}

bool IsPicture(TextView path) {
  qlm::SurfacePtr surface;
  qlm::Rect rect;
  qlm::LoadAnyBitmap(path, surface, rect);
  return surface != nullptr;
}

// What is said of a file that the game does not find: which one the wide reading takes in its place, or which
// one lies there for nothing.
Text Hint(TextView wide, TextView neighbour) {
  if (!wide.empty()) return Join(u"; the wide reading takes ", qlm::GetFileName(wide));
  return neighbour.empty() ? Text() : Join(u"; ", neighbour, u" is there");
}

// The file that the wide reading takes for the path, empty when it finds none that it can load.
Text WideSound(Text path) {
  const Wide wide;
  qlm::FindWideSound(path);
  return qlm::FileExists(path) && IsSound(path) ? path : Text();
}

Text WidePicture(Text path) {
  const Wide wide;
  qlm::FindWidePicture(path);
  return qlm::FileExists(path) && IsPicture(path) ? path : Text();
}

void CheckSound(Findings& findings, TextView folder, const qlm::ChartReport::Definition& sound) {
  const TextView name = sound.name;
  if (name.empty()) return findings.Add(sound.line, "sound", u"the name of the sound is missing");
  Text path = Join(folder, name);
  qlm::FindWideSound(path);
  if (IsSound(path)) return;
  const Text mp3 = Join(folder, Stem(name), u"mp3");
  const Text there = qlm::FileExists(path) ? path : qlm::FileExists(mp3) ? mp3 : Text();
  if (!there.empty()) {
    const bool wideTakes = !qlm::WideCharts && WideSound(there) == there;
    findings.Add(sound.line, "sound",
                 Join(qlm::GetFileName(there), u" is there, but is no sound that the game can load",
                      wideTakes ? u"; the wide reading can" : u""));
  } else if (qlm::WideCharts) {
    findings.Add(sound.line, "sound",
                 Join(u"no such file; tried ", name, u" and the same as .wav, .ogg, .flac, .opus and .mp3"));
  } else {
    findings.Add(sound.line, "sound",
                 Join(u"no such file; tried ", name, u", ", Stem(name), u"mp3 and ", name, u"wav",
                      Hint(WideSound(path), Neighbour(folder, name, {u"wav", u"ogg", u"flac", u"opus"}))));
  }
}

void CheckPicture(Findings& findings, TextView folder, const qlm::ChartReport::Definition& picture,
                  bool covers) {
  const TextView name = picture.name;
  if (name.empty()) return findings.Add(picture.line, "picture", u"the name of the picture is missing");
  Text path = Join(folder, name);
  qlm::FindWidePicture(path);
  if (!qlm::FileExists(path)) {
    if (qlm::WideCharts) {
      return findings.Add(
          picture.line, "picture",
          Join(u"no such file; tried ", name, u" and the same as .bmp, .png, .jpg, .jpeg and .gif"));
    }
    const Text other = Neighbour(folder, name, {u"bmp", u"png", u"jpg", u"jpeg", u"gif"});
    return findings.Add(picture.line, "picture",
                        Join(u"no such file; tried ", name, Hint(WidePicture(path), other)));
  }
  const TextView file = qlm::GetFileName(path);
  if (qlm::IsVideo(path)) {
    return findings.Add(picture.line, "picture",
                        Join(file, u" is a video, and none is played: its place stays dark"));
  }
  qlm::SurfacePtr surface;
  qlm::Rect rect;
  qlm::LoadAnyBitmap(path, surface, rect);
  if (surface == nullptr) {
    findings.Add(picture.line, "picture", Join(file, u" is there, but is no picture that the game can load"));
  } else if (covers && (surface->Width() > kCoverSide || surface->Height() > kCoverSide)) {
    findings.Add(picture.line, "picture",
                 Join(file, u" has ", surface->Width(), u" by ", surface->Height(),
                      u" pixels: as base or layer nothing above 256 by 256 is shown; the wide reading makes "
                      u"it smaller"));
  }
}

}  // namespace

void CheckFiles(Findings& findings, const qlm::ChartReport& report, TextView path) {
  const TextView folder = qlm::GetFolder(path);
  for (const auto& [slot, sound] : report.sounds) CheckSound(findings, folder, sound);
  for (const auto& [slot, picture] : report.pictures) {
    // The wide reading makes a large one smaller.
    const bool covers = !qlm::WideCharts && report.coverUses[static_cast<size_t>(slot)].count > 0;
    CheckPicture(findings, folder, picture, covers);
  }
  if (report.stage && !report.stage->name.empty()) CheckPicture(findings, folder, *report.stage, false);
}

}  // namespace probe
