// Child processes for tests that run the real programs.
#pragma once

#include <sys/resource.h>
#include <sys/types.h>

#include <cstdint>
#include <map>
#include <string>
#include <vector>

namespace qlm {

// What a finished program left.
struct ProcessResult {
  int exitStatus = -1;  // 128 + the signal's number when it was killed by one
  bool timedOut = false;
  double processorSeconds = 0;  // its own and the system's on its behalf
  int64_t mostMemory = 0;       // bytes that were resident at once
  std::string output;           // standard output
  std::string errors;           // standard error
};

// A running program. It is killed when its owner goes away.
class Process {
 public:
  // `environment` is added to the test's own; an empty value takes a variable away.
  explicit Process(std::vector<std::string> command,
                   const std::map<std::string, std::string>& environment = {});
  ~Process();
  Process(const Process&) = delete;
  Process& operator=(const Process&) = delete;

  bool Running();
  void Kill();
  void Signal(int number);
  // What it wrote to standard output so far.
  std::string Output() const;
  // Waits for the end, `seconds` at most; then it is killed.
  ProcessResult Wait(int seconds = 120);

 private:
  pid_t pid_ = -1;
  int status_ = -1;
  rusage usage_{};
  bool ended_ = false;
  std::string outputFile_;
  std::string errorFile_;
};

// Runs a program to its end.
ProcessResult Run(const std::vector<std::string>& command,
                  const std::map<std::string, std::string>& environment = {}, int seconds = 120);

}  // namespace qlm
