// The program ffmpeg as a child process that makes a video file of what it is sent.
#pragma once

#include <sys/types.h>

#include <cstdint>
#include <span>
#include <string>

#include "platform/surface.h"

namespace probe {

// The file gets its name only when it is whole. Until then it has another one beside it, and is removed when
// it cannot be finished, also when a signal ends this program. One at a time.
class Encoder {
 public:
  Encoder() = default;
  // Without Finish, ends the program and removes what it has made.
  ~Encoder();
  Encoder(const Encoder&) = delete;
  Encoder& operator=(const Encoder&) = delete;

  // False when the program cannot be started, with the reason on standard error.
  bool Start(const std::string& file, int32_t picturesPerSecond);
  // One picture, and the sound from it to the next one. False once the program takes no more.
  bool Send(const platform::Surface& picture, std::span<const int16_t> sound);
  // Waits until the file is whole. False, and standard error tells why, when it is not.
  bool Finish();

 private:
  bool Write(std::string_view bytes);
  void Close();
  void KillProgram();

  std::string file_;
  std::string begun_;  // the file until it is whole
  std::string chunk_;
  pid_t program_ = -1;
  int pipe_ = -1;
  bool refused_ = false;
};

}  // namespace probe
