// What a search of the disk needs: folders and texts, each with the system's reason where it cannot be read.
#pragma once

#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

namespace platform {

// The same for all paths that lead to one folder.
struct FolderId {
  uint64_t device = 0;
  uint64_t number = 0;
  friend bool operator==(const FolderId&, const FolderId&) = default;
  friend bool operator<(const FolderId& a, const FolderId& b) {
    return a.device != b.device ? a.device < b.device : a.number < b.number;
  }
};

struct FolderContents {
  // Each in the order of its letters, capitals and small ones alike; links count as what they lead to.
  std::vector<std::u16string> files;
  std::vector<std::u16string> folders;
  std::vector<std::u16string> others;  // links to nothing, pipes, devices
  FolderId id;
  std::u16string why;  // it cannot be read; empty when it can
};
// Paths are the game's own.
FolderContents ReadFolder(std::u16string_view path);

struct TextBytes {
  std::string bytes;
  std::u16string why;  // it cannot be read; empty when it can
};
// A file's bytes in front of its first zero byte. Not much of what follows is read, so that a film under the
// name of a text costs little. A file of more than `most` bytes is refused.
TextBytes ReadText(std::u16string_view path, int64_t most);

}  // namespace platform
