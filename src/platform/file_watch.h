// Tells that files have changed.
#pragma once

#include <string>
#include <vector>

namespace platform {

class FileWatch {
 public:
  // Where the system has no such service nothing ever changes.
  FileWatch();
  ~FileWatch();
  FileWatch(const FileWatch&) = delete;
  FileWatch& operator=(const FileWatch&) = delete;

  // These files from here on, in place of those before. They need not exist; their folders must. A link is
  // followed to its file, too.
  void Follow(const std::vector<std::u16string>& paths);
  // Whether any of them was written to its end, has come or has gone since the last call. Never waits.
  bool Changed();

 private:
  struct Followed {
    int folder;           // the system's number for it
    std::u16string name;  // folded
  };

  void Add(const std::string& systemPath);

  int queue_ = -1;
  std::vector<Followed> files_;
  std::vector<int> folders_;
};

}  // namespace platform
