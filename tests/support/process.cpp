// Child processes, with their output kept in files so that no pipe can fill up and stop them.
#include "tests/support/process.h"

#include <fcntl.h>
#include <signal.h>
#include <spawn.h>
#include <sys/resource.h>
#include <sys/wait.h>
#include <unistd.h>

#include <chrono>
#include <cstdlib>
#include <cstring>
#include <filesystem>
#include <fstream>
#include <sstream>
#include <thread>

namespace qlm {
namespace {

std::string TemporaryFile() {
  std::string name = (std::filesystem::temp_directory_path() / "quillmarch-output-XXXXXX").string();
  const int file = mkstemp(name.data());
  if (file >= 0) close(file);
  return name;
}

std::string Contents(const std::string& path) {
  std::ostringstream contents;
  contents << std::ifstream(path, std::ios::binary).rdbuf();
  return contents.str();
}

std::vector<std::string> Environment(const std::map<std::string, std::string>& changes) {
  std::vector<std::string> variables;
  for (char** variable = environ; *variable != nullptr; ++variable) {
    const std::string name(*variable, std::strcspn(*variable, "="));
    if (!changes.contains(name)) variables.emplace_back(*variable);
  }
  for (const auto& [name, value] : changes) {
    if (!value.empty()) variables.emplace_back(name).append("=").append(value);
  }
  return variables;
}

std::vector<char*> Pointers(std::vector<std::string>& words) {
  std::vector<char*> pointers;
  for (std::string& word : words) pointers.push_back(word.data());
  pointers.push_back(nullptr);
  return pointers;
}

double Seconds(const timeval& time) {
  return static_cast<double>(time.tv_sec) + static_cast<double>(time.tv_usec) / 1e6;
}

}  // namespace

Process::Process(std::vector<std::string> command, const std::map<std::string, std::string>& environment)
    : outputFile_(TemporaryFile()), errorFile_(TemporaryFile()) {
  posix_spawn_file_actions_t actions;
  posix_spawn_file_actions_init(&actions);
  posix_spawn_file_actions_addopen(&actions, STDIN_FILENO, "/dev/null", O_RDONLY, 0);
  posix_spawn_file_actions_addopen(&actions, STDOUT_FILENO, outputFile_.c_str(), O_WRONLY | O_TRUNC, 0600);
  posix_spawn_file_actions_addopen(&actions, STDERR_FILENO, errorFile_.c_str(), O_WRONLY | O_TRUNC, 0600);
  std::vector<std::string> variables = Environment(environment);
  if (posix_spawnp(&pid_, command[0].c_str(), &actions, nullptr, Pointers(command).data(),
                   Pointers(variables).data()) != 0) {
    pid_ = -1;
    ended_ = true;
  }
  posix_spawn_file_actions_destroy(&actions);
}

Process::~Process() {
  Kill();
  std::filesystem::remove(outputFile_);
  std::filesystem::remove(errorFile_);
}

bool Process::Running() {
  if (!ended_ && wait4(pid_, &status_, WNOHANG, &usage_) == pid_) ended_ = true;
  return !ended_;
}

void Process::Kill() {
  if (!Running()) return;
  kill(pid_, SIGKILL);
  wait4(pid_, &status_, 0, &usage_);
  ended_ = true;
}

void Process::Signal(int number) {
  if (Running()) kill(pid_, number);
}

std::string Process::Output() const { return Contents(outputFile_); }

ProcessResult Process::Wait(int seconds) {
  using Clock = std::chrono::steady_clock;
  const auto end = Clock::now() + std::chrono::seconds(seconds);
  while (Running() && Clock::now() < end) std::this_thread::sleep_for(std::chrono::milliseconds(5));
  ProcessResult result;
  result.timedOut = Running();
  Kill();
  if (pid_ > 0) result.exitStatus = WIFEXITED(status_) ? WEXITSTATUS(status_) : 128 + WTERMSIG(status_);
  result.processorSeconds = Seconds(usage_.ru_utime) + Seconds(usage_.ru_stime);
  result.mostMemory = int64_t{usage_.ru_maxrss} * 1024;
  result.output = Contents(outputFile_);
  result.errors = Contents(errorFile_);
  return result;
}

ProcessResult Run(const std::vector<std::string>& command,
                  const std::map<std::string, std::string>& environment, int seconds) {
  return Process(command, environment).Wait(seconds);
}

}  // namespace qlm
