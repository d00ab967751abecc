// The one place that knows the system's paths: "/" between parts, bytes for names, letter case that counts.
#include "platform/files.h"

#include <fcntl.h>
#include <sys/file.h>
#include <sys/stat.h>
#include <sys/sysinfo.h>
#include <unistd.h>

#include <algorithm>
#include <cerrno>
#include <cstdio>
#include <cstdlib>
#include <filesystem>
#include <memory>

#include "platform/folder_names.h"
#include "platform/heap.h"
#include "platform/text.h"

namespace platform {
namespace {

namespace fs = std::filesystem;

struct FileCloser {
  void operator()(std::FILE* file) const { std::fclose(file); }
};
using File = std::unique_ptr<std::FILE, FileCloser>;

bool Exists(const std::string& systemPath) {
  struct stat info {};
  return stat(systemPath.c_str(), &info) == 0;
}

// The game's form with the system's separators. A person's "/" is a separator too.
std::string Slashed(std::u16string_view path) {
  std::string slashed = EncodeUtf8(path);
  std::replace(slashed.begin(), slashed.end(), '\\', '/');
  return slashed;
}

// Goes down `slashed` part by part. Stops at the first part that does not exist and reports it through
// `missing`, which then holds the rest of the path.
std::string Descend(const std::string& slashed, std::string& missing) {
  std::string found = slashed.starts_with('/') ? "/" : "";
  size_t begin = 0;
  while (begin < slashed.size()) {
    const size_t end = std::min(slashed.find('/', begin), slashed.size());
    const std::string part = slashed.substr(begin, end - begin);
    if (!part.empty()) {
      std::string next = found + part;
      if (!Exists(next)) {
        const std::string name = FindName(found, part);
        if (name.empty()) {
          missing = slashed.substr(begin);
          return found;
        }
        next = found + name;
      }
      found = next + (end < slashed.size() ? "/" : "");
    }
    begin = end + 1;
  }
  return found;
}

File OpenFile(std::u16string_view path) {
  const std::optional<std::string> found = FindPath(path);
  struct stat info {};
  // A folder or a pipe is no file: reading one would fail late or wait forever.
  if (!found || stat(found->c_str(), &info) != 0 || !S_ISREG(info.st_mode)) return nullptr;
  return File(std::fopen(found->c_str(), "rb"));
}

// A new file for what will replace `target`, under a name in its folder that no file has and no other program
// takes. Its name goes to `name`.
File OpenTemporary(const std::string& target, std::string& name) {
  const std::string folder = target.substr(0, target.rfind('/') + 1);
  int descriptor = -1;
  for (int number = 0; descriptor < 0; ++number) {
    name = folder + ".qlm-" + std::to_string(getpid()) + "-" + std::to_string(number) + ".new";
    descriptor = open(name.c_str(), O_WRONLY | O_CREAT | O_EXCL | O_CLOEXEC, 0666);
    if (descriptor < 0 && errno != EEXIST) return nullptr;
  }
  return File(fdopen(descriptor, "wb"));
}

enum class OnDisk { kAtOnce, kLater };

// Whether all bytes went into the file and, at once, are on the disk.
bool WriteThrough(std::FILE* file, std::string_view bytes, OnDisk when) {
  return std::fwrite(bytes.data(), 1, bytes.size(), file) == bytes.size() && std::fflush(file) == 0 &&
         (when == OnDisk::kLater || fsync(fileno(file)) == 0);
}

bool Replace(std::u16string_view path, std::string_view bytes, OnDisk when) {
  const std::string target = SystemPath(path);
  std::string temporary;
  File file = OpenTemporary(target, temporary);
  if (!file) return false;
  const bool written = WriteThrough(file.get(), bytes, when);
  file.reset();
  if (written && std::rename(temporary.c_str(), target.c_str()) == 0) return true;
  unlink(temporary.c_str());
  return false;
}

// Empty where the variable names no folder by its full path.
std::string FolderFromEnvironment(const char* name) {
  const char* const value = std::getenv(name);
  return value != nullptr && *value == '/' ? value : "";
}

}  // namespace

std::optional<std::string> FindPath(std::u16string_view path) {
  std::string slashed = Slashed(path);
  if (slashed.empty()) return std::nullopt;
  if (Exists(slashed)) return slashed;
  std::string missing;
  std::string found = Descend(slashed, missing);
  // A file with a separator behind it is none.
  if (!missing.empty() || !Exists(found)) return std::nullopt;
  return found;
}

std::string SystemPath(std::u16string_view path) {
  std::string slashed = Slashed(path);
  if (Exists(slashed)) return slashed;
  std::string missing;
  const std::string found = Descend(slashed, missing);
  return found + missing;
}

std::u16string InnerPath(const std::string& systemPath) {
  std::error_code error;
  const std::string absolute = fs::absolute(systemPath, error).lexically_normal().string();
  std::u16string path;
  size_t begin = 0;
  while (begin <= absolute.size()) {
    const size_t end = std::min(absolute.find('/', begin), absolute.size());
    path += NameText(std::string_view(absolute).substr(begin, end - begin));
    if (end < absolute.size()) path += u'\\';
    begin = end + 1;
  }
  return path;
}

std::optional<int64_t> FileLength(std::u16string_view path) {
  const std::optional<std::string> found = FindPath(path);
  struct stat info {};
  if (!found || stat(found->c_str(), &info) != 0 || !S_ISREG(info.st_mode)) return std::nullopt;
  return info.st_size;
}

bool IsFolder(std::u16string_view path) {
  const std::optional<std::string> found = FindPath(path);
  struct stat info {};
  return found && stat(found->c_str(), &info) == 0 && S_ISDIR(info.st_mode);
}

bool FolderIsReadOnly(std::u16string_view path) {
  const std::optional<std::string> found = FindPath(path);
  struct stat info {};
  if (!found || stat(found->c_str(), &info) != 0 || !S_ISDIR(info.st_mode)) return false;
  // The system's administrator may write everywhere, so the rights themselves count too.
  constexpr mode_t kAnyWriter = S_IWUSR | S_IWGRP | S_IWOTH;
  return (info.st_mode & kAnyWriter) == 0 || access(found->c_str(), W_OK) != 0;
}

std::optional<std::string> ReadFile(std::u16string_view path) { return ReadFilePart(path, 0, INT64_MAX); }

std::optional<std::string> ReadFilePart(std::u16string_view path, int64_t offset, int64_t length) {
  const File file = OpenFile(path);
  struct stat info {};
  if (!file || fstat(fileno(file.get()), &info) != 0) return std::nullopt;
  const int64_t left = std::max<int64_t>(0, info.st_size - offset);
  std::string bytes;
  if (!WithinMemory([&] { bytes.resize(static_cast<size_t>(std::clamp<int64_t>(length, 0, left))); }))
    return {};
  if (bytes.empty()) return bytes;
  if (offset != 0 && fseeko(file.get(), offset, SEEK_SET) != 0) return std::nullopt;
  bytes.resize(std::fread(bytes.data(), 1, bytes.size(), file.get()));
  return bytes;
}

bool WriteFile(std::u16string_view path, std::string_view bytes) {
  return Replace(path, bytes, OnDisk::kAtOnce);
}

bool WriteFileLater(std::u16string_view path, std::string_view bytes) {
  return Replace(path, bytes, OnDisk::kLater);
}

void WaitForDisk(std::u16string_view path) {
  const int descriptor = open(SystemPath(path).c_str(), O_RDONLY | O_CLOEXEC);
  if (descriptor < 0) return;
  syncfs(descriptor);
  close(descriptor);
}

bool AppendFile(std::u16string_view path, std::string_view bytes) {
  const File file(std::fopen(SystemPath(path).c_str(), "ab"));
  return file && std::fwrite(bytes.data(), 1, bytes.size(), file.get()) == bytes.size() &&
         std::fflush(file.get()) == 0;
}

bool DeleteFile(std::u16string_view path) {
  const std::optional<std::string> found = FindPath(path);
  return found && unlink(found->c_str()) == 0;
}

bool LockFile(std::u16string_view path) {
  const int descriptor = open(SystemPath(path).c_str(), O_RDWR | O_CREAT | O_CLOEXEC, 0666);
  if (descriptor < 0 || flock(descriptor, LOCK_EX | LOCK_NB) == 0)
    return true;  // the open file holds the lock
  const bool heldByAnother = errno == EWOULDBLOCK;
  close(descriptor);
  return !heldByAnother;
}

bool MakeFolder(std::u16string_view path) {
  return IsFolder(path) || mkdir(SystemPath(path).c_str(), 0777) == 0;
}

std::vector<FolderEntry> ListFolder(std::u16string_view path) {
  std::vector<FolderEntry> entries;
  const std::optional<std::string> found = FindPath(path);
  if (!found) return entries;
  for (const std::string& name : StoredNames(*found)) {
    struct stat info {};
    const bool isFolder = stat((*found + "/" + name).c_str(), &info) == 0 && S_ISDIR(info.st_mode);
    entries.push_back({NameText(name), isFolder});
  }
  return entries;
}

std::u16string PersonalDataFolder() {
  if (const std::string data = FolderFromEnvironment("XDG_DATA_HOME"); !data.empty()) return InnerPath(data);
  const std::string home = FolderFromEnvironment("HOME");
  return home.empty() ? std::u16string() : InnerPath(home + "/.local/share");
}

std::u16string ProgramFolder() {
  std::error_code error;
  const fs::path program = fs::read_symlink("/proc/self/exe", error);
  return InnerPath(program.parent_path().string());
}

MemoryInKib PhysicalMemory() {
  struct sysinfo info {};
  if (sysinfo(&info) != 0) return {};
  const double unit = info.mem_unit / 1024.0;
  return {static_cast<double>(info.freeram) * unit, static_cast<double>(info.totalram) * unit};
}

}  // namespace platform
