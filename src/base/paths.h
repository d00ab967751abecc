// Paths in the game's own form, with "\" between the parts.
#pragma once

#include <optional>
#include <span>

#include "base/text.h"

namespace qlm {

// The program's folder without a trailing "\". `Main` sets it; each test has one of its own.
inline Text AppPath;
// A file of the program: AppPath, "\_qlmfiles\" and the name.
Text DataPath(TextView name);

// Up to and including the last "\"; empty when there is none.
TextView GetFolder(TextView path);
// Behind the last "\".
TextView GetFileName(TextView path);
// Behind the last "." of the file name, in capitals; the whole file name when it has no dot.
Text GetExtension(TextView path);
// The path with what stands behind the last "." of its file name replaced, as in ".qsd"; a name without a dot
// gets the extension behind it.
Text WithExtension(TextView path, TextView extension);
bool HasExtension(TextView path);
// The path as it is if there is such a file, or with the first of these extensions behind its stem, as in
// ".ogg", for which there is one. Nothing when there is none, and for a path that names no file.
std::optional<Text> FindFileOfKinds(TextView path, std::span<const TextView> extensions);
Text EnsureBackslash(TextView path);

// Whether a file's length can be asked for; a folder has none.
bool FileExists(TextView path);
// Makes each missing folder along the path. The last part counts as a folder.
void MakeFolders(TextView path);

// Free and total physical memory in kilobytes, each with one decimal, joined by " / ".
Text MemoryStatus();

}  // namespace qlm
