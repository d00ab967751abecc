// Children by fork, each with a pipe to here. A copy of the process costs little, and begins where the work
// is ready: a program that had to be started anew would first load its libraries.
#include "platform/children.h"

#include <fcntl.h>
#include <poll.h>
#include <sys/prctl.h>
#include <sys/resource.h>
#include <sys/wait.h>
#include <unistd.h>

#include <algorithm>
#include <cerrno>
#include <csignal>
#include <cstdio>
#include <cstdlib>
#include <map>
#include <string_view>
#include <utility>
#include <vector>

namespace platform {
namespace {

struct Child {
  size_t index = 0;
  pid_t pid = -1;
  int pipe = -1;  // its end here
  ChildAnswer answer{};
};

void LimitTime(uint32_t seconds) {
  rlimit limit{};
  if (getrlimit(RLIMIT_CPU, &limit) != 0) return;
  limit.rlim_cur = std::min<rlim_t>(limit.rlim_cur, seconds);
  setrlimit(RLIMIT_CPU, &limit);
}

bool WriteAll(int pipe, std::string_view bytes) {
  while (!bytes.empty()) {
    const ssize_t written = write(pipe, bytes.data(), bytes.size());
    if (written < 0 && errno == EINTR) continue;
    if (written <= 0) return false;
    bytes.remove_prefix(static_cast<size_t>(written));
  }
  return true;
}

// The child's life. Nothing of the parent's is brought to an end here: no buffers, no files, no exit
// routines.
[[noreturn]] void Live(pid_t parent, int pipe, size_t index, uint32_t seconds, const ChildWork& work) {
  prctl(PR_SET_PDEATHSIG, SIGKILL);
  if (getppid() != parent) _exit(EXIT_FAILURE);  // it died before that was asked for
  LimitTime(seconds);
  std::string bytes;
  const int status = work(index, bytes);
  std::fflush(stderr);
  if (!WriteAll(pipe, bytes)) std::abort();
  _exit(status);
}

bool Begin(Child& child, uint32_t seconds, const ChildWork& work) {
  int ends[2];
  if (pipe2(ends, O_CLOEXEC) != 0) return false;
  const pid_t parent = getpid();
  child.pid = fork();
  if (child.pid == 0) {
    close(ends[0]);
    Live(parent, ends[1], child.index, seconds, work);
  }
  close(ends[1]);
  if (child.pid < 0) {
    close(ends[0]);
    return false;
  }
  child.pipe = ends[0];
  return true;
}

// False at the end of what it has to say.
bool Listen(Child& child) {
  char piece[4096];
  const ssize_t count = read(child.pipe, piece, sizeof piece);
  if (count < 0) return errno == EINTR;
  child.answer.bytes.append(piece, static_cast<size_t>(count));
  return count > 0;
}

void End(Child& child) {
  close(child.pipe);
  int status = 0;
  while (waitpid(child.pid, &status, 0) < 0) {
    if (errno != EINTR) return;
  }
  child.answer.ended = WIFEXITED(status);
  if (WIFEXITED(status)) child.answer.status = WEXITSTATUS(status);
  if (WIFSIGNALED(status)) child.answer.signal = WTERMSIG(status);
}

// Waits until one of them has something to say, and gives those that have come to their end.
std::vector<Child> WaitForSome(std::vector<Child>& running) {
  std::vector<pollfd> pipes;
  pipes.reserve(running.size());
  for (const Child& child : running) pipes.push_back({child.pipe, POLLIN, 0});
  std::vector<Child> ended;
  if (poll(pipes.data(), pipes.size(), -1) <= 0) return ended;
  for (size_t i = pipes.size(); i-- > 0;) {
    if (pipes[i].revents == 0 || Listen(running[i])) continue;
    End(running[i]);
    ended.push_back(std::move(running[i]));
    running.erase(running.begin() + static_cast<ptrdiff_t>(i));
  }
  return ended;
}

}  // namespace

void RunInChildren(size_t count, size_t atOnce, uint32_t seconds, const ChildWork& work,
                   const ChildDone& done) {
  std::vector<Child> running;
  std::map<size_t, ChildAnswer> waiting;  // for one with a lower index
  size_t begun = 0;
  for (size_t told = 0; told < count;) {
    if (begun < count && running.size() < std::max<size_t>(atOnce, 1)) {
      Child child{.index = begun};
      if (Begin(child, seconds, work)) {
        running.push_back(std::move(child));
        ++begun;
        continue;
      }
      // The system has room for no more of them. Without any there is nobody to wait for.
      if (running.empty()) waiting[begun++] = {};
    }
    if (!running.empty()) {
      for (Child& child : WaitForSome(running)) waiting[child.index] = std::move(child.answer);
    }
    for (auto next = waiting.find(told); next != waiting.end(); next = waiting.find(told)) {
      done(told++, next->second);
      waiting.erase(next);
    }
  }
}

}  // namespace platform
