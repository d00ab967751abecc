// Changes of files, by inotify: folders are watched, since most programs that save a file put a new one in
// its place.
#include "platform/file_watch.h"

#include <sys/inotify.h>
#include <unistd.h>

#include <algorithm>
#include <array>
#include <cstddef>
#include <cstring>
#include <filesystem>
#include <system_error>
#include <utility>

#include "platform/files.h"
#include "platform/text.h"

namespace platform {

FileWatch::FileWatch() : queue_(inotify_init1(IN_NONBLOCK | IN_CLOEXEC)) {}

FileWatch::~FileWatch() {
  if (queue_ >= 0) close(queue_);
}

void FileWatch::Add(const std::string& systemPath) {
  constexpr uint32_t kChanges = IN_CLOSE_WRITE | IN_MOVED_TO | IN_MOVED_FROM | IN_DELETE | IN_CREATE;
  const std::filesystem::path path(systemPath);
  const int folder = inotify_add_watch(queue_, path.parent_path().c_str(), kChanges | IN_ONLYDIR);
  if (folder < 0) return;
  files_.push_back({folder, FoldName(DecodeUtf8(path.filename().string()))});
  if (std::find(folders_.begin(), folders_.end(), folder) == folders_.end()) folders_.push_back(folder);
}

void FileWatch::Follow(const std::vector<std::u16string>& paths) {
  if (queue_ < 0) return;
  const std::vector<int> before = std::exchange(folders_, {});
  files_.clear();
  for (const std::u16string& path : paths) {
    const std::string system = SystemPath(path);
    Add(system);
    std::error_code none;
    const std::filesystem::path file = std::filesystem::canonical(system, none);
    if (!none && file != std::filesystem::path(system)) Add(file.string());
  }
  for (const int folder : before) {
    if (std::find(folders_.begin(), folders_.end(), folder) == folders_.end()) {
      inotify_rm_watch(queue_, folder);
    }
  }
}

bool FileWatch::Changed() {
  bool changed = false;
  alignas(inotify_event) std::array<char, 4096> bytes{};
  for (;;) {
    const ssize_t length = queue_ < 0 ? -1 : read(queue_, bytes.data(), bytes.size());
    if (length <= 0) return changed;
    for (size_t place = 0; place < static_cast<size_t>(length);) {
      inotify_event event{};
      std::memcpy(&event, bytes.data() + place, sizeof event);
      const std::string name = event.len > 0 ? bytes.data() + place + sizeof event : "";
      place += sizeof event + event.len;
      // Some were lost, and any file may be among them.
      if ((event.mask & IN_Q_OVERFLOW) != 0) changed = true;
      const std::u16string folded = FoldName(DecodeUtf8(name));
      changed =
          changed || std::any_of(files_.begin(), files_.end(), [&, folder = event.wd](const Followed& file) {
            return file.folder == folder && file.name == folded;
          });
    }
  }
}

}  // namespace platform
