// The command `dump`: a file of the game in plain words, by its name.
#include <span>

#include "base/paths.h"
#include "files/course_files.h"
#include "files/ini_text.h"
#include "files/list_file.h"
#include "files/settings_file.h"
#include "files/settings_keys.h"
#include "platform/files.h"
#include "state/options.h"
#include "state/settings.h"
#include "tools/qlmprobe/commands.h"
#include "tools/qlmprobe/dump_scores.h"
#include "tools/qlmprobe/engine.h"
#include "tools/qlmprobe/keys.h"
#include "tools/qlmprobe/song_entry.h"

namespace probe {
namespace {

using qlm::Text;
using qlm::TextView;

constexpr TextView kSettingsFile = u"qlm_conf.ini";
constexpr TextView kKeyFile = u"qlm_keycnf.dat";

void PutVariable(Json& json, const qlm::SettingVariable& variable) {
  std::visit(
      [&](const auto& place) {
        using Place = std::decay_t<decltype(place)>;
        if constexpr (std::is_same_v<Place, qlm::ProgramPath>) {
          json.Value(TextView(*place.path));
        } else if constexpr (std::is_same_v<Place, qlm::TurntableSide>) {
          json.Value(*place.right);
        } else if constexpr (std::is_same_v<Place, Text*>) {
          json.Value(TextView(*place));
        } else {
          json.Value(*place);
        }
      },
      variable);
}

void PutRow(Json& json, TextView section, TextView key) { json.Row(section, key); }

const qlm::SettingKey* FindRow(TextView section, TextView key) {
  for (const auto& rows : {qlm::SettingKeys(), qlm::OwnSettingKeys()}) {
    for (const qlm::SettingKey& row : rows) {
      if (qlm::EqualsAnyCase(row.section, section) && qlm::EqualsAnyCase(row.key, key)) return &row;
    }
  }
  return nullptr;
}

// What the game takes from the file, and where the file and the game do not meet.
void PutSettings(Json& json, const qlm::IniText& file) {
  std::vector<const qlm::SettingKey*> refused;
  json.Key("settings").BeginArray();
  for (const qlm::SettingKey& row : qlm::SettingKeys()) {
    const Text text = GetIniValue(file, row.section, row.key, qlm::DefaultText(row.variable, row.absent));
    const bool taken = qlm::StoreSetting(row.variable, text);
    if (!taken && file.Find(row.section, row.key)) refused.push_back(&row);
    json.BeginArray();
    json.Value(row.section);
    json.Value(row.key);
    PutVariable(json, row.variable);
    json.EndArray();
  }
  json.EndArray();
  json.Key("absent").BeginArray();
  for (const qlm::SettingKey& row : qlm::SettingKeys()) {
    if (!file.Find(row.section, row.key)) PutRow(json, row.section, row.key);
  }
  json.EndArray();
  json.Key("refused").BeginArray();
  for (const qlm::SettingKey* row : refused) PutRow(json, row->section, row->key);
  json.EndArray();
  json.Key("unknown").BeginArray();
  for (const qlm::IniText::Entry& entry : file.Entries()) {
    const bool known =
        qlm::EqualsAnyCase(entry.section, u"MainForm") || FindRow(entry.section, entry.key) != nullptr;
    if (!known) json.Row(TextView(entry.section), TextView(entry.key), TextView(entry.value));
  }
  json.EndArray();
}

bool IsNamed(TextView path, TextView name) { return qlm::EqualsAnyCase(qlm::GetFileName(path), name); }

void PutList(Json& json, std::string_view bytes) {
  const qlm::ListFile list = qlm::ReadListFile(bytes);
  json.Put("lastSong", list.lastSong);
  PutRows(json, "rows", list.rows);
  json.Put("bytes", bytes.size());
  json.Put("unread", list.unread);
}

void PutCourse(Json& json, std::string_view bytes) {
  const qlm::CourseFile course = qlm::ReadCourseFile(bytes);
  json.Put("old", course.old);
  json.Put("stars", course.stars);
  json.Put("numsongs", course.songs);
  json.Put("title", TextView(course.title));
  json.Put("length", course.length);
  PutRows(json, "songs", std::span(course.rows).first(course.songs));
  json.Put("bytes", bytes.size());
  json.Put("unread", course.unread);
}

void PutSettingsFile(Json& json, std::string_view bytes) {
  qlm::ResetSettings();
  qlm::ResetOptions();
  const qlm::IniText file(bytes);
  PutSettings(json, file);
}

// What a kind of file holds, from its bytes.
using PutBytes = void (*)(Json& json, std::string_view bytes);

// Null for a key file, which reads itself, and for a name that the game has no such file by.
PutBytes PutterFor(TextView path) {
  if (IsNamed(path, kSettingsFile)) return PutSettingsFile;
  const Text extension = qlm::GetExtension(path);
  if (extension == u"QBL" || extension == u"QWL") return PutList;
  if (extension == u"QCL") return PutCourse;
  if (extension == u"QSD") return PutScores;
  if (extension == u"QPD") return PutRecord;
  return nullptr;
}

// What is wrong with asking for this file, empty when nothing is.
std::string Unfit(const std::string& file) {
  const Text path = GamePath(file);
  if (IsNamed(path, kKeyFile) || PutterFor(path) != nullptr) return "";
  return file + ": no file of the game has this name";
}

}  // namespace

int DumpCommand(Arguments& arguments) {
  StartEngine(arguments);
  const std::vector<std::string>& files = arguments.Files();
  if (!files.empty() && arguments.Good()) {
    if (const std::string wrong = Unfit(files[0]); !wrong.empty()) arguments.Fail(wrong);
  }
  if (!arguments.Good()) return kWrongUsage;
  if (!CheckReadable(files[0])) return kRefused;

  Json json;
  if (const PutBytes put = PutterFor(GamePath(files[0]))) {
    put(json, platform::ReadFile(GamePath(files[0])).value_or(std::string()));
  } else {
    if (!ReadKeyFile(files[0])) return kRefused;
    PutKeys(json);
  }
  return Print(json, kDone);
}

}  // namespace probe
