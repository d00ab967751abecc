// Bringing up the engine for one command.
#include "tools/qlmprobe/engine.h"

#include <algorithm>
#include <cstdio>
#include <filesystem>
#include <fstream>
#include <system_error>

#include "base/hooks.h"
#include "base/log.h"
#include "base/numbers.h"
#include "base/paths.h"
#include "base/rnd.h"
#include "chart/loading.h"
#include "chart/reader.h"
#include "files/course_files.h"
#include "files/key_table.h"
#include "files/settings_file.h"
#include "files/stock_data.h"
#include "platform/clock.h"
#include "platform/files.h"
#include "platform/sound_device.h"
#include "shell/set_value.h"
#include "state/gauge.h"
#include "state/options.h"
#include "state/reset.h"
#include "state/session.h"
#include "state/settings.h"

namespace probe {
namespace {

using qlm::Text;
using qlm::TextView;

std::ofstream logFile;

// Each line is in the file before the next step of the game runs.
void WriteLastLine() { logFile << platform::EncodeUtf8(logLines.back()) << std::endl; }

void TakeRandomNumbers(Arguments& arguments) {
  const std::optional<std::string> list = arguments.Value("--rnd");
  if (!list) return;
  std::vector<float> numbers;
  for (const Text& piece : qlm::Split(platform::DecodeUtf8(*list), u",")) {
    const std::optional<float> number = qlm::ToSingle(piece);
    if (!number || !(*number >= 0 && *number < 1)) {
      return arguments.Fail("--rnd wants numbers from 0 up to, but not including, 1, with commas between");
    }
    numbers.push_back(*number);
  }
  qlm::SetRndList(std::move(numbers));
}

void TakeLogFile(Arguments& arguments) {
  const std::optional<std::string> name = arguments.Value("--log");
  if (!name) return;
  logFile.open(*name, std::ios::binary | std::ios::trunc);
  if (!logFile) return arguments.Fail("the log file " + *name + " cannot be written");
  qlm::logOutput.afterLine = WriteLastLine;
}

// The person's, and of an installed program that never ran the stock: nothing is written here.
Text OwnDataFolder() {
  const qlm::DataPlace place = qlm::FindDataPlace(platform::ProgramFolder());
  const bool filled = platform::IsFolder(qlm::Join(place.folder, u"\\_qlmfiles"));
  return filled || place.stock.empty() ? place.folder : place.stock;
}

}  // namespace

void StartEngine(Arguments& arguments) {
  qlm::ResetState();
  platform::UseVirtualClock(1'000'000);
  platform::OpenSoundDevice(platform::SoundOutput::kOffline);
  qlm::logOutput = {};
  qlm::logOutput.file = false;
  qlm::logOutput.lines = &logLines;
  qlm::hooks.fatalError = [](TextView, TextView message) {
    if (!fatalMessage) fatalMessage = message;
  };
  const std::optional<std::string> data = arguments.Value("--data");
  qlm::AppPath = data ? GamePath(*data) : OwnDataFolder();
  while (qlm::AppPath.ends_with(u'\\')) qlm::AppPath.pop_back();
  qlm::SetDefaultSettings();
  qlm::SetDefaultKeyMap();
  qlm::WideCharts = arguments.Flag("--wide");
  TakeLogFile(arguments);
  TakeRandomNumbers(arguments);
}

void TakeLoadOptions(Arguments& arguments) {
  if (const auto force = arguments.Number("--player-force")) {
    qlm::PlayerForce = static_cast<int32_t>(*force);
  }
  if (const auto capacity = arguments.Number("--num-objs")) {
    qlm::numObjs = static_cast<int32_t>(*capacity);
  }
  if (const auto speed = arguments.Value("--real-hispeed")) {
    const std::optional<float> factor = qlm::ToSingle(platform::DecodeUtf8(*speed));
    if (!factor || *factor < 0) arguments.Fail("--real-hispeed wants a number that is not negative");
    qlm::Assign(qlm::RealHiSpeed, factor);
  }
  qlm::Random = arguments.Flag("--random");
  qlm::FourDMode = arguments.Flag("--4d");
  qlm::NoBGA = arguments.Flag("--no-bga");
  qlm::NoWAV = arguments.Flag("--no-wav");
  qlm::HazardGauge = arguments.Flag("--hazard");
  qlm::PreviewActive = arguments.Flag("--preview");
}

std::optional<std::string> TakeSettings(Arguments& arguments) {
  std::optional<std::string> keyFile;
  for (const std::string& setting : arguments.Values("--set")) {
    const size_t equals = setting.find('=');
    if (equals == std::string::npos) {
      arguments.Fail("--set wants NAME=VALUE");
      continue;
    }
    const Text name = platform::DecodeUtf8(setting.substr(0, equals));
    if (qlm::EqualsAnyCase(name, u"keys")) {
      keyFile = setting.substr(equals + 1);
      continue;
    }
    const std::optional<Text> wrong = qlm::SetValue(name, platform::DecodeUtf8(setting.substr(equals + 1)));
    if (wrong) arguments.Fail("--set: " + platform::EncodeUtf8(*wrong));
  }
  if (qlm::HiSpeed == 0) qlm::RandomHiSpeed = true;
  return keyFile;
}

std::vector<std::string> TakeChartsBefore(Arguments& arguments) { return arguments.Values("--before"); }

Text GamePath(const std::string& path) {
  std::string slashed = path;
  if (platform::IsUtf8(slashed)) std::replace(slashed.begin(), slashed.end(), '\\', '/');
  return platform::InnerPath(slashed);
}

std::string PrintedPath(const std::string& path) {
  return platform::IsUtf8(path) ? path : platform::EncodeUtf8(platform::DecodeCp932(path));
}

bool CheckReadable(const std::string& path) {
  const Text file = GamePath(path);
  if (platform::ReadFilePart(file, 0, 1)) return true;
  std::fprintf(stderr, "qlmprobe: %s: %s\n", path.c_str(),
               platform::FileLength(file) ? "the file cannot be read"
               : platform::IsFolder(file) ? "this is a folder"
                                          : "there is no such file");
  return false;
}

bool CheckOutput(const std::string& out, const std::string& read) {
  std::error_code error;
  const bool same = std::filesystem::equivalent(out, read, error);
  if (!same && !std::filesystem::is_directory(out, error)) return true;
  std::fprintf(stderr, "qlmprobe: %s: %s\n", out.c_str(),
               same ? "this is the file that is read; name another to be written" : "this is a folder");
  return false;
}

bool CheckFolder(const std::string& folder) {
  if (platform::IsFolder(GamePath(folder))) return true;
  std::fprintf(stderr, "qlmprobe: %s: there is no such folder\n", folder.c_str());
  return false;
}

bool CheckReadableChart(const std::string& path) {
  if (!CheckReadable(path)) return false;
  if (platform::FileLength(GamePath(path)).value_or(0) <= qlm::kLongestChart) return true;
  std::fprintf(stderr, "qlmprobe: %s: a chart of more than 256 MiB is refused\n", path.c_str());
  return false;
}

bool IsCourseFile(const std::string& path) { return qlm::GetExtension(GamePath(path)) == u"QCL"; }

bool TakeCourseFile(const std::string& path) {
  if (!CheckReadable(path)) return false;
  const std::optional<std::string> bytes = platform::ReadFile(GamePath(path));
  qlm::TakeCourse(qlm::ReadCourseFile(bytes.value_or("")), false);
  return true;
}

bool LoadChartsBefore(const std::vector<std::string>& paths) {
  for (const std::string& path : paths) {
    if (!CheckReadableChart(path)) return false;
    qlm::BMSLoad(GamePath(path));
  }
  return true;
}

bool WriteOutput(const std::string& text) {
  const bool whole = std::fwrite(text.data(), 1, text.size(), stdout) == text.size();
  if (std::fflush(stdout) == 0 && whole) return true;
  std::fputs("qlmprobe: the output cannot be written\n", stderr);
  return false;
}

int Print(Json& json, int status) { return WriteOutput(json.Take()) ? status : kRefused; }

int FinishLog(int status) {
  if (logFile.good()) return status;
  std::fputs("qlmprobe: the log file cannot be written\n", stderr);
  return kRefused;
}

void PutLog(Json& json) {
  json.Key("log").BeginArray();
  for (const Text& line : logLines) json.Value(TextView(line));
  json.EndArray();
}

int PutFatal(Json& json) {
  if (!fatalMessage) return kDone;
  json.Put("fatal", TextView(*fatalMessage));
  std::string line = platform::EncodeUtf8(*fatalMessage);
  std::erase(line, '\r');
  std::replace(line.begin(), line.end(), '\n', ' ');
  std::fprintf(stderr, "qlmprobe: %s\n", line.c_str());
  return kRefused;
}

}  // namespace probe
