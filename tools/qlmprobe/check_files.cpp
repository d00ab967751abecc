// Checks of the sounds and pictures that a chart names.
#include "base/paths.h"
#include "graphics/bitmaps.h"
#include "sound/buffers.h"
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

Text Hint(const Text& neighbour) { return neighbour.empty() ? Text() : Join(u"; ", neighbour, u" is there"); }

void CheckSound(Findings& findings, TextView folder, const qlm::ChartReport::Definition& sound) {
  const TextView name = sound.name;
  if (name.empty()) return findings.Add(sound.line, "sound", u"the name of the sound is missing");
  Text path = Join(folder, name);
  platform::SoundDescription description;
  platform::SoundFormat format;
  platform::SoundError error = platform::kSoundOk;
  if (qlm::CreateSndBuf(path, description, format, error) != nullptr) return;
  const bool there = qlm::FileExists(Join(folder, name)) || qlm::FileExists(Join(folder, Stem(name), u"mp3"));
  if (there) {
    findings.Add(sound.line, "sound",
                 Join(qlm::GetFileName(path), u" is there, but is no sound that the game can load"));
  } else {
    findings.Add(sound.line, "sound",
                 Join(u"no such file; tried ", name, u", ", Stem(name), u"mp3 and ", name, u"wav",
                      Hint(Neighbour(folder, name, {u"wav", u"ogg", u"flac"}))));
  }
}

void CheckPicture(Findings& findings, TextView folder, const qlm::ChartReport::Definition& picture,
                  bool covers) {
  const TextView name = picture.name;
  if (name.empty()) return findings.Add(picture.line, "picture", u"the name of the picture is missing");
  const Text path = Join(folder, name);
  if (!qlm::FileExists(path)) {
    const Text other = Neighbour(folder, name, {u"bmp", u"png", u"jpg", u"jpeg", u"gif"});
    return findings.Add(picture.line, "picture", Join(u"no such file; tried ", name, Hint(other)));
  }
  qlm::SurfacePtr surface;
  qlm::Rect rect;
  qlm::LoadAnyBitmap(path, surface, rect);
  if (surface == nullptr) {
    findings.Add(picture.line, "picture", Join(name, u" is there, but is no picture that the game can load"));
  } else if (covers && (surface->Width() > kCoverSide || surface->Height() > kCoverSide)) {
    findings.Add(picture.line, "picture",
                 Join(name, u" has ", surface->Width(), u" by ", surface->Height(),
                      u" pixels: as base or layer nothing above 256 by 256 is shown"));
  }
}

}  // namespace

void CheckFiles(Findings& findings, const qlm::ChartReport& report, TextView path) {
  const TextView folder = qlm::GetFolder(path);
  for (const auto& [slot, sound] : report.sounds) CheckSound(findings, folder, sound);
  for (const auto& [slot, picture] : report.pictures) {
    CheckPicture(findings, folder, picture, report.coverUses[static_cast<size_t>(slot)].count > 0);
  }
  if (report.stage && !report.stage->name.empty()) CheckPicture(findings, folder, *report.stage, false);
}

}  // namespace probe
