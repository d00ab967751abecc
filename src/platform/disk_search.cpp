// Reading of folders and texts with the system's reasons.
#include "platform/disk_search.h"

#include <dirent.h>
#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

#include <algorithm>
#include <cerrno>
#include <cstring>
#include <memory>
#include <optional>
#include <utility>

#include "platform/files.h"
#include "platform/folder_names.h"
#include "platform/heap.h"
#include "platform/text.h"

namespace platform {
namespace {

struct FolderCloser {
  void operator()(DIR* folder) const { closedir(folder); }
};

std::u16string Reason(int error) { return DecodeUtf8(std::strerror(error)); }

enum class Kind { kFile, kFolder, kOther };

// Asks the system only where the folder itself does not tell.
Kind KindOf(DIR* folder, const dirent& entry) {
  if (entry.d_type == DT_REG) return Kind::kFile;
  if (entry.d_type == DT_DIR) return Kind::kFolder;
  struct stat info {};
  if (fstatat(dirfd(folder), entry.d_name, &info, 0) != 0) return Kind::kOther;
  return S_ISREG(info.st_mode) ? Kind::kFile : S_ISDIR(info.st_mode) ? Kind::kFolder : Kind::kOther;
}

void SortByLetters(std::vector<std::u16string>& names) {
  std::vector<std::pair<std::u16string, std::u16string>> byCapitals;
  byCapitals.reserve(names.size());
  for (std::u16string& name : names) {
    std::u16string capitals = name;
    std::transform(capitals.begin(), capitals.end(), capitals.begin(), UpperCase);
    byCapitals.emplace_back(std::move(capitals), std::move(name));
  }
  std::sort(byCapitals.begin(), byCapitals.end());
  for (size_t i = 0; i < names.size(); ++i) names[i] = std::move(byCapitals[i].second);
}

// A file that is open for reading.
class Descriptor {
 public:
  explicit Descriptor(const std::string& path)
      : number_(open(path.c_str(), O_RDONLY | O_CLOEXEC | O_NONBLOCK)) {}
  ~Descriptor() {
    if (number_ >= 0) close(number_);
  }
  Descriptor(const Descriptor&) = delete;
  Descriptor& operator=(const Descriptor&) = delete;

  int Number() const { return number_; }

 private:
  int number_;
};

// Appends up to `length` bytes. False when the system fails; `bytes` then holds what came before.
bool Append(int descriptor, size_t length, std::string& bytes) {
  const size_t before = bytes.size();
  bytes.resize(before + length);
  size_t got = 0;
  ssize_t count = 0;
  while (got < length && (count = read(descriptor, bytes.data() + before + got, length - got)) != 0) {
    if (count < 0 && errno != EINTR) break;
    got += static_cast<size_t>(std::max<ssize_t>(count, 0));
  }
  bytes.resize(before + got);
  return count >= 0;
}

// What is no text most often shows it soon. The reason why not; empty when it went well.
std::u16string ReadUpToZero(int descriptor, size_t length, std::string& bytes) {
  constexpr size_t kFirstBytes = size_t{1} << 20;
  for (const size_t end : {std::min(length, kFirstBytes), length}) {
    const size_t from = bytes.size();
    bool good = true;
    if (!WithinMemory([&] { good = Append(descriptor, end - from, bytes); })) return Reason(ENOMEM);
    if (!good) return Reason(errno);
    if (const size_t zero = bytes.find('\0', from); zero != std::string::npos) {
      bytes.resize(zero);
      break;
    }
    if (bytes.size() < end) break;  // it has become shorter meanwhile
  }
  return {};
}

}  // namespace

FolderContents ReadFolder(std::u16string_view path) {
  FolderContents contents;
  const std::optional<std::string> found = FindPath(path);
  const std::unique_ptr<DIR, FolderCloser> folder(found ? opendir(found->c_str()) : nullptr);
  struct stat info {};
  if (!folder || fstat(dirfd(folder.get()), &info) != 0) {
    contents.why = Reason(found ? errno : ENOENT);
    return contents;
  }
  contents.id = {info.st_dev, info.st_ino};
  while (const dirent* entry = readdir(folder.get())) {
    const std::string_view name = entry->d_name;
    if (name == "." || name == "..") continue;
    const Kind kind = KindOf(folder.get(), *entry);
    (kind == Kind::kFile     ? contents.files
     : kind == Kind::kFolder ? contents.folders
                             : contents.others)
        .push_back(NameText(name));
  }
  for (auto* names : {&contents.files, &contents.folders, &contents.others}) SortByLetters(*names);
  return contents;
}

TextBytes ReadText(std::u16string_view path, int64_t most) {
  TextBytes text;
  const std::optional<std::string> found = FindPath(path);
  if (!found) {
    text.why = Reason(ENOENT);
    return text;
  }
  const Descriptor file(*found);
  struct stat info {};
  if (file.Number() < 0 || fstat(file.Number(), &info) != 0) {
    text.why = Reason(errno);
  } else if (!S_ISREG(info.st_mode)) {
    text.why = u"This is no file";
  } else if (info.st_size > most) {
    text.why = u"This is too long";
  } else {
    text.why = ReadUpToZero(file.Number(), static_cast<size_t>(info.st_size), text.bytes);
  }
  return text;
}

}  // namespace platform
