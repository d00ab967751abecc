// Cutting of paths, and the few questions that the game asks of the disk and the machine.
#include "base/paths.h"

#include "platform/files.h"

namespace qlm {

Text DataPath(TextView name) { return Join(AppPath, u"\\_qlmfiles\\", name); }

TextView GetFolder(TextView path) { return path.substr(0, path.rfind(u'\\') + 1); }

TextView GetFileName(TextView path) { return path.substr(path.rfind(u'\\') + 1); }

Text GetExtension(TextView path) {
  const TextView name = GetFileName(path);
  return UCase(name.substr(name.rfind(u'.') + 1));
}

bool HasExtension(TextView path) { return GetFileName(path).find(u'.') != TextView::npos; }

Text WithExtension(TextView path, TextView extension) {
  return Join(HasExtension(path) ? path.substr(0, path.rfind(u'.')) : path, extension);
}

Text EnsureBackslash(TextView path) { return path.ends_with(u'\\') ? Text(path) : Join(path, u"\\"); }

bool FileExists(TextView path) { return platform::FileLength(path).has_value(); }

std::optional<Text> FindFileOfKinds(TextView path, std::span<const TextView> extensions) {
  const size_t name = path.find_last_of(u"\\/") + 1;  // charts write either
  if (name == path.size()) return std::nullopt;
  if (FileExists(path)) return Text(path);
  const size_t dot = path.rfind(u'.');
  const bool hasDot = dot != TextView::npos && dot >= name;
  const TextView stem = hasDot ? path.substr(0, dot) : path;
  for (const TextView extension : extensions) {
    if (hasDot && EqualsAnyCase(path.substr(dot), extension)) continue;
    if (Text other = Join(stem, extension); FileExists(other)) return other;
  }
  return std::nullopt;
}

void MakeFolders(TextView path) {
  for (size_t end = path.find(u'\\', 1); end != TextView::npos; end = path.find(u'\\', end + 1)) {
    platform::MakeFolder(path.substr(0, end));
  }
  if (!path.empty() && !path.ends_with(u'\\')) platform::MakeFolder(path);
}

Text MemoryStatus() {
  const platform::MemoryInKib memory = platform::PhysicalMemory();
  return Join(Fixed(memory.free, 1, true), u" / ", Fixed(memory.total, 1, true));
}

}  // namespace qlm
