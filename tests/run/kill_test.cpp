// Programs that are killed in the middle of their work leave each file as it was, or as it was to become.
#include <gtest/gtest.h>
#include <unistd.h>

#include <algorithm>
#include <chrono>
#include <cstdio>
#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <map>
#include <random>
#include <string>
#include <thread>
#include <vector>

#include "tests/support/process.h"
#include "tests/support/whole_file.h"

namespace qlm {
namespace {

namespace fs = std::filesystem;
using Clock = std::chrono::steady_clock;
using Microseconds = std::chrono::microseconds;

const std::string kGame = QLM_BINARY_DIR "/quillmarch";
const std::string kProbe = QLM_BINARY_DIR "/qlmprobe";

void Write(const fs::path& file, const std::string& text) {
  std::ofstream(file, std::ios::binary | std::ios::trunc) << text;
}

// The campaign asks for more of them than the tests have time for.
int Kills() {
  const char* const asked = std::getenv("QLM_KILLS");
  return asked == nullptr ? 6 : std::max(1, std::atoi(asked));
}

// Whether a folder holds the new bytes of a file that still has another name.
bool IsBeingWritten(const fs::path& folder) {
  std::error_code error;
  for (fs::directory_iterator at(folder, error), end; at != end; at.increment(error)) {
    if (at->path().filename().string().starts_with(".qlm-")) return true;
  }
  return false;
}

class KillTest : public testing::Test {
 protected:
  KillTest() : folder_(fs::temp_directory_path() / ("kill_test-" + std::to_string(getpid()))) {
    fs::create_directories(folder_ / "game/_qlmfiles");
    fs::create_directories(folder_ / "game/songs");
    fs::create_directories(folder_ / "out");
    fs::copy_file(kGame, Game());
    std::string notes;
    for (int measure = 0; measure < 8; ++measure)
      notes += "#00" + std::to_string(measure) + "11:01010101\r\n";
    Write(Chart(), "\r\n#PLAYER 1\r\n#TITLE killed\r\n#ARTIST us\r\n#GENRE test\r\n#BPM 480\r\n" + notes);
    Write(folder_ / "early", "500 down 44\n520 up 44\n");
    Write(folder_ / "late", "500 down 44\n530 up 44\n1000 down 44\n1030 up 44\n");
  }
  ~KillTest() override { fs::remove_all(folder_); }

  std::string Game() const { return folder_ / "game/quillmarch"; }
  std::string Chart() const { return folder_ / "chart.bms"; }
  std::string Out(const std::string& name) const { return folder_ / "out" / name; }
  std::string In(const std::string& name) const { return folder_ / name; }
  fs::path DataFile(const std::string& name) const { return folder_ / "game/_qlmfiles" / name; }

  static std::map<std::string, std::string> Environment() {
    return {
        {"DISPLAY", ""}, {"WAYLAND_DISPLAY", ""}, {"SDL_VIDEODRIVER", "dummy"}, {"SDL_AUDIODRIVER", "dummy"}};
  }
  static void Run(const std::vector<std::string>& command) {
    const ProcessResult result = qlm::Run(command, Environment());
    ASSERT_EQ(result.exitStatus, 0) << command[0] << ": " << result.errors;
  }

  // Kills a program that writes `file` again and again, half of the times at any moment of its life, half of
  // them in the moment that it writes. It must find the file as it stands now.
  void KillWriterOf(const fs::path& file, const std::vector<std::string>& command) {
    const std::string before = WholeFile(file);
    ASSERT_FALSE(before.empty());
    const Clock::time_point begin = Clock::now();
    Run(command);
    const auto life = std::chrono::duration_cast<Microseconds>(Clock::now() - begin).count();
    const std::string after = WholeFile(file);
    ASSERT_NE(before, after) << "what it writes must be known from what was there";

    int old = 0, written = 0, caught = 0;
    for (int i = 0; i < Kills(); ++i) {
      Write(file, before);
      Process program(command, Environment());
      if (i % 2 == 0) {
        std::this_thread::sleep_for(Microseconds(Draw(life)));
      } else {
        while (!IsBeingWritten(file.parent_path()) && program.Running()) {
        }
        std::this_thread::sleep_for(Microseconds(Draw(2000)));
      }
      program.Kill();
      program.Wait();
      caught += IsBeingWritten(file.parent_path()) ? 1 : 0;
      const std::string left = WholeFile(file);
      ASSERT_TRUE(left == before || left == after) << file << " has " << left.size() << " bytes, before "
                                                   << before.size() << ", written " << after.size();
      (left == before ? old : written) += 1;
      RemoveUnfinished(file.parent_path());
    }
    std::printf(
        "%-24s %5d kills: the old file %5d times, the new one %5d times, killed while it wrote %5d times\n",
        file.filename().c_str(), Kills(), old, written, caught);
    std::fflush(stdout);
  }

  int64_t Draw(int64_t most) { return std::uniform_int_distribution<int64_t>(0, most)(random_); }

 private:
  static void RemoveUnfinished(const fs::path& folder) {
    for (const auto& entry : fs::directory_iterator(folder)) {
      if (entry.path().filename().string().starts_with(".qlm-")) fs::remove(entry.path());
    }
  }

  fs::path folder_;
  std::mt19937 random_{20261122};
};

TEST_F(KillTest, Scores) {
  Run({kProbe, "play", Chart(), "--events", In("early"), "--scores", Out("s.qsd"), "--name", "ONE"});
  KillWriterOf(Out("s.qsd"),
               {kProbe, "play", Chart(), "--events", In("late"), "--scores", Out("s.qsd"), "--name", "TWO"});
}

TEST_F(KillTest, Records) {
  Run({kProbe, "play", Chart(), "--events", In("early"), "--record", Out("r.qpd")});
  KillWriterOf(Out("r.qpd"), {kProbe, "play", Chart(), "--events", In("late"), "--record", Out("r.qpd")});
}

TEST_F(KillTest, Keys) {
  Run({kProbe, "keys", Out("qlm_keycnf.dat"), "--set", "30=11"});
  KillWriterOf(Out("qlm_keycnf.dat"), {kProbe, "keys", Out("qlm_keycnf.dat"), "--set", "30=12"});
}

TEST_F(KillTest, Lists) {
  for (int i = 0; i < 200; ++i) fs::copy_file(Chart(), In("game/songs/" + std::to_string(i) + ".bms"));
  Run({Game(), "--scan", "--once", "-P"});
  for (int i = 200; i < 400; ++i) fs::copy_file(Chart(), In("game/songs/" + std::to_string(i) + ".bms"));
  KillWriterOf(DataFile("jukelist/songs.qbl"), {Game(), "--scan", "--once", "-P"});
}

TEST_F(KillTest, Settings) {
  fs::copy_file(Chart(), In("game/songs/a.bms"));
  Run({Game(), "--once", "-P", "--set", "HiSpeed=2"});
  KillWriterOf(DataFile("qlm_conf.ini"), {Game(), "--once", "-P", "--set", "HiSpeed=4"});
}

// An installed game whose first start is killed is whole behind the next one.
TEST_F(KillTest, StockOfAnInstalledGame) {
  const fs::path stock = In("usr/share/quillmarch");
  fs::create_directories(In("usr/bin"));
  fs::create_directories(stock / "_qlmfiles");
  fs::create_directories(stock / "songs/a");
  fs::copy_file(kGame, In("usr/bin/quillmarch"));
  for (int i = 0; i < 400; ++i) {
    Write(stock / (i % 2 == 0 ? "songs/a" : "_qlmfiles") / std::to_string(i),
          std::string(static_cast<size_t>(i) * 100 + 1, 'x'));
  }
  fs::copy_file(Chart(), stock / "songs/a/a.bms");
  const std::vector<std::string> command{In("usr/bin/quillmarch"), "--once", "-P"};
  std::map<std::string, std::string> environment = Environment();
  environment["XDG_DATA_HOME"] = In("home");
  const fs::path data = In("home/quillmarch");
  const Clock::time_point begin = Clock::now();
  ASSERT_EQ(qlm::Run(command, environment).exitStatus, 0);
  const auto life = std::chrono::duration_cast<Microseconds>(Clock::now() - begin).count();
  int parts = 0;
  for (int i = 0; i < Kills(); ++i) {
    fs::remove_all(data);
    Process program(command, environment);
    if (i % 2 == 0) {
      std::this_thread::sleep_for(Microseconds(Draw(life)));
    } else {
      while (!fs::exists(data / "_qlmfiles/1") && program.Running()) {
      }
      std::this_thread::sleep_for(Microseconds(Draw(20'000)));
    }
    program.Kill();
    program.Wait();
    parts += fs::exists(data / "_qlmfiles/1") && !fs::exists(data / "_qlmfiles/stock.txt") ? 1 : 0;
    ASSERT_EQ(qlm::Run(command, environment).exitStatus, 0);
    for (const auto& entry : fs::recursive_directory_iterator(stock)) {
      if (!entry.is_regular_file()) continue;
      ASSERT_EQ(WholeFile(data / entry.path().lexically_relative(stock)), WholeFile(entry.path()))
          << entry.path();
    }
  }
  std::printf("%-24s %5d kills: whole behind the next start each time, killed while it copied %5d times\n",
              "stock", Kills(), parts);
}

}  // namespace
}  // namespace qlm
