// The debug log: every step of the program, one line at a time, on the disk when the call ends.
#pragma once

#include <cstdint>
#include <utility>
#include <vector>

#include "base/text.h"

namespace qlm {

// Current level, 4 blanks each; never below 0.
inline int32_t LogIndent = 0;

// Appends a line to \_qlmfiles\debug.txt: the time, LogIndent * 4 blanks, the message without outer blanks
// ("Ready." for an empty one). LogIndent then changes by indentDelta. A line that cannot be written is lost,
// and the hook for unwritten files is called.
void DebugLog(TextView message, int32_t indentDelta = 0);

// The log's file.
Text LogPath();

// Where lines go besides, or instead.
struct LogOutput {
  bool file = true;                    // to the file
  std::vector<Text>* lines = nullptr;  // indent and message, without the time
  void (*afterLine)() = nullptr;       // called behind each line, as the boot screen wants it
};
inline LogOutput logOutput;

// Runs the work and gives the lines that it would have logged, which the log does not get.
template <typename Work>
std::vector<Text> LinesOf(Work work) {
  std::vector<Text> lines;
  const LogOutput output = std::exchange(logOutput, {.file = false, .lines = &lines});
  const int32_t indent = std::exchange(LogIndent, 0);
  work();
  LogIndent = indent;
  logOutput = output;
  return lines;
}

}  // namespace qlm
