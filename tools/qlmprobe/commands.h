// The commands of the probe. Each takes its arguments and gives the exit status.
#pragma once

#include "tools/qlmprobe/arguments.h"

namespace probe {

// Of the sound that `audio` renders.
constexpr int64_t kLongestSeconds = 3600;

int ChartCommand(Arguments& arguments);
int CourseCommand(Arguments& arguments);
int HeaderCommand(Arguments& arguments);
int TitleCommand(Arguments& arguments);
int PlayCommand(Arguments& arguments);
int FrameCommand(Arguments& arguments);
int AudioCommand(Arguments& arguments);
int VideoCommand(Arguments& arguments);
int BattleCommand(Arguments& arguments);
int CheckCommand(Arguments& arguments);
int LibraryCommand(Arguments& arguments);
int SkinCommand(Arguments& arguments);
int KeysCommand(Arguments& arguments);
int ScanCommand(Arguments& arguments);
int DumpCommand(Arguments& arguments);

}  // namespace probe
