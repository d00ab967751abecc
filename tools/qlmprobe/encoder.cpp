// The pipe to ffmpeg.
#include "tools/qlmprobe/encoder.h"

#include <fcntl.h>
#include <signal.h>
#include <sys/wait.h>
#include <unistd.h>

#include <array>
#include <atomic>
#include <bit>
#include <cerrno>
#include <cstdio>
#include <cstring>
#include <string_view>
#include <vector>

#include "tools/media_files/avi.h"
#include "tools/qlmprobe/turn_sound.h"

namespace probe {
namespace {

constexpr const char* kProgram = "ffmpeg";

// What is told to somebody who lacks it.
void TellMissing() {
  std::fputs(
      "qlmprobe: video needs the program ffmpeg, which is not installed here: on a Debian system\n"
      "install the package ffmpeg (apt-get install ffmpeg)\n",
      stderr);
}

void TellNoStart(int why) {
  std::fprintf(stderr, "qlmprobe: ffmpeg cannot be started: %s\n", std::strerror(why));
}

std::vector<std::string> Words(const std::string& file) {
  return {kProgram, "-hide_banner", "-loglevel", "error", "-y",
          // What comes down the pipe.
          "-f", "avi", "-i", "pipe:0",
          // Pictures that every player can show, close to what was drawn.
          "-c:v", "libx264", "-preset", "veryfast", "-crf", "18", "-pix_fmt", "yuv420p", "-c:a", "aac",
          "-b:a", "192k", "-movflags", "+faststart", "-f", "mp4", "file:" + file};
}

constexpr std::array kEnds = {SIGINT, SIGTERM, SIGHUP};

// The signals that end this program wait, or come again.
void HoldEnds(bool hold) {
  sigset_t ends;
  sigemptyset(&ends);
  for (const int number : kEnds) sigaddset(&ends, number);
  sigprocmask(hold ? SIG_BLOCK : SIG_UNBLOCK, &ends, nullptr);
}

// Becomes the program, with `input` as its standard input. A failure to do so is told through `told`.
[[noreturn]] void BecomeProgram(std::vector<std::string> words, int input, int told) {
  // What ends the probe from the terminal is the probe's to tell.
  setpgid(0, 0);
  dup2(input, STDIN_FILENO);
  dup2(open("/dev/null", O_WRONLY | O_CLOEXEC), STDOUT_FILENO);
  signal(SIGPIPE, SIG_DFL);
  HoldEnds(false);
  std::vector<char*> pointers;
  pointers.reserve(words.size() + 1);
  for (std::string& word : words) pointers.push_back(word.data());
  pointers.push_back(nullptr);
  execvp(kProgram, pointers.data());
  const int why = errno;
  if (write(told, &why, sizeof why) < 0) _exit(126);
  _exit(127);
}

// For signals, which may come while the program takes nothing and a write waits.
std::atomic<pid_t> programToEnd = -1;
static_assert(std::atomic<pid_t>::is_always_lock_free);
std::array<char, 4096> fileToRemove{};

void EndAtOnce(int number) {
  if (programToEnd > 0) kill(programToEnd, SIGKILL);
  unlink(fileToRemove.data());
  _exit(128 + number);
}

}  // namespace

Encoder::~Encoder() {
  if (program_ < 0) return;
  Close();
  KillProgram();
  unlink(begun_.c_str());
}

bool Encoder::Start(const std::string& file, int32_t picturesPerSecond) {
  file_ = file;
  begun_ = file + ".part";
  // A program that ends early must not end this one.
  signal(SIGPIPE, SIG_IGN);
  int data[2];
  int told[2];
  if (pipe2(data, O_CLOEXEC) != 0 || pipe2(told, O_CLOEXEC) != 0) {
    TellNoStart(errno);
    return false;
  }
  const std::vector<std::string> words = Words(begun_);
  // None may come while the program runs and nobody would end it.
  HoldEnds(true);
  program_ = fork();
  if (program_ == 0) BecomeProgram(words, data[0], told[1]);
  close(data[0]);
  close(told[1]);
  pipe_ = data[1];
  if (begun_.size() < fileToRemove.size()) begun_.copy(fileToRemove.data(), begun_.size());
  programToEnd = program_;
  for (const int number : kEnds) signal(number, EndAtOnce);
  HoldEnds(false);
  int why = program_ < 0 ? errno : 0;
  const bool became = program_ > 0 && read(told[0], &why, sizeof why) == 0;
  close(told[0]);
  if (!became) {
    if (why == ENOENT) {
      TellMissing();
    } else {
      TellNoStart(why);
    }
    Close();
    if (program_ > 0) KillProgram();
    return false;
  }
  // Should it take nothing already, Finish tells.
  Write(media::AviHead({.width = 640,
                        .height = 480,
                        .picturesPerSecond = static_cast<uint32_t>(picturesPerSecond),
                        .channels = kSoundChannels,
                        .rate = kSoundRate}));
  return true;
}

bool Encoder::Send(const platform::Surface& picture, std::span<const int16_t> sound) {
  const auto width = static_cast<size_t>(picture.Width());
  const auto height = static_cast<size_t>(picture.Height());
  const size_t rowBytes = width * sizeof(platform::Colour);
  static_assert(std::endian::native == std::endian::little);
  chunk_ = media::AviPictureHead(static_cast<uint32_t>(rowBytes * height));
  for (int32_t y = picture.Height() - 1; y >= 0; --y) {
    chunk_.append(reinterpret_cast<const char*>(picture.Row(y).data()), rowBytes);
  }
  chunk_ += media::AviSoundHead(static_cast<uint32_t>(sound.size_bytes()));
  chunk_.append(reinterpret_cast<const char*>(sound.data()), sound.size_bytes());
  return Write(chunk_);
}

bool Encoder::Write(std::string_view bytes) {
  while (!refused_ && !bytes.empty()) {
    const ssize_t written = write(pipe_, bytes.data(), bytes.size());
    refused_ = written < 0;
    if (!refused_) bytes.remove_prefix(static_cast<size_t>(written));
  }
  return !refused_;
}

void Encoder::Close() {
  if (pipe_ >= 0) close(pipe_);
  pipe_ = -1;
}

void Encoder::KillProgram() {
  kill(program_, SIGKILL);
  while (waitpid(program_, nullptr, 0) < 0 && errno == EINTR) {
  }
  program_ = programToEnd = -1;
}

bool Encoder::Finish() {
  Close();
  int status = -1;
  const bool ended = waitpid(program_, &status, 0) == program_;
  if (ended) program_ = programToEnd = -1;
  const bool well = ended && WIFEXITED(status) && WEXITSTATUS(status) == 0;
  if (well && !refused_ && std::rename(begun_.c_str(), file_.c_str()) == 0) return true;
  if (program_ > 0) KillProgram();
  unlink(begun_.c_str());
  std::fprintf(stderr, "qlmprobe: %s cannot be written\n", file_.c_str());
  return false;
}

}  // namespace probe
