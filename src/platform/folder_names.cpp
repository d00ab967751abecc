// Looking up of names. A chart whose 255 sounds are all in another letter case asks for the same folder's
// names again and again, so the last few listings are kept for as long as their folders do not change.
#include "platform/folder_names.h"

#include <dirent.h>
#include <sys/stat.h>

#include <algorithm>
#include <array>
#include <memory>
#include <utility>

#include "platform/clock.h"
#include "platform/text.h"

namespace platform {
namespace {

// File systems tell the time of a change in steps of up to two seconds. A listing that was made so soon
// behind a change may lack another one of the same time.
constexpr int64_t kTimeStepSeconds = 2;

struct FolderCloser {
  void operator()(DIR* folder) const { closedir(folder); }
};
using Folder = std::unique_ptr<DIR, FolderCloser>;

// Unpacking programs put a folder's time of modification back; its time of change they cannot set.
bool Same(const timespec& a, const timespec& b) { return a.tv_sec == b.tv_sec && a.tv_nsec == b.tv_nsec; }

class Listing {
 public:
  // Whether it still tells what the folder holds, which is now in this state.
  bool IsOf(const std::string& folder, const struct stat& now) const {
    return settled_ && folder == folder_ && now.st_dev == state_.st_dev && now.st_ino == state_.st_ino &&
           Same(now.st_mtim, state_.st_mtim) && Same(now.st_ctim, state_.st_ctim);
  }

  void Read(const std::string& folder, const struct stat& state) {
    folder_ = folder;
    state_ = state;
    settled_ = SystemSeconds() - state.st_ctim.tv_sec > kTimeStepSeconds;
    names_.clear();
    for (const std::string& name : StoredNames(folder)) names_.emplace_back(FoldName(NameText(name)), name);
    std::sort(names_.begin(), names_.end());
  }

  std::string Find(const std::u16string& folded) const {
    const auto alike = std::lower_bound(names_.begin(), names_.end(), std::pair(folded, std::string()));
    return alike != names_.end() && alike->first == folded ? alike->second : std::string();
  }

 private:
  std::string folder_;
  struct stat state_ {};
  bool settled_ = false;                                       // any later change shows in the state
  std::vector<std::pair<std::u16string, std::string>> names_;  // folded, as stored
};

// Enough for the folders of one path.
std::array<Listing, 4> listings;
size_t oldest = 0;

const Listing& ListingOf(const std::string& folder, const struct stat& state) {
  for (const Listing& listing : listings) {
    if (listing.IsOf(folder, state)) return listing;
  }
  Listing& listing = listings[oldest];
  oldest = (oldest + 1) % listings.size();
  listing.Read(folder, state);
  return listing;
}

}  // namespace

std::u16string NameText(std::string_view bytes) {
  return IsUtf8(bytes) ? DecodeUtf8(bytes) : DecodeCp932(bytes);
}

std::vector<std::string> StoredNames(const std::string& folder) {
  std::vector<std::string> names;
  const Folder open(opendir(folder.c_str()));
  if (!open) return names;
  while (const dirent* entry = readdir(open.get())) {
    const std::string_view name = entry->d_name;
    if (name != "." && name != "..") names.emplace_back(name);
  }
  return names;
}

std::string FindName(const std::string& folder, const std::string& part) {
  const std::string listed = folder.empty() ? "." : folder;
  struct stat state {};
  if (stat(listed.c_str(), &state) != 0 || !S_ISDIR(state.st_mode)) return {};
  const std::u16string wanted = DecodeUtf8(part);
  std::string raw = EncodeCp932(wanted);
  struct stat rawState {};
  if (stat((folder + raw).c_str(), &rawState) == 0) return raw;
  return ListingOf(listed, state).Find(FoldName(wanted));
}

}  // namespace platform
