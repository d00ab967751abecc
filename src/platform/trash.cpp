// The system's trash: a folder "files" for what was deleted and a folder "info" that tells where each lay.
#include "platform/trash.h"

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

#include <array>
#include <cerrno>
#include <cstdio>
#include <filesystem>
#include <optional>
#include <string>

#include "platform/clock.h"
#include "platform/files.h"

namespace platform {
namespace {

namespace fs = std::filesystem;

struct Trash {
  fs::path folder;
  fs::path base;  // the paths that it tells begin behind this; empty when they are absolute
};

// Of the user; an empty folder when the user has no home.
Trash HomeTrash() {
  const fs::path data = SystemPath(PersonalDataFolder());
  return {data.empty() ? data : data / "Trash", ""};
}

std::optional<struct stat> StatusOf(const fs::path& path) {
  struct stat status = {};
  if (lstat(path.c_str(), &status) != 0) return std::nullopt;
  return status;
}

// The uppermost folder above a file that is still on the file's disk.
fs::path TopOfDisk(const fs::path& file) {
  fs::path top = file.parent_path();
  const auto disk = StatusOf(top);
  while (disk && top.has_relative_path()) {
    const auto above = StatusOf(top.parent_path());
    if (!above || above->st_dev != disk->st_dev) break;
    top = top.parent_path();
  }
  return top;
}

// Of the disk on which a file lies: a folder of the user's in one that its administrator made for all, which
// none may rename for another, or one of the user's own. The system's own disk has none.
Trash DiskTrash(const fs::path& file) {
  const fs::path top = TopOfDisk(file);
  if (!top.has_relative_path()) return {};
  const std::string user = std::to_string(getuid());
  const auto shared = StatusOf(top / ".Trash");
  if (shared && S_ISDIR(shared->st_mode) && (shared->st_mode & S_ISVTX) != 0) {
    return {top / ".Trash" / user, top};
  }
  return {top / (".Trash-" + user), top};
}

// With all above it; a folder that is made here is the user's alone.
bool MakeFolders(const fs::path& folder) {
  if (const auto status = StatusOf(folder)) return fs::is_directory(folder);
  if (!folder.has_relative_path() || !MakeFolders(folder.parent_path())) return false;
  return mkdir(folder.c_str(), 0700) == 0 || errno == EEXIST;
}

// As in an address of the web.
std::string Escaped(const std::string& path) {
  constexpr std::string_view kDigits = "0123456789ABCDEF";
  constexpr std::string_view kPlain = "-_.~/";
  std::string escaped;
  for (const char byte : path) {
    const auto value = static_cast<unsigned char>(byte);
    const bool plain = (byte >= '0' && byte <= '9') || (byte >= 'A' && byte <= 'Z') ||
                       (byte >= 'a' && byte <= 'z') || kPlain.find(byte) != std::string_view::npos;
    if (plain) {
      escaped += byte;
    } else {
      escaped += {'%', kDigits[value >> 4], kDigits[value & 15]};
    }
  }
  return escaped;
}

std::string InfoOf(const fs::path& file, const Trash& trash) {
  const fs::path told = trash.base.empty() ? file : file.lexically_relative(trash.base);
  const WallTime now = WallClock();
  std::array<char, 64> date{};
  std::snprintf(date.data(), date.size(), "%04d-%02d-%02dT%02d:%02d:%02d", now.year, now.month, now.day,
                now.hour, now.minute, now.second);
  return "[Trash Info]\nPath=" + Escaped(told.string()) + "\nDeletionDate=" + date.data() + "\n";
}

// Makes the file. False when there is one already, or it cannot be written.
bool WriteNew(const fs::path& path, const std::string& text) {
  const int file = open(path.c_str(), O_WRONLY | O_CREAT | O_EXCL | O_CLOEXEC, 0600);
  if (file < 0) return false;
  const bool written = write(file, text.data(), text.size()) == static_cast<ssize_t>(text.size());
  if (close(file) == 0 && written) return true;
  unlink(path.c_str());
  return false;
}

// NAME.qcl, NAME.2.qcl and so on.
std::string NameWith(int number, const fs::path& file) {
  std::string name = file.stem().string();
  if (number > 1) name.append(".").append(std::to_string(number));
  return name + file.extension().string();
}

// Under the first name that is free there.
bool Put(const fs::path& file, const Trash& trash) {
  constexpr int kMostOfOneName = 10'000;
  const fs::path files = trash.folder / "files", infos = trash.folder / "info";
  if (trash.folder.empty() || !MakeFolders(files) || !MakeFolders(infos)) return false;
  for (int number = 1; number <= kMostOfOneName; ++number) {
    const std::string name = NameWith(number, file);
    const fs::path info = infos / (name + ".trashinfo");
    if (StatusOf(files / name) || StatusOf(info)) continue;
    // First what it is, so that a crash leaves nothing in the trash of which nobody knows where it lay.
    if (!WriteNew(info, InfoOf(file, trash))) return false;
    if (rename(file.c_str(), (files / name).c_str()) == 0) return true;
    unlink(info.c_str());
    return false;
  }
  return false;
}

}  // namespace

bool MoveToTrash(std::u16string_view path) {
  const std::optional<std::string> found = FindPath(path);
  if (!found || fs::is_directory(*found)) return false;
  const fs::path file = fs::absolute(*found).lexically_normal();
  return Put(file, HomeTrash()) || Put(file, DiskTrash(file));
}

}  // namespace platform
