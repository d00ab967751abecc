// Any bytes as a sound file: header, buffer, and the first block of what it sounds like.
#include <cstdint>
#include <cstdio>
#include <cstdlib>
#include <filesystem>
#include <string>
#include <vector>

#include "base/log.h"
#include "platform/files.h"
#include "platform/sound_device.h"
#include "sound/buffers.h"

namespace {

// Memory where the system offers it: no run waits for a disk.
std::filesystem::path ScratchFolder() {
  const std::filesystem::path memory = "/dev/shm";
  return std::filesystem::is_directory(memory) ? memory : std::filesystem::temp_directory_path();
}

// A file of this process's own, for the whole run.
class ScratchFile {
 public:
  ScratchFile() : folder_((ScratchFolder() / "quillmarch-fuzz-XXXXXX").string()) {
    if (mkdtemp(folder_.data()) == nullptr) std::abort();
    system_ = folder_ + "/a.wav";
    path = platform::InnerPath(system_);
    qlm::logOutput.file = false;
    platform::OpenSoundDevice(platform::SoundOutput::kOffline);
  }
  ~ScratchFile() {
    std::error_code error;
    std::filesystem::remove_all(folder_, error);
  }
  void Write(const uint8_t* data, size_t size) const {
    std::FILE* file = std::fopen(system_.c_str(), "wb");
    if (file == nullptr) std::abort();
    if (std::fwrite(data, 1, size, file) != size) std::abort();
    std::fclose(file);
  }

  qlm::Text path;

 private:
  std::string folder_;
  std::string system_;
};

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size) {
  static const ScratchFile scratch;
  scratch.Write(data, size);

  qlm::Text path = scratch.path;
  platform::SoundDescription description;
  platform::SoundFormat format;
  platform::SoundError error = platform::kSoundOk;
  const qlm::SoundBufferPtr buffer = qlm::CreateSndBuf(path, description, format, error);
  if ((buffer == nullptr) == (error == platform::kSoundOk)) std::abort();
  if (buffer == nullptr) return 0;
  static std::vector<int16_t> block(512);
  buffer->Play(size % 2 == 0);
  platform::RenderSound(block);
  buffer->SetFrequency(31000);
  buffer->SetCurrentPosition(description.bytes / 2);
  platform::RenderSound(block);
  return 0;
}
