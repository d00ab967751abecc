// The game's engine as the commands run it: fresh, on a virtual clock, without a log file, a window or a
// sound card.
#pragma once

#include <optional>
#include <string>
#include <vector>

#include "base/json.h"
#include "base/text.h"
#include "tools/qlmprobe/arguments.h"

namespace probe {

using qlm::Json;

// The log lines of the run, each with its indent and without its time.
inline std::vector<qlm::Text> logLines;
// Message of the first failure that the game would end with.
inline std::optional<qlm::Text> fatalMessage;

// Brings the engine up with the settings and keys of a new installation, then takes the options that every
// command has: --data, --log, --rnd.
void StartEngine(Arguments& arguments);

// The options of a chart's load: --player-force, --random, --4d, --no-bga, --no-wav, --num-objs, --hazard,
// --preview, --real-hispeed. Stored in the game's own variables.
void TakeLoadOptions(Arguments& arguments);
// --set NAME=VALUE, also in the game's own variables. Gives the file that keys=FILE names.
std::optional<std::string> TakeSettings(Arguments& arguments);
// --before FILE, as often as wanted.
std::vector<std::string> TakeChartsBefore(Arguments& arguments);

// A path as a person gives it, in the game's form.
qlm::Text GamePath(const std::string& path);
// The same path in UTF-8, for the output: its bytes may be code page 932.
std::string PrintedPath(const std::string& path);
// False when `out` is the file that is read, which would be lost, or a folder: standard error then says so.
bool CheckOutput(const std::string& out, const std::string& read);
// False when there is no such file to be read: standard error then says so.
bool CheckReadable(const std::string& path);
// The same for a chart, which may also be too long.
bool CheckReadableChart(const std::string& path);
// False when there is no such folder: standard error then says so.
bool CheckFolder(const std::string& path);
// Whether a file is a course by its name.
bool IsCourseFile(const std::string& path);
// Makes a course file the loaded course; one of the old format is converted in memory alone. False when it
// cannot be read: standard error then says so.
bool TakeCourseFile(const std::string& path);
// Loads charts ahead of the one in question. False when one cannot be read.
bool LoadChartsBefore(const std::vector<std::string>& paths);

// Writes to standard output. False, and standard error says so, when not all of it can be written.
bool WriteOutput(const std::string& text);
// Ends the object and writes it. Gives `status`, or kRefused when it cannot be written.
int Print(Json& json, int status);
// Ends the file of --log. Gives `status`, or kRefused when not all lines could be written.
int FinishLog(int status);

void PutLog(Json& json);
// The key `fatal`, when something was; gives the exit status that goes with it.
int PutFatal(Json& json);

}  // namespace probe
