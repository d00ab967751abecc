// Work in child processes, where what goes wrong harms nothing else.
#pragma once

#include <cstddef>
#include <cstdint>
#include <functional>
#include <string>

namespace platform {

// What became of one child.
struct ChildAnswer {
  bool ended = false;  // by itself; `status` and `bytes` are whole then
  int status = 0;      // what the work gave, 0 to 255
  int signal = 0;      // that killed it, 0 when none did or no child could be made
  std::string bytes;   // what the work left
};

// Gives the status, and what is to be told in `bytes`.
using ChildWork = std::function<int(size_t index, std::string& bytes)>;
using ChildDone = std::function<void(size_t index, const ChildAnswer& answer)>;

// Runs `work` for each index below `count`, each in a copy of this process of its own, `atOnce` of them at a
// time, and `done` here for each in the order of the indices. A child that takes more than `seconds` of
// processor time is killed. For a process of one thread alone.
void RunInChildren(size_t count, size_t atOnce, uint32_t seconds, const ChildWork& work,
                   const ChildDone& done);

}  // namespace platform
