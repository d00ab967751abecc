// The debug log: every step of the program, one line at a time, on the disk when the call ends.
#pragma once

#include <cstdint>
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

}  // namespace qlm
