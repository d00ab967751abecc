// The probe as a child process, with charts in a folder of the test's own.
#pragma once

#include <string>
#include <vector>

#include "tests/support/game_test.h"
#include "tests/support/process.h"

namespace qlm {

class ProbeTest : public GameTest {
 protected:
  // Runs the program in no particular folder, with the test's own data folder.
  ProcessResult Probe(std::vector<std::string> arguments) const;
  // Writes a chart of these lines, each ended by CR LF, behind an empty one; gives its system path.
  std::string Chart(const std::string& name, const std::vector<std::string>& lines) const;
  // A system path below the test's folder.
  std::string At(const std::string& name) const { return SystemFolder() + "/" + name; }
  // A mono WAV file of 16 bits at 44100 Hz with these samples.
  void WriteWav(const std::string& name, const std::vector<int16_t>& samples) const;
  // A black BMP file of 24 bits.
  void WriteBmp(const std::string& name, int32_t width, int32_t height) const;
};

// The lines of a chart with two notes, a tempo change, and a picture and a sound that are not there.
extern const std::vector<std::string> kSmallChart;

// Whether `output` holds `part`, with the whole output in the message when it does not.
testing::AssertionResult Holds(const std::string& output, const std::string& part);
// Expects these keys of the outermost object in the output, in this order, and no others.
void ExpectKeysInOrder(const std::string& output, const std::vector<std::string>& keys);

}  // namespace qlm
