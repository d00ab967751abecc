// The ground of tests with the real program and the stock data.
#include "tests/run/installed_game.h"

#include <chrono>
#include <filesystem>
#include <thread>

#include "base/paths.h"
#include "platform/text.h"

namespace qlm {

namespace fs = std::filesystem;

InstalledGameTest::InstalledGameTest() {
  fs::copy_file(QLM_BINARY_DIR "/quillmarch", Program());
  fs::copy(QLM_BINARY_DIR "/_qlmfiles", SystemFolder() + "/_qlmfiles",
           fs::copy_options::recursive | fs::copy_options::overwrite_existing);
  for (const char* const file :
       {"qlm_conf.ini", "qlm_keycnf.dat", "qlm_searchdir.txt", "debug.txt", "jukelist"}) {
    fs::remove_all(SystemFolder() + "/_qlmfiles/" + file);
  }
}

std::string InstalledGameTest::DebugText() const { return ReadBytes(DataPath(u"debug.txt")); }

int InstalledGameTest::CountLines(std::string_view words) const {
  const std::string log = DebugText();
  int found = 0;
  for (size_t at = log.find(words); at != std::string::npos; at = log.find(words, at + 1)) ++found;
  return found;
}

void InstalledGameTest::WaitForLine(std::string_view words, int times) const {
  for (int i = 0; i < 600 && CountLines(words) < times; ++i) Rest(50);
  ASSERT_GE(CountLines(words), times)
      << words << ": " << platform::EncodeUtf8(platform::DecodeCp932(DebugText()));
}

void InstalledGameTest::Rest(int ms) { std::this_thread::sleep_for(std::chrono::milliseconds(ms)); }

}  // namespace qlm
