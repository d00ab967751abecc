// Files and folders. Paths are the game's own: "\" between the parts, a leading "\" for the root.
#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace platform {

// The system's path of an existing file or folder. Where the exact name does not exist, each part is looked
// for again without regard to letter case and Unicode normal form, and among names stored as raw code page
// 932 bytes.
std::optional<std::string> FindPath(std::u16string_view path);
// The system's path for something that may not exist yet: as much of it as exists is found as above.
std::string SystemPath(std::u16string_view path);
// The game's form of a system path, made absolute. Parts that are no UTF-8 are read as code page 932.
std::u16string InnerPath(const std::string& systemPath);

// Bytes of a file, nothing when it is no readable file.
std::optional<int64_t> FileLength(std::u16string_view path);
bool IsFolder(std::u16string_view path);
// Whether nothing can be written into a folder: nobody has the right to, this program has not, or its disk is
// mounted so. False when there is no such folder.
bool FolderIsReadOnly(std::u16string_view path);

// Nothing when it is no readable file, or longer than memory can be had for.
std::optional<std::string> ReadFile(std::u16string_view path);
// At most `length` bytes from `offset` on; fewer at the end of the file.
std::optional<std::string> ReadFilePart(std::u16string_view path, int64_t offset, int64_t length);

// Writes a temporary name beside it and renames once the bytes are on the disk, so that a crash, a full disk
// and a failing one leave the old file or the new one. False when the old one stayed.
bool WriteFile(std::u16string_view path, std::string_view bytes);
// The same without the wait for the disk: after a crash the file may be the old one, the new one or empty,
// until WaitForDisk() has returned. For many files at once.
bool WriteFileLater(std::u16string_view path, std::string_view bytes);
// Returns when all that was written on this file's disk is on it.
void WaitForDisk(std::u16string_view path);
// Opens, appends, closes; the bytes are with the system when it returns.
bool AppendFile(std::u16string_view path, std::string_view bytes);
bool DeleteFile(std::u16string_view path);
// Locks a file for as long as the program lives, and makes it when there is none. False only when another
// program holds the lock: where no file can be made, there is nothing to keep others from.
bool LockFile(std::u16string_view path);
// One level; true also when it exists already.
bool MakeFolder(std::u16string_view path);

struct FolderEntry {
  std::u16string name;
  bool isFolder = false;
};
// In the system's order, without "." and "..". Empty when there is no such folder.
std::vector<FolderEntry> ListFolder(std::u16string_view path);

// Where the programs of this person keep their data: $XDG_DATA_HOME, or .local/share at home. Empty for one
// without a home.
std::u16string PersonalDataFolder();
// Folder of the running program, without a trailing "\".
std::u16string ProgramFolder();

struct MemoryInKib {
  double free = 0;
  double total = 0;
};
// Physical memory.
MemoryInKib PhysicalMemory();

}  // namespace platform
