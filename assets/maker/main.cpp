// The asset maker: writes the system sounds, or a song from its score, into a folder, and if asked to the
// song's mix.
#include <algorithm>
#include <array>
#include <cstdio>
#include <filesystem>
#include <fstream>
#include <iterator>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "charts.h"
#include "loudness.h"
#include "mixdown.h"
#include "mp3_lead.h"
#include "system_sounds.h"
#include "wav_file.h"

namespace assetmaker {
namespace {

namespace fs = std::filesystem;

int Fail(const std::string& message) {
  std::fprintf(stderr, "assetmaker: %s\n", message.c_str());
  return 1;
}

bool MakeFolder(const fs::path& folder) {
  std::error_code error;
  fs::create_directories(folder, error);
  return !error;
}

bool WriteText(const fs::path& path, const std::string& text) {
  std::ofstream file(path, std::ios::binary | std::ios::trunc);
  file.write(text.data(), static_cast<std::streamsize>(text.size()));
  return file.good();
}

int WriteSystemSounds(const fs::path& folder) {
  if (!MakeFolder(folder)) return Fail("cannot make " + folder.string());
  for (const SystemSound& sound : MakeSystemSounds()) {
    const fs::path path = folder / (sound.name + ".wav");
    if (!WriteWav(path, sound.sound)) return Fail("cannot write " + path.string());
  }
  return 0;
}

std::optional<std::string> ReadText(const fs::path& path) {
  std::ifstream file(path, std::ios::binary);
  std::string text{std::istreambuf_iterator<char>(file), std::istreambuf_iterator<char>()};
  return file.good() ? std::optional(std::move(text)) : std::nullopt;
}

// Samples that are going to be MP3s have their lead in front.
int WriteSamples(const SampleBank& bank, const std::vector<Sound>& sounds, std::size_t lead,
                 const fs::path& folder) {
  if (!MakeFolder(folder)) return Fail("cannot make " + folder.string());
  for (std::size_t i = 0; i < sounds.size(); ++i) {
    const fs::path path = folder / (FileName(bank.Samples()[i]) + ".wav");
    Sound sound;
    Mix(sound, sounds[i], lead);
    if (!WriteWav(path, sound)) return Fail("cannot write " + path.string());
  }
  return 0;
}

// What is heard together, for the table of who is how loud.
struct Group {
  const char* name;
  std::vector<Role> roles;
};

const std::array<Group, 9>& Groups() {
  static const std::array<Group, 9> groups = {{{"melody", {Role::melody}},
                                               {"harmony", {Role::harmony}},
                                               {"bells", {Role::bells}},
                                               {"chords", {Role::chords}},
                                               {"pad", {Role::pad}},
                                               {"bass", {Role::bass}},
                                               {"drums", {Role::field, Role::lowDrum, Role::brush}},
                                               {"metal", {Role::metal}},
                                               {"pen", {Role::pen, Role::tap, Role::scratch}}}};
  return groups;
}

// How loud each group is in each section, as the ear weights it and by its energy alone.
void PrintBalance(const Score& score, const SampleBank& bank, const std::vector<Sound>& sounds) {
  std::vector<Sound> stems;
  for (const Group& group : Groups()) {
    stems.push_back(Mixdown(score, bank, sounds, [&](const Event& event) {
      return std::find(group.roles.begin(), group.roles.end(), event.role) != group.roles.end();
    }));
  }
  const auto print = [&](const char* unit, double (*measured)(const Sound&)) {
    std::printf("%-12s", unit);
    for (const Group& group : Groups()) std::printf("%9s", group.name);
    std::printf("\n");
    for (const Measure& measure : score.measures) {
      if (measure.inSection != 0) continue;
      std::printf("%-12s", measure.section.c_str());
      for (const Sound& stem : stems)
        std::printf("%9.1f", measured(DuringSection(score, stem, measure.section)));
      std::printf("\n");
    }
  };
  print("LUFS", ProgrammeLoudness);
  print("dB", EnergyDb);
}

// `raw` takes the samples that an encoder is to make into MP3s.
int WriteSong(const fs::path& scorePath, const fs::path& folder, const fs::path& raw,
              const fs::path& mixPath) {
  const std::optional<std::string> text = ReadText(scorePath);
  if (!text) return Fail("cannot read " + scorePath.string());
  ScoreError error;
  const std::optional<Score> score = ReadScore(*text, error);
  if (!score) return Fail(scorePath.string() + ':' + std::to_string(error.line) + ": " + error.message);
  SampleBank bank;
  if (!bank.Fill(*score))
    return Fail("the song has " + std::to_string(bank.Samples().size()) + " samples, 255 fit");
  if (!MakeFolder(folder)) return Fail("cannot make " + folder.string());
  const std::vector<Sound> sounds = bank.RenderAll();
  const bool asMp3 = score->head.asMp3;
  if (asMp3 && raw.empty())
    return Fail("the sounds of this song are MP3s: a folder for the encoder is missing");
  const int status = WriteSamples(bank, sounds, asMp3 ? mp3Lead : 0, asMp3 ? raw : folder);
  if (status != 0) return status;
  for (const NamedChart& named : MakeCharts(*score, bank)) {
    const fs::path path = folder / named.fileName;
    if (!WriteText(path, BmsText(named.chart, *score))) return Fail("cannot write " + path.string());
  }
  if (mixPath.empty()) return 0;
  const Sound mix = Mixdown(*score, bank, sounds);
  std::printf("%s: %.1f LUFS, true peak %.1f dB, above 4 kHz %.1f dB, sides %.1f dB\n",
              scorePath.stem().c_str(), ProgrammeLoudness(mix), TruePeakDb(mix), HighsDb(mix), WidthDb(mix));
  PrintBalance(score.value(), bank, sounds);
  return WriteWav(mixPath, mix) ? 0 : Fail("cannot write " + mixPath.string());
}

int Usage() {
  std::fputs(
      "usage: assetmaker --system FOLDER\n"
      "       assetmaker SONG.score FOLDER [--raw FOLDER] [--mix FILE.wav]\n"
      "Writes _qlmfiles/wav, or songs/SONG from its score, into FOLDER. The samples of a song with MP3 "
      "sounds\n"
      "go to the folder of --raw, for the encoder. --mix also writes the song as one sound and tells how "
      "loud,\n"
      "bright and wide it is, and who in it is how loud, -120 being silent.\n",
      stderr);
  return 2;
}

int Run(int count, char** words) {
  fs::path score, folder, raw, mix;
  if (count == 3 && std::string_view(words[1]) == "--system")
    return WriteSystemSounds(fs::path(words[2]) / "_qlmfiles" / "wav");
  for (int i = 1; i < count; ++i) {
    const std::string_view word = words[i];
    if (word == "--mix" && i + 1 < count) {
      mix = words[++i];
    } else if (word == "--raw" && i + 1 < count) {
      raw = words[++i];
    } else if (folder.empty() && !word.starts_with("--")) {
      (score.empty() ? score : folder) = word;
    } else {
      return Usage();
    }
  }
  if (folder.empty()) return Usage();
  return WriteSong(score, folder / "songs" / score.stem(), raw, mix);
}

}  // namespace
}  // namespace assetmaker

int main(int argc, char** argv) { return assetmaker::Run(argc, argv); }
